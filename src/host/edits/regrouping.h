// Rewrites the coordinates of shapes that are moved into another group; the position on the page is kept.
#pragma once

#include <vector>

#include "host/engine/engine.h"
#include "host/routing/plane.h"
#include "host/sheet/transform.h"

namespace quorvel::host {

/// How coordinates of the group (or page) that the shapes leave become those of the one that they come into.
struct GroupTransform {
  Matrix map;
  double turn = 0;  ///< of the map, radians
  bool flipX = false, flipY = false;
  SheetId left;       ///< the group that is given up by this; null when none is
  SheetId scaleWith;  ///< the group whose size places and sizes follow; null: they become plain numbers
};

/// Made before anything changes, because it keeps the present places.
class Regrouping {
 public:
  Regrouping(Engine& engine, const std::vector<SheetId>& shapes, const GroupTransform& transform);

  /// Call when the shapes are in their new group. Writes pins, sizes, turns and ends as formulas of the group's size
  /// ("Sheet.5!Width*0.25") or as plain numbers, and brings all values up to date. Ends that are glued keep their
  /// formulas, sizes keep those of the shape's own, and what is guarded stays guarded.
  void settle();
  /// FormulaChanged of the cells that were written, CellChanged of those whose values changed.
  void tell();

 private:
  struct Member {
    SheetId shape;
    bool isOneD = false;
    Matrix onPage;
    Polyline line;  ///< of a connector that may be redrawn, inches of the page
    Point pin, begin, end;
    double angle = 0;
    bool flipX = false, flipY = false;
  };

  void placeBox(const Member& member);
  void placeEnds(const Member& member);
  void turnMember(const Member& member);
  void keepLocalPin(SheetId shape);
  void size(SheetId shape, bool vertical, bool crosswise);
  void follow();
  void straighten(const Member& member);

  bool scales(SheetId shape, std::string_view lock) const;
  /// A formula of the cell's own: no constant, and not about the group that is given up.
  bool isComputed(SheetId shape, const CellKey& key) const;
  bool readsLeft(SheetId shape, const CellKey& key) const;
  void putAlong(SheetId shape, const CellKey& key, double inches, bool vertical, bool scaled);
  void putFormula(SheetId shape, const CellKey& key, const std::string& formula);
  void putValue(SheetId shape, const CellKey& key, const Value& value);
  double number(SheetId shape, const CellKey& key) const;

  Engine& engine_;
  const Store& store_;
  GroupTransform transform_;
  std::vector<Member> members_;
  std::vector<CellAddress> seeds_, changed_;  ///< since values were last brought up to date
  std::vector<CellAddress> written_, followed_;
};

}  // namespace quorvel::host
