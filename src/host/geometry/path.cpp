#include "host/geometry/path.h"

#include <algorithm>

namespace quorvel::host {

void Path::moveTo(Point p) {
  verbs_.push_back(PathVerb::MoveTo);
  points_.push_back(p);
}

void Path::lineTo(Point p) {
  if (verbs_.empty()) return moveTo(p);
  verbs_.push_back(PathVerb::LineTo);
  points_.push_back(p);
}

void Path::curveTo(Point control1, Point control2, Point end) {
  if (verbs_.empty()) moveTo(control1);
  verbs_.push_back(PathVerb::CurveTo);
  points_.insert(points_.end(), {control1, control2, end});
}

void Path::close() {
  if (!verbs_.empty() && verbs_.back() != PathVerb::Close) verbs_.push_back(PathVerb::Close);
}

void Path::append(const Path& other) {
  verbs_.insert(verbs_.end(), other.verbs_.begin(), other.verbs_.end());
  points_.insert(points_.end(), other.points_.begin(), other.points_.end());
}

void Path::addRectangle(double left, double top, double right, double bottom) {
  moveTo({left, top});
  lineTo({right, top});
  lineTo({right, bottom});
  lineTo({left, bottom});
  close();
}

void Path::addEllipse(Point centre, Point axisEnd1, Point axisEnd2) {
  // The distance of the control points with which four cubic curves come closest to a circle.
  constexpr double kappa = 0.5522847498307936;
  const Point u = axisEnd1 - centre, v = axisEnd2 - centre;
  moveTo(centre + u);
  curveTo(centre + u + v * kappa, centre + v + u * kappa, centre + v);
  curveTo(centre + v - u * kappa, centre - u + v * kappa, centre - u);
  curveTo(centre - u - v * kappa, centre - v - u * kappa, centre - v);
  curveTo(centre - v + u * kappa, centre + u - v * kappa, centre + u);
  close();
}

void Path::transform(const Matrix& matrix) {
  for (Point& p : points_) p = matrix(p);
}

void Path::clamp(double farthest) {
  // These two ignore a value that is not a number.
  const auto clamped = [&](double number) { return std::fmin(std::fmax(number, -farthest), farthest); };
  for (Point& p : points_) p = {clamped(p.x), clamped(p.y)};
}

std::vector<Path> subpathsOf(const Path& path) {
  std::vector<Path> subpaths;
  std::size_t at = 0;
  const auto points = path.points();
  for (PathVerb verb : path.verbs()) {
    if (verb == PathVerb::MoveTo || subpaths.empty()) subpaths.emplace_back();
    Path& subpath = subpaths.back();
    switch (verb) {
      case PathVerb::MoveTo:
        subpath.moveTo(points[at++]);
        break;
      case PathVerb::LineTo:
        subpath.lineTo(points[at++]);
        break;
      case PathVerb::CurveTo:
        subpath.curveTo(points[at], points[at + 1], points[at + 2]);
        at += 3;
        break;
      case PathVerb::Close:
        subpath.close();
        break;
    }
  }
  return subpaths;
}

}  // namespace quorvel::host
