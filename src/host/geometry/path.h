// Paths of straight lines and cubic curves.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "host/geometry/matrix.h"

namespace quorvel::host {

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
  friend bool operator==(const Path&, const Path&) = default;

 private:
  std::vector<PathVerb> verbs_;
  std::vector<Point> points_;
};

/// The subpaths one by one, each with its MoveTo.
std::vector<Path> subpathsOf(const Path& path);
inline bool isClosed(const Path& subpath) { return !subpath.isEmpty() && subpath.verbs().back() == PathVerb::Close; }

}  // namespace quorvel::host
