// The master of a dynamic connector as drawings hold it, for tests and measurements.
#pragma once

#include <string>

#include "host/cells/cell_name.h"
#include "host/cells/cell_table.h"
#include "host/engine/engine.h"

namespace quorvel::host {

/// A size from its ends, a text on a control, one bend.
inline MasterId addConnectorMaster(Engine& engine, DocumentId document) {
  Store& store = engine.edit().making();
  const MasterId made = store.addMaster(document, "Dynamic connector");
  const SheetId id = store.addShape(store.master(made)->contents, {}, SheetKind::Shape);
  Sheet& sheet = *store.sheet(id);
  const struct {
    const char *cell, *formula;
    double value;
  } cells[] = {
      {"BeginX", "1 in", 0},
      {"BeginY", "1 in", 0},
      {"EndX", "2 in", 0},
      {"EndY", "2 in", 0},
      {"PinX", "GUARD((BeginX+EndX)/2)", 1.5},
      {"PinY", "GUARD((BeginY+EndY)/2)", 1.5},
      {"Width", "GUARD(EndX-BeginX)", 1},
      {"Height", "GUARD(EndY-BeginY)", 1},
      {"LocPinX", "GUARD(Width*0.5)", 0.5},
      {"LocPinY", "GUARD(Height*0.5)", 0.5},
      {"GlueType", "2", 2},
      {"ObjType", "2", 2},
      {"TxtPinX", "SETATREF(Controls.TextPosition)", 1},
      {"TxtPinY", "SETATREF(Controls.TextPosition.Y)", 0},
      {"Controls.TextPosition", "1 in", 1},
      {"Controls.TextPosition.Y", "0 in", 0},
  };
  for (const auto& [name, formula, value] : cells) {
    const CellKey key = *parseCellName(name);
    Cell& cell = sheet.local(key);
    cell.formula = store.formulas().get(formula);
    const bool isLength = definitionOf(key)->units == CellUnits::Length;
    cell.value = cell.formula->constant().or_(Value::number(value, isLength ? Unit::Inches : Unit::None));
  }
  sheet.section(SectionNumber::Control).rows.front().name = intern("TextPosition");
  Section& geometry = sheet.section(SectionNumber::Geometry);
  const double points[][2] = {{0, 0}, {1, 0}, {1, 1}};
  for (std::uint32_t i = 0; i < 4; ++i) {
    Row row;
    row.key = RowKey::index(i);
    row.type = static_cast<std::uint8_t>(i == 0 ? 0 : i == 1 ? 138 : 139);
    for (std::size_t column = 0; column < 2 && i > 0; ++column) {
      Cell cell;
      cell.value = Value::number(points[i - 1][column], Unit::Inches);
      row.cells.emplace_back(static_cast<Column>(column), cell);
    }
    geometry.rows.push_back(row);
  }
  engine.edit().watchFormulas(id);
  return made;
}

}  // namespace quorvel::host
