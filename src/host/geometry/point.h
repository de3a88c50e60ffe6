// A point or vector of the plane.
#pragma once

#include <cmath>

namespace quorvel::host {

struct Point {
  double x = 0, y = 0;
  friend Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }
  friend Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
  friend Point operator*(Point a, double s) { return {a.x * s, a.y * s}; }
  friend bool operator==(Point, Point) = default;
};
inline double length(Point p) { return std::hypot(p.x, p.y); }
inline double distance(Point a, Point b) { return length(b - a); }

}  // namespace quorvel::host
