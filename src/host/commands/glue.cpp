#include "host/commands/glue.h"

#include <cmath>

#include "host/cells/cell_name.h"
#include "host/cells/cell_table.h"
#include "host/commands/write_cell.h"
#include "host/recalc/connector_ends.h"
#include "host/sheet/inheritance.h"
#include "host/sheet/transform.h"

namespace quorvel::host {
namespace {

constexpr int glueToConnectionPart = 100;  // a file counts connection points from 100, the pin has the number 3
constexpr int gluePinPart = 3, glueBeginPart = 9, glueEndPart = 12;

CellKey connectionCell(RowKey row, std::string_view column) {
  return {SectionNumber::Connection, row, columnOf(SectionNumber::Connection, column).or_(0)};
}

struct Target {
  std::string x, y;  ///< cell names on the target
  std::string cell;  ///< as the file's connect names it
  int part = gluePinPart;
};

Target targetAt(const std::vector<RowView>& rows, std::size_t place) {
  const RowKey row = rows[place].key;
  const std::string name(spelling(rows[place].name));
  const std::string x = cellName(connectionCell(row, "X"), name);
  return {x, cellName(connectionCell(row, "Y"), name), x, glueToConnectionPart + static_cast<int>(place)};
}

Target nearest(const Engine& engine, SheetId shape, double x, double y) {
  const std::vector<RowView> rows = rowsOf(engine.store, shape, SectionNumber::Connection);
  Target best{"LocPinX", "LocPinY", "PinX", gluePinPart};
  double bestDistance = INFINITY;
  const Matrix toPage = toPageMatrix(engine.store, shape);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const Point at = toPage({cellNumber(engine.store, shape, connectionCell(rows[i].key, "X")),
                             cellNumber(engine.store, shape, connectionCell(rows[i].key, "Y"))});
    const double distance = std::hypot(at.x - x, at.y - y);
    if (distance >= bestDistance) continue;
    bestDistance = distance;
    best = targetAt(rows, i);
  }
  return best;
}

/// Whether an end of `from` may walk around `to`.
bool mayWalk(const Store& store, SheetId from, SheetId to) {
  static const CellKey glueType = objectCell("GlueType");
  constexpr int walks = 3, neverWalks = 4, isNeverWalkedTo = 8;
  const int own = static_cast<int>(cellNumber(store, from, glueType));
  const int its = static_cast<int>(cellNumber(store, to, glueType));
  if ((own & neverWalks) != 0 || (its & isNeverWalkedTo) != 0) return false;
  return (own & walks) != 0 || isRoutable(store, from);
}

FormulaPtr formulaOf(const Store& store, const CellAddress& cell) {
  const FoundCell found = findCell(store, cell.sheet, cell.key);
  return found.formula ? found.formula->formula : nullptr;
}

bool isGluing(const FormulaPtr& formula) {
  return formula && !formula->constant() && (formula->readsTransforms() || isWalkingFormula(formula->text()));
}

void removeConnect(Engine& engine, SheetId from, bool begin) {
  const Sheet& sheet = *engine.store.sheet(from);
  const std::string_view cell = begin ? "BeginX" : "EndX";
  engine.edit.removeConnects(
      sheet.page, [&](const Connect& old) { return old.fromShape == sheet.shapeId && old.fromCell == cell; });
}

void addConnect(Engine& engine, SheetId from, bool begin, SheetId to, std::string toCell, int toPart) {
  const Sheet& sheet = *engine.store.sheet(from);
  Connect connect;
  connect.fromShape = sheet.shapeId;
  connect.fromCell = begin ? "BeginX" : "EndX";
  connect.fromPart = begin ? glueBeginPart : glueEndPart;
  connect.toShape = engine.store.sheet(to)->shapeId;
  connect.toCell = std::move(toCell);
  connect.toPart = toPart;
  engine.edit.addConnect(sheet.page, std::move(connect));
}

/// The trigger follows nothing any more: as the master has it, or without formula.
void releaseTrigger(Engine& engine, SheetId from, bool begin) {
  const CellAddress trigger{from, triggerCell(begin)};
  const Sheet& sheet = *engine.store.sheet(from);
  if (!triggeredBy(engine.store, from, trigger.key) || !sheet.findLocal(trigger.key)) return;
  if (sheet.prototype) {
    engine.edit.setCell(trigger, std::nullopt);
  } else {
    Cell none;
    none.noFormula = true;
    engine.edit.setCell(trigger, std::move(none));
  }
}

/// The coordinates of an end that still follow something stay where they are from here on.
void setFree(Engine& engine, SheetId connector, bool begin) {
  for (const bool vertical : {false, true}) {
    const CellAddress cell{connector, endCell(begin, vertical)};
    if (!isGluing(formulaOf(engine.store, cell))) continue;
    Cell free;
    free.value = cellValue(engine.store, cell.sheet, cell.key);
    engine.edit.setCell(cell, std::move(free));
  }
}

}  // namespace

Outcome glueTo(Engine& engine, const CellAddress& end, const CellAddress& target) {
  static const CellKey beginX = objectCell("BeginX"), beginY = objectCell("BeginY"), endX = objectCell("EndX"),
                       endY = objectCell("EndY");
  const Sheet* from = engine.store.sheet(end.sheet);
  const Sheet* to = engine.store.sheet(target.sheet);
  if (!from || !to) return Outcome::refused("the object is gone");
  const bool begin = end.key == beginX || end.key == beginY;
  if (!begin && end.key != endX && end.key != endY) return Outcome::refused("only the ends of 1-D shapes can be glued");
  if (!findCell(engine.store, end.sheet, beginX)) return Outcome::refused("only 1-D shapes have ends");
  if (!to->isShape() || to->page != from->page || to->id == from->id)
    return Outcome::refused("an end is glued to another shape of its page");

  Target point;
  bool walks = false;
  if (target.key.section == SectionNumber::Connection) {
    const std::vector<RowView> rows = rowsOf(engine.store, target.sheet, SectionNumber::Connection);
    std::size_t place = 0;
    while (place < rows.size() && rows[place].key != target.key.row) ++place;
    if (place == rows.size()) return Outcome::refused("no such connection point");
    point = targetAt(rows, place);
  } else if (target.key.section == SectionNumber::Object) {
    static const CellKey pinX = objectCell("PinX"), pinY = objectCell("PinY");
    walks = (target.key == pinX || target.key == pinY) && mayWalk(engine.store, end.sheet, target.sheet);
    const auto other = [&](const CellKey& key) { return cellNumber(engine.store, end.sheet, key); };
    point = nearest(engine, target.sheet, other(begin ? endX : beginX), other(begin ? endY : beginY));
    if (walks) point = {"", "", "PinX", gluePinPart};
  } else {
    return Outcome::refused("an end is glued to a connection point or a shape");
  }

  CommandScope scope(engine, from->document, "Glue");
  const int shapeId = to->shapeId;
  // Freed first, so that what the writes below leave is no longer what it was.
  removeConnect(engine, end.sheet, begin);
  releaseTrigger(engine, end.sheet, begin);
  const auto writes = [&](const CellKey& key, const std::string& formula) {
    // Listeners may have deleted either one: nothing is glued then, and the rest stays as they left it.
    if (!engine.exists(end.sheet, target.sheet)) return Outcome::done();
    return writeFormula(engine, {end.sheet, key}, formula, true);
  };
  if (walks) {
    const Outcome written = writes(triggerCell(begin), triggerFormula(shapeId));
    if (!written) return written;
  }
  const std::string sheet = "Sheet." + std::to_string(shapeId) + "!";
  const std::string formula =
      walks ? walkingFormula(begin) : "PAR(PNT(" + sheet + point.x + "," + sheet + point.y + "))";
  for (const bool vertical : {false, true}) {
    const Outcome written = writes(endCell(begin, vertical), formula);
    if (!written) return written;
  }
  if (engine.exists(end.sheet, target.sheet)) {
    // The writes may have made the entry already.
    removeConnect(engine, end.sheet, begin);
    addConnect(engine, end.sheet, begin, target.sheet, point.cell, point.part);
  }
  scope.commit();
  return Outcome::done();
}

void freeWalkingEnd(Engine& engine, SheetId connector, bool begin) {
  const FormulaPtr formula = formulaOf(engine.store, {connector, endCell(begin, false)});
  if (formula && isWalkingFormula(formula->text())) setFree(engine, connector, begin);
  releaseTrigger(engine, connector, begin);
}

void followGlue(Engine& engine, const CellAddress& cell, const FormulaPtr& before) {
  bool begin = false;
  // Pages and documents take such cells too, and are glued to nothing.
  if (!isEndCell(cell.key, begin) || !engine.store.sheet(cell.sheet)->isShape()) return;
  const FormulaPtr now = formulaOf(engine.store, cell);
  if (before == now) return;
  if (isGluing(before) && !isGluing(now)) {
    // The other coordinate would go on following.
    setFree(engine, cell.sheet, begin);
    removeConnect(engine, cell.sheet, begin);
    releaseTrigger(engine, cell.sheet, begin);
    return;
  }
  if (!isGluing(now)) return;
  removeConnect(engine, cell.sheet, begin);
  if (isWalkingFormula(now->text())) {
    if (const SheetId to = triggeredBy(engine.store, cell.sheet, triggerCell(begin)))
      addConnect(engine, cell.sheet, begin, to, "PinX", gluePinPart);
    return;
  }
  const ConnectorEnd end = endOf(engine.store, cell.sheet, begin);
  if (!end.glued || engine.store.sheet(end.glued)->page != engine.store.sheet(cell.sheet)->page) return;
  for (const Reference& reference : now->references()) {
    if (reference.cell.section != SectionNumber::Connection) continue;
    const std::vector<RowView> rows = rowsOf(engine.store, end.glued, SectionNumber::Connection);
    for (std::size_t place = 0; place < rows.size(); ++place) {
      if (rows[place].key != reference.cell.row) continue;
      const Target point = targetAt(rows, place);
      addConnect(engine, cell.sheet, begin, end.glued, point.cell, point.part);
      return;
    }
  }
  addConnect(engine, cell.sheet, begin, end.glued, "PinX", gluePinPart);
}

}  // namespace quorvel::host
