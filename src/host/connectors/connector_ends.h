// What a connector's ends are glued to, and how.
#pragma once

#include "base/maybe.h"
#include "host/routing/plane.h"
#include "host/sheet/store.h"
#include "host/sheet/transform.h"

namespace quorvel::host {

/// A 1-D shape that the host may redraw (ObjType 2).
bool mayBeRedrawn(const Store& store, SheetId sheet);
/// The same, for a shape that is in no group.
bool isRoutable(const Store& store, SheetId sheet);

struct ConnectorEnd {
  bool begin = true;
  Point at;            ///< inches of the page
  SheetId glued;       ///< null: the end is free
  bool walks = false;  ///< glued to the shape as a whole; the place on it is recomputed when something moves
};
ConnectorEnd endOf(const Store& store, SheetId connector, bool begin);

/// The formula of a walking end in both of its cells, and of its trigger cell.
std::string walkingFormula(bool begin);
std::string triggerFormula(int shapeId);
bool isWalkingFormula(std::string_view formula);
CellKey endCell(bool begin, bool vertical);
CellKey triggerCell(bool begin);
/// True for the four cells of the ends; `begin` says which end.
bool isEndCell(const CellKey& key, bool& begin);

/// The shape whose place a trigger cell follows; null when it follows none.
SheetId triggeredBy(const Store& store, SheetId connector, const CellKey& trigger);

/// The upright box around a shape's own box (0,0)-(Width,Height), in inches of the page.
Box boxOnPage(const Store& store, SheetId shape);
/// The outermost group of the shape; itself when it is in none.
SheetId topOf(const Store& store, SheetId shape);
/// The middle of a side of the shape's own box, on the page.
Point middleOnPage(const Store& store, SheetId shape, Side side);
/// The place of an end that walks, on a connector that is not routed: the side that faces what the other end is glued
/// to, or the other end itself. Nothing for a routable one, whose way decides, and for an end that walks around
/// nothing.
Maybe<Point> walkedPlace(const Store& store, SheetId connector, bool begin);
/// The direction on the page of a side of the shape, to the nearest quarter turn.
Side sideOnPage(const Matrix& toPage, Side side);
/// The line as its first Geometry section draws it, in inches of the page; arcs and curves as their chords.
Polyline lineOnPage(const Store& store, SheetId connector);

}  // namespace quorvel::host
