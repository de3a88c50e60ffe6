// Points, affine maps and paths of straight lines and cubic curves: the geometry that every backend can draw.
#pragma once

#include <cmath>
#include <cstdint>
#include <span>
#include <vector>

namespace quorvel::render {

struct Point {
  double x = 0, y = 0;
  friend Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }
  friend Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
  friend Point operator*(Point a, double s) { return {a.x * s, a.y * s}; }
  friend bool operator==(Point, Point) = default;
};
inline double length(Point p) { return std::hypot(p.x, p.y); }
inline double distance(Point a, Point b) { return length(b - a); }

struct Box {
  double left = 0, top = 0, right = -1, bottom = -1;  ///< empty while right < left
  bool isEmpty() const { return right < left || bottom < top; }
  double width() const { return right - left; }
  double height() const { return bottom - top; }
  void add(Point p);
  void add(const Box& other);
};

/// Maps (x, y) to (a x + c y + e, b x + d y + f).
struct Matrix {
  double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;

  static Matrix translation(double x, double y) { return {1, 0, 0, 1, x, y}; }
  static Matrix scaling(double x, double y) { return {x, 0, 0, y, 0, 0}; }
  static Matrix rotation(double radians);
  /// The map that does `inner` first and then this one.
  Matrix operator*(const Matrix& inner) const;
  Point operator()(Point p) const { return {a * p.x + c * p.y + e, b * p.x + d * p.y + f}; }
  double determinant() const { return a * d - b * c; }
  /// The mean factor by which lengths grow.
  double scale() const { return std::sqrt(std::abs(determinant())); }
  friend bool operator==(const Matrix&, const Matrix&) = default;
};

enum class PathVerb : std::uint8_t { MoveTo, LineTo, CurveTo, Close };

/// Subpaths, each begun by a MoveTo. A CurveTo takes three points, MoveTo and LineTo one, Close none.
class Path {
 public:
  void moveTo(Point p);
  void lineTo(Point p);
  void curveTo(Point control1, Point control2, Point end);
  void close();
  void append(const Path& other);
  void addRectangle(double left, double top, double right, double bottom);
  void addEllipse(Point centre, Point axisEnd1, Point axisEnd2);

  bool isEmpty() const { return verbs_.empty(); }
  /// Where the next segment starts; the origin for an empty path.
  Point current() const { return points_.empty() ? Point{} : points_.back(); }
  std::span<const PathVerb> verbs() const { return verbs_; }
  std::span<const Point> points() const { return points_; }
  void transform(const Matrix& matrix);
  /// Brings every point into the square of that half side about the origin.
  void clamp(double farthest);
  /// Of the points and control points: never smaller than the curve's own.
  Box bounds() const;
  friend bool operator==(const Path&, const Path&) = default;

 private:
  std::vector<PathVerb> verbs_;
  std::vector<Point> points_;
};

/// The subpaths one by one, each with its MoveTo.
std::vector<Path> subpathsOf(const Path& path);
inline bool isClosed(const Path& subpath) { return !subpath.isEmpty() && subpath.verbs().back() == PathVerb::Close; }

}  // namespace quorvel::render
