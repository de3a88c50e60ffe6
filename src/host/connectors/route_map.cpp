#include "host/connectors/route_map.h"

#include <algorithm>

#include "base/text.h"
#include "host/cells/cell_name.h"
#include "host/cells/cell_table.h"
#include "host/connectors/connector_ends.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

/// Lines go around 2-D shapes, except those that are declared to be no obstacles.
bool isInTheWay(const Store& store, SheetId id) {
  static const CellKey objType = objectCell("ObjType");
  const Sheet* sheet = store.sheet(id);
  if (!sheet || !sheet->isShape() || sheet->kind == SheetKind::Guide || sheet->parent) return false;
  if (findCell(store, id, endCell(true, false))) return false;
  constexpr int neither = 4;
  return (static_cast<int>(cellNumber(store, id, objType)) & neither) == 0;
}

std::vector<SheetId> found(const BoxIndex& index, const Box& box) {
  std::vector<std::uint32_t> numbers;
  index.touching(box, numbers);
  std::vector<SheetId> shapes;
  for (const std::uint32_t number : numbers) shapes.push_back(SheetId{number});
  return shapes;
}

}  // namespace

RouteMap::RouteMap(const Store& store, PageId page) : page_(page) {
  const auto& shapes = store.page(page)->shapes;
  if (std::any_of(shapes.begin(), shapes.end(), [&](SheetId shape) { return isRoutable(store, shape); })) build(store);
}

void RouteMap::build(const Store& store) {
  built_ = true;
  for (const SheetId shape : store.page(page_)->shapes) read(store, shape);
}

void RouteMap::read(const Store& store, SheetId shape) {
  if (isRoutable(store, shape)) {
    connectors_.put(shape.value, boundsOf(lineOnPage(store, shape)));
  } else if (isInTheWay(store, shape)) {
    shapes_.put(shape.value, boxOnPage(store, shape));
  }
}

void RouteMap::update(const Store& store, SheetId shape) {
  if (!built_) {
    if (isRoutable(store, shape)) build(store);
    return;
  }
  shapes_.remove(shape.value);
  connectors_.remove(shape.value);
  const Sheet* sheet = store.sheet(shape);
  if (sheet && sheet->page == page_) read(store, shape);
}

Maybe<Box> RouteMap::boxOf(SheetId shape) const {
  const Box* box = shapes_.find(shape.value);
  return box ? Maybe<Box>(*box) : Maybe<Box>();
}

std::vector<SheetId> RouteMap::connectorsTouching(const Box& box) const { return found(connectors_, box); }
std::vector<SheetId> RouteMap::shapesTouching(const Box& box) const { return found(shapes_, box); }

bool RouteMap::isFrame(const Store& store, SheetId shape) const {
  static const CellKey structure = parseCellName("User.msvStructureType").or_(CellKey{});
  if (findCell(store, shape, structure)) {
    const std::string kind = cellText(store, shape, structure);
    if (equalIgnoringCase(kind, "Container") || equalIgnoringCase(kind, "List")) return true;
  }
  const Maybe<Box> box = boxOf(shape);
  if (!box) return false;
  // One shape inside may be an image on a step; a frame holds several.
  constexpr double epsilon = 1e-6;
  const Box inside = box->grown(epsilon, epsilon);
  std::uint32_t first = 0;
  return shapes_.any(*box, [&](std::uint32_t other, const Box& its) {
    const bool held = other != shape.value && its.left >= inside.left && its.right <= inside.right &&
                      its.bottom >= inside.bottom && its.top <= inside.top && its.width() < box->width() &&
                      its.height() < box->height();
    if (!held || other == first) return false;
    if (first != 0) return true;
    first = other;
    return false;
  });
}

}  // namespace quorvel::host
