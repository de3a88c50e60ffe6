#include "host/connectors/connector_ends.h"

#include <cmath>

#include "base/text.h"
#include "host/cells/cell_table.h"
#include "host/sheet/geometry_rows.h"
#include "host/sheet/inheritance.h"
#include "host/sheet/references.h"

namespace quorvel::host {
namespace {

constexpr std::string_view walkingFunction = "_WALKGLUE";

const CellKey& objType() {
  static const CellKey key = objectCell("ObjType");
  return key;
}

bool isDeclaredRoutable(const Store& store, SheetId id) {
  constexpr int routable = 2, neither = 4;
  const int type = static_cast<int>(cellNumber(store, id, objType()));
  return (type & routable) != 0 && (type & neither) == 0;
}

}  // namespace

CellKey endCell(bool begin, bool vertical) {
  static const CellKey keys[] = {objectCell("EndX"), objectCell("EndY"), objectCell("BeginX"), objectCell("BeginY")};
  return keys[(begin ? 2 : 0) + (vertical ? 1 : 0)];
}

CellKey triggerCell(bool begin) {
  static const CellKey keys[] = {objectCell("EndTrigger"), objectCell("BegTrigger")};
  return keys[begin ? 1 : 0];
}

bool isEndCell(const CellKey& key, bool& begin) {
  for (const bool candidate : {true, false}) {
    begin = candidate;
    if (key == endCell(begin, false) || key == endCell(begin, true)) return true;
  }
  return false;
}

bool isRoutable(const Store& store, SheetId id) {
  const Sheet* sheet = store.sheet(id);
  return sheet && !sheet->parent && mayBeRedrawn(store, id);
}

bool mayBeRedrawn(const Store& store, SheetId id) {
  const Sheet* sheet = store.sheet(id);
  if (!sheet || !sheet->isShape() || sheet->kind == SheetKind::Guide) return false;
  return findCell(store, id, endCell(true, false)) && isDeclaredRoutable(store, id);
}

std::string walkingFormula(bool begin) {
  return begin ? "_WALKGLUE(BegTrigger,EndTrigger,WalkPreference)" : "_WALKGLUE(EndTrigger,BegTrigger,WalkPreference)";
}

std::string triggerFormula(int shapeId) { return "_XFTRIGGER(Sheet." + std::to_string(shapeId) + "!EventXFMod)"; }

bool isWalkingFormula(std::string_view formula) {
  return formula.size() > walkingFunction.size() &&
         equalIgnoringCase(formula.substr(0, walkingFunction.size()), walkingFunction);
}

SheetId triggeredBy(const Store& store, SheetId connector, const CellKey& trigger) {
  const FoundCell found = findCell(store, connector, trigger);
  if (!found.formula || !found.formula->formula) return {};
  for (const Reference& reference : found.formula->formula->references()) {
    const SheetId target = resolveReference(store, found.formulaSheet, connector, reference);
    if (target && target != connector) return target;
  }
  return {};
}

ConnectorEnd endOf(const Store& store, SheetId connector, bool begin) {
  ConnectorEnd end;
  end.begin = begin;
  const Sheet* sheet = store.sheet(connector);
  const Matrix toPage = toPageMatrix(store, sheet ? sheet->parent : SheetId{});
  end.at =
      toPage({cellNumber(store, connector, endCell(begin, false)), cellNumber(store, connector, endCell(begin, true))});
  const FoundCell found = findCell(store, connector, endCell(begin, false));
  if (!found.formula || !found.formula->formula) return end;
  const Formula& formula = *found.formula->formula;
  if (isWalkingFormula(formula.text())) {
    end.glued = triggeredBy(store, connector, triggerCell(begin));
    end.walks = bool(end.glued);
  } else if (formula.readsTransforms()) {
    for (const Reference& reference : formula.references()) {
      const SheetId target = resolveReference(store, found.formulaSheet, connector, reference);
      if (target && target != connector && store.sheet(target)->isShape()) end.glued = target;
    }
  }
  return end;
}

Box boxOnPage(const Store& store, SheetId shape) {
  static const CellKey width = objectCell("Width"), height = objectCell("Height");
  const double w = cellNumber(store, shape, width), h = cellNumber(store, shape, height);
  const Matrix matrix = toPageMatrix(store, shape);
  Polyline corners;
  for (const Point& corner : {Point{0, 0}, Point{w, 0}, Point{w, h}, Point{0, h}}) corners.push_back(matrix(corner));
  return boundsOf(corners);
}

SheetId topOf(const Store& store, SheetId shape) {
  for (int depth = 0; depth < 1000; ++depth) {
    const Sheet* sheet = store.sheet(shape);
    if (!sheet || !sheet->parent) break;
    shape = sheet->parent;
  }
  return shape;
}

Side sideOnPage(const Matrix& toPage, Side side) {
  const double x = side == Side::Right ? 1 : side == Side::Left ? -1 : 0;
  const double y = side == Side::Top ? 1 : side == Side::Bottom ? -1 : 0;
  const double px = toPage.a * x + toPage.c * y, py = toPage.b * x + toPage.d * y;
  if (std::fabs(px) >= std::fabs(py)) return px >= 0 ? Side::Right : Side::Left;
  return py >= 0 ? Side::Top : Side::Bottom;
}

Point middleOnPage(const Store& store, SheetId shape, Side side) {
  static const CellKey width = objectCell("Width"), height = objectCell("Height");
  const Box own = Box::around({0, 0}, {cellNumber(store, shape, width), cellNumber(store, shape, height)});
  const Point middle = middleOf(own, side);
  return toPageMatrix(store, shape)(middle);
}

Maybe<Point> walkedPlace(const Store& store, SheetId connector, bool begin) {
  static const CellKey preference = objectCell("WalkPreference");
  // Those in groups too: how they were drawn is all that is known of their way.
  if (isDeclaredRoutable(store, connector)) return {};
  const SheetId own = triggeredBy(store, connector, triggerCell(begin));
  if (!own) return {};
  const SheetId other = triggeredBy(store, connector, triggerCell(!begin));
  Box its;
  if (other) {
    its = boxOnPage(store, other);
  } else {
    const Sheet* sheet = store.sheet(connector);
    const Point at = toPageMatrix(store, sheet->parent)(
        {cellNumber(store, connector, endCell(!begin, false)), cellNumber(store, connector, endCell(!begin, true))});
    its = {at.x, at.y, at.x, at.y};
  }
  constexpr int beginUpright = 1, endUpright = 2;
  const int wish = static_cast<int>(cellNumber(store, connector, preference));
  const Side wanted = walkTo(boxOnPage(store, own), its, (wish & (begin ? beginUpright : endUpright)) != 0);
  const Matrix matrix = toPageMatrix(store, own);
  for (const Side side : allSides) {
    if (sideOnPage(matrix, side) == wanted) return middleOnPage(store, own, side);
  }
  return {};
}

Polyline lineOnPage(const Store& store, SheetId connector) {
  const Matrix matrix = toPageMatrix(store, connector);
  Polyline line = verticesOf(store, connector, SectionNumber::Geometry);
  for (Point& point : line) point = matrix(point);
  return line;
}

}  // namespace quorvel::host
