#include "host/commands/drop_connected.h"

#include "host/cells/cell_table.h"
#include "host/commands/glue.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

constexpr double gap = 0.5;  // inches between the two boxes

struct Placement {
  double x, y, width, height;
};

Placement placementOf(const Engine& engine, SheetId shape) {
  static const CellKey pinX = objectCell("PinX"), pinY = objectCell("PinY"), width = objectCell("Width"),
                       height = objectCell("Height");
  const auto number = [&](const CellKey& key) { return cellNumber(engine.store(), shape, key); };
  return {number(pinX), number(pinY), number(width), number(height)};
}

Placement beside(const Placement& target, const Placement& dropped, int direction) {
  constexpr int above = 1, below = 2, left = 3;
  const double across = (target.width + dropped.width) / 2 + gap, along = (target.height + dropped.height) / 2 + gap;
  Placement place = target;
  if (direction == above) {
    place.y += along;
  } else if (direction == below) {
    place.y -= along;
  } else {
    place.x += direction == left ? -across : across;
  }
  return place;
}

}  // namespace

ShapeOutcome dropConnected(Engine& engine, PageId page, MasterId master, SheetId target, int direction,
                           MasterId connector) {
  const auto refused = [](std::string reason) { return ShapeOutcome{Outcome::refused(std::move(reason)), {}}; };
  const Store& store = engine.store();
  if (!store.page(page)) return refused("the page is deleted");
  const Sheet* to = store.sheet(target);
  if (!to || !to->isShape() || to->page != page || to->parent) return refused("the shape is not on the page itself");
  if (direction < 0 || direction > 4) return refused("no such direction");
  if (!store.master(master)) return refused("the master is deleted");
  if (connector && !store.master(connector)) return refused("the connector's master is deleted");
  const std::vector<SheetId>& contents = store.page(store.master(master)->contents)->shapes;
  if (contents.empty()) return refused("the master holds no shape");
  const Placement from = placementOf(engine, target),
                  place = beside(from, placementOf(engine, contents.front()), direction);

  const DocumentId document = store.page(page)->document;
  CommandScope scope(engine, document, "Drop Connected");
  const ShapeOutcome dropped = dropMaster(engine, master, page, place.x, place.y);
  if (!dropped.outcome) return dropped;
  if (engine.exists(page, dropped.shape, target)) {
    const ShapeOutcome line = connector
                                  ? dropMaster(engine, connector, page, (from.x + place.x) / 2, (from.y + place.y) / 2)
                                  : drawLine(engine, page, {}, from.x, from.y, place.x, place.y);
    if (!line.outcome) return line;
    static const CellKey beginX = objectCell("BeginX"), endX = objectCell("EndX"), pinX = objectCell("PinX");
    const auto mayGlue = [&] { return engine.exists(line.shape, dropped.shape, target); };
    if (mayGlue()) {
      if (const Outcome glued = glueTo(engine, {line.shape, beginX}, {target, pinX}); !glued) return {glued, {}};
    }
    if (mayGlue()) {
      if (const Outcome glued = glueTo(engine, {line.shape, endX}, {dropped.shape, pinX}); !glued) return {glued, {}};
    }
  }
  if (const WindowState* window = engine.windowOf(document); window && engine.exists(dropped.shape))
    setSelection(engine, window->id, {dropped.shape});
  scope.commit();
  return {Outcome::done(), engine.exists(dropped.shape) ? dropped.shape : SheetId{}};
}

}  // namespace quorvel::host
