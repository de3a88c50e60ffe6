#include "host/commands/glue.h"

#include <cmath>

#include "host/cells/cell_table.h"
#include "host/connector_edits/end_glue.h"
#include "host/connectors/connector_ends.h"
#include "host/edits/write_cell.h"
#include "host/sheet/inheritance.h"
#include "host/sheet/transform.h"

namespace quorvel::host {
namespace {

GlueTarget nearest(const Engine& engine, SheetId shape, double x, double y) {
  const std::vector<RowView> rows = rowsOf(engine.store(), shape, SectionNumber::Connection);
  GlueTarget best{"LocPinX", "LocPinY", "PinX", GlueTarget::pinPart};
  double bestDistance = INFINITY;
  const Matrix toPage = toPageMatrix(engine.store(), shape);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const Point at = toPage({cellNumber(engine.store(), shape, connectionCell(rows[i].key, "X")),
                             cellNumber(engine.store(), shape, connectionCell(rows[i].key, "Y"))});
    const double distance = std::hypot(at.x - x, at.y - y);
    if (distance >= bestDistance) continue;
    bestDistance = distance;
    best = glueTargetAt(rows, i);
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

}  // namespace

Outcome glueTo(Engine& engine, const CellAddress& end, const CellAddress& target) {
  static const CellKey beginX = objectCell("BeginX"), beginY = objectCell("BeginY"), endX = objectCell("EndX"),
                       endY = objectCell("EndY");
  const Sheet* from = engine.store().sheet(end.sheet);
  const Sheet* to = engine.store().sheet(target.sheet);
  if (!from || !to) return Outcome::refused("the object is deleted");
  const bool begin = end.key == beginX || end.key == beginY;
  if (!begin && end.key != endX && end.key != endY) return Outcome::refused("only the ends of 1-D shapes can be glued");
  if (!findCell(engine.store(), end.sheet, beginX)) return Outcome::refused("only 1-D shapes have ends");
  if (!to->isShape() || to->page != from->page || to->id == from->id)
    return Outcome::refused("an end is glued to another shape of its page");

  GlueTarget point;
  bool walks = false;
  if (target.key.section == SectionNumber::Connection) {
    const std::vector<RowView> rows = rowsOf(engine.store(), target.sheet, SectionNumber::Connection);
    std::size_t place = 0;
    while (place < rows.size() && rows[place].key != target.key.row) ++place;
    if (place == rows.size()) return Outcome::refused("no such connection point");
    point = glueTargetAt(rows, place);
  } else if (target.key.section == SectionNumber::Object) {
    static const CellKey pinX = objectCell("PinX"), pinY = objectCell("PinY");
    walks = (target.key == pinX || target.key == pinY) && mayWalk(engine.store(), end.sheet, target.sheet);
    const auto other = [&](const CellKey& key) { return cellNumber(engine.store(), end.sheet, key); };
    point = nearest(engine, target.sheet, other(begin ? endX : beginX), other(begin ? endY : beginY));
    if (walks) point = {"", "", "PinX", GlueTarget::pinPart};
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

}  // namespace quorvel::host
