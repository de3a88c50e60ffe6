// Boxes, sides and lines of the drawing plane, for finding ways between shapes. Any one unit of length, y upward.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "host/geometry/point.h"

namespace quorvel::host {

struct Box {
  double left = 0, bottom = 0, right = 0, top = 0;

  double width() const { return right - left; }
  double height() const { return top - bottom; }
  Point middle() const { return {(left + right) / 2, (bottom + top) / 2}; }
  Box grown(double x, double y) const { return {left - x, bottom - y, right + x, top + y}; }
  bool touches(const Box& other) const {
    return left <= other.right && other.left <= right && bottom <= other.top && other.bottom <= top;
  }
  /// Deeper inside than `margin`.
  bool holds(const Point& spot, double margin = 0) const {
    return spot.x > left + margin && spot.x < right - margin && spot.y > bottom + margin && spot.y < top - margin;
  }
  void include(const Point& spot) {
    left = std::min(left, spot.x);
    bottom = std::min(bottom, spot.y);
    right = std::max(right, spot.x);
    top = std::max(top, spot.y);
  }
  void include(const Box& other) {
    include(Point{other.left, other.bottom});
    include(Point{other.right, other.top});
  }
  static Box around(const Point& a, const Point& b) {
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
  }
  friend bool operator==(const Box&, const Box&) = default;
};

/// A direction to leave a shape in; opposite sides differ by 2.
enum class Side : std::uint8_t { Right, Top, Left, Bottom };
inline constexpr Side allSides[] = {Side::Right, Side::Top, Side::Left, Side::Bottom};
inline Side opposite(Side side) { return static_cast<Side>((static_cast<int>(side) + 2) % 4); }
inline bool isSideways(Side side) { return side == Side::Right || side == Side::Left; }

using Polyline = std::vector<Point>;

Box boundsOf(const Polyline& line);
double lengthOf(const Polyline& line);
/// Half way along; the only point of a line of one.
Point midpointOf(const Polyline& line);
/// Whether a piece of the line runs through the inside of the box. Lines on its border, or nearer to it than epsilon,
/// do not.
bool crosses(const Polyline& line, const Box& box);
/// Where the line from inside `box` to `outside` leaves it; `from` when it does not.
Point leavingPoint(const Box& box, const Point& from, const Point& outside);
/// Where a ray from `from` leaves the box on its way to the side; `from` itself when that lies outside.
Point leavingPoint(const Box& box, const Point& from, Side side);
/// The middle of a side.
Point middleOf(const Box& box, Side side);
/// The side that an end which walks around `own` takes to meet `other`. Where both a sideways and an upright side
/// would do, the sideways one, or the upright one when `upright` says so.
Side walkTo(const Box& own, const Box& other, bool upright);

}  // namespace quorvel::host
