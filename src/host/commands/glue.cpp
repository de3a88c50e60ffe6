#include "host/commands/glue.h"

#include <cmath>

#include "host/cells/cell_name.h"
#include "host/cells/cell_table.h"
#include "host/commands/write_cell.h"
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
    const auto at = toPage.apply(cellNumber(engine.store, shape, connectionCell(rows[i].key, "X")),
                                 cellNumber(engine.store, shape, connectionCell(rows[i].key, "Y")));
    const double distance = std::hypot(at.x - x, at.y - y);
    if (distance >= bestDistance) continue;
    bestDistance = distance;
    best = targetAt(rows, i);
  }
  return best;
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
  if (target.key.section == SectionNumber::Connection) {
    const std::vector<RowView> rows = rowsOf(engine.store, target.sheet, SectionNumber::Connection);
    std::size_t place = 0;
    while (place < rows.size() && rows[place].key != target.key.row) ++place;
    if (place == rows.size()) return Outcome::refused("no such connection point");
    point = targetAt(rows, place);
  } else if (target.key.section == SectionNumber::Object) {
    const auto other = [&](const CellKey& key) { return cellNumber(engine.store, end.sheet, key); };
    point = nearest(engine, target.sheet, other(begin ? endX : beginX), other(begin ? endY : beginY));
  } else {
    return Outcome::refused("an end is glued to a connection point or a shape");
  }

  CommandScope scope(engine, from->document, "Glue");
  const std::string sheet = "Sheet." + std::to_string(to->shapeId) + "!";
  const std::string formula = "PAR(PNT(" + sheet + point.x + "," + sheet + point.y + "))";
  if (Outcome written = writeFormula(engine, {end.sheet, begin ? beginX : endX}, formula, true); !written)
    return written;
  if (Outcome written = writeFormula(engine, {end.sheet, begin ? beginY : endY}, formula, true); !written)
    return written;
  if (!engine.store.sheet(end.sheet) || !engine.store.sheet(target.sheet)) {
    scope.commit();
    return Outcome::done();
  }
  Connect connect;
  connect.fromShape = engine.store.sheet(end.sheet)->shapeId;
  connect.fromCell = begin ? "BeginX" : "EndX";
  connect.fromPart = begin ? glueBeginPart : glueEndPart;
  connect.toShape = engine.store.sheet(target.sheet)->shapeId;
  connect.toCell = point.cell;
  connect.toPart = point.part;
  const PageId page = engine.store.sheet(end.sheet)->page;
  engine.edit.removeConnects(
      page, [&](const Connect& old) { return old.fromShape == connect.fromShape && old.fromCell == connect.fromCell; });
  engine.edit.addConnect(page, std::move(connect));
  scope.commit();
  return Outcome::done();
}

}  // namespace quorvel::host
