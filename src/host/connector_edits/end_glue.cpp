#include "host/connector_edits/end_glue.h"

#include "host/cells/cell_name.h"
#include "host/cells/cell_table.h"
#include "host/connectors/connector_ends.h"

namespace quorvel::host {
namespace {

constexpr int firstConnectionPart = 100;  // files count connection points from here
constexpr int beginPart = 9, endPart = 12;

bool isGluing(const FormulaPtr& formula) {
  return formula && !formula->constant() && (formula->readsTransforms() || isWalkingFormula(formula->text()));
}

/// The coordinates of an end that still follow something stay where they are from here on.
void setFree(Engine& engine, SheetId connector, bool begin) {
  for (const bool vertical : {false, true}) {
    const CellAddress cell{connector, endCell(begin, vertical)};
    if (!isGluing(formulaOf(engine.store(), cell.sheet, cell.key))) continue;
    Cell free;
    free.value = cellValue(engine.store(), cell.sheet, cell.key);
    engine.edit().setCell(cell, std::move(free));
  }
}

}  // namespace

CellKey connectionCell(RowKey row, std::string_view column) {
  return {SectionNumber::Connection, row, columnOf(SectionNumber::Connection, column).or_(0)};
}

GlueTarget glueTargetAt(const std::vector<RowView>& rows, std::size_t place) {
  const RowKey row = rows[place].key;
  const std::string name(spelling(rows[place].name));
  const std::string x = cellName(connectionCell(row, "X"), name);
  return {x, cellName(connectionCell(row, "Y"), name), x, firstConnectionPart + static_cast<int>(place)};
}

void removeConnect(Engine& engine, SheetId from, bool begin) {
  const Sheet& sheet = *engine.store().sheet(from);
  const std::string_view cell = begin ? "BeginX" : "EndX";
  engine.edit().removeConnects(
      sheet.page, [&](const Connect& old) { return old.fromShape == sheet.shapeId && old.fromCell == cell; });
}

void addConnect(Engine& engine, SheetId from, bool begin, SheetId to, std::string toCell, int toPart) {
  const Sheet& sheet = *engine.store().sheet(from);
  Connect connect;
  connect.fromShape = sheet.shapeId;
  connect.fromCell = begin ? "BeginX" : "EndX";
  connect.fromPart = begin ? beginPart : endPart;
  connect.toShape = engine.store().sheet(to)->shapeId;
  connect.toCell = std::move(toCell);
  connect.toPart = toPart;
  engine.edit().addConnect(sheet.page, std::move(connect));
}

void releaseTrigger(Engine& engine, SheetId from, bool begin) {
  const CellAddress trigger{from, triggerCell(begin)};
  const Sheet& sheet = *engine.store().sheet(from);
  if (!triggeredBy(engine.store(), from, trigger.key) || !sheet.findLocal(trigger.key)) return;
  if (sheet.prototype) {
    engine.edit().setCell(trigger, std::nullopt);
  } else {
    Cell none;
    none.noFormula = true;
    engine.edit().setCell(trigger, std::move(none));
  }
}

void freeWalkingEnd(Engine& engine, SheetId connector, bool begin) {
  const FormulaPtr formula = formulaOf(engine.store(), connector, endCell(begin, false));
  if (formula && isWalkingFormula(formula->text())) setFree(engine, connector, begin);
  releaseTrigger(engine, connector, begin);
}

void followGlue(Engine& engine, const CellAddress& cell, const FormulaPtr& before) {
  bool begin = false;
  // Pages and documents take such cells too, and are glued to nothing.
  if (!isEndCell(cell.key, begin) || !engine.store().sheet(cell.sheet)->isShape()) return;
  const FormulaPtr now = formulaOf(engine.store(), cell.sheet, cell.key);
  if (before == now) return;
  if (isGluing(before) && !isGluing(now)) {
    // The other coordinate would still follow.
    setFree(engine, cell.sheet, begin);
    removeConnect(engine, cell.sheet, begin);
    releaseTrigger(engine, cell.sheet, begin);
    return;
  }
  if (!isGluing(now)) return;
  removeConnect(engine, cell.sheet, begin);
  if (isWalkingFormula(now->text())) {
    if (const SheetId to = triggeredBy(engine.store(), cell.sheet, triggerCell(begin)))
      addConnect(engine, cell.sheet, begin, to, "PinX", GlueTarget::pinPart);
    return;
  }
  const ConnectorEnd end = endOf(engine.store(), cell.sheet, begin);
  if (!end.glued || engine.store().sheet(end.glued)->page != engine.store().sheet(cell.sheet)->page) return;
  for (const Reference& reference : now->references()) {
    if (reference.cell.section != SectionNumber::Connection) continue;
    const std::vector<RowView> rows = rowsOf(engine.store(), end.glued, SectionNumber::Connection);
    for (std::size_t place = 0; place < rows.size(); ++place) {
      if (rows[place].key != reference.cell.row) continue;
      const GlueTarget point = glueTargetAt(rows, place);
      addConnect(engine, cell.sheet, begin, end.glued, point.cell, point.part);
      return;
    }
  }
  addConnect(engine, cell.sheet, begin, end.glued, "PinX", GlueTarget::pinPart);
}

}  // namespace quorvel::host
