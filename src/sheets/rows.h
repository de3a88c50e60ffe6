// Adding rows to a sheet.
#pragma once

#include <string>
#include <string_view>

#include "base/ask_again.h"
#include "base/basic_text.h"
#include "model/host_model.h"
#include "schema/cells.h"

namespace quorvel::addin {

/// True when the sheet has no local row for this cell. A row that is inherited from the master counts as missing: a
/// shape that is dropped from a master made of a used Task is still a first drop. False also when the call fails.
inline bool lacksRow(const Shape& sheet, std::string_view cell) {
  return askAgain([&] { return sheet.CellExists(cell, 1); }) == false;
}

inline int sectionOf(const schema::NamedRow& row) {
  return row.isShapeData() ? visio::sectionProp : visio::sectionUser;
}
/// False when the sheet has the row already, which most callers ignore.
inline bool addRow(const Shape& sheet, const schema::NamedRow& row) {
  return sheet.AddNamedRow(sectionOf(row), row.name(), 0).has();
}
/// Adds the row to a sheet that has it neither itself nor from its master; true when it was added.
inline bool addWhenMissing(const Shape& sheet, const schema::NamedRow& row) {
  return askAgain([&] { return sheet.CellExists(row, 0); }) == false && askAgain([&] { return addRow(sheet, row); });
}
/// Only a local row.
inline void deleteRow(const Shape& sheet, const schema::NamedRow& row) {
  if (lacksRow(sheet, row)) return;
  if (const auto place = sheet.Cells(row).Row()) sheet.DeleteRow(sectionOf(row), *place);
}
/// Appends an entry to the shape's menu.
inline bool addActionRow(const Shape& sheet) { return sheet.AddRow(visio::sectionAction, visio::rowLast, 0).has(); }

/// Adds the row that holds the duration of a Task or Task Link, with 0 minutes, when it is missing.
inline void addTimeValue(const Shape& shape) {
  if (!lacksRow(shape, schema::timeCells::value)) return;
  addRow(shape, schema::timeCells::value);
  shape.Cells(schema::timeCells::value).FormulaForce(quoted("0 em."));
}

}  // namespace quorvel::addin
