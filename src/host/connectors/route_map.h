// The places of the shapes and connectors of one page, so that what a moved shape concerns is found without checking
// every other shape.
#pragma once

#include <vector>

#include "base/maybe.h"
#include "host/routing/box_index.h"
#include "host/routing/router.h"
#include "host/sheet/store.h"

namespace quorvel::host {

/// Only shapes at the top of the page are known. A page without connectors costs nothing but the look for one.
class RouteMap {
 public:
  RouteMap(const Store& store, PageId page);

  bool hasConnectors() const { return connectors_.size() > 0; }
  /// The box of a shape that lines go around, as last read.
  Maybe<Box> boxOf(SheetId shape) const;
  /// Reads the shape again; a deleted one is removed.
  void update(const Store& store, SheetId shape);
  /// Connectors whose bounds touch the box.
  std::vector<SheetId> connectorsTouching(const Box& box) const;
  /// Shapes that lines go around and that touch the box.
  std::vector<SheetId> shapesTouching(const Box& box) const;
  /// Holds other shapes, as a lane or a frame does: no line goes around it.
  bool isFrame(const Store& store, SheetId shape) const;

 private:
  void build(const Store& store);
  void read(const Store& store, SheetId shape);

  PageId page_;
  bool built_ = false;
  BoxIndex shapes_, connectors_;
};

}  // namespace quorvel::host
