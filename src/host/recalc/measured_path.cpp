#include "host/recalc/measured_path.h"

#include <algorithm>

#include "host/sheet/geometry_rows.h"
#include "host/sheet/inheritance.h"
#include "host/sheet/transform.h"

namespace quorvel::host {
namespace {

// A quarter of a circle then becomes 256 lines, short of its length by less than two millionths.
constexpr double arcStep = std::numbers::pi / 8;
constexpr int linesPerCurve = 64;

FormulaPath flattened(const GeometryPath& drawn) {
  FormulaPath path;
  const auto verbs = drawn.path.verbs();
  const auto points = drawn.path.points();
  std::size_t at = 0;
  Point current;
  for (std::size_t i = 0; i < verbs.size(); ++i) {
    if (path.segments.size() < drawn.segments.size() && drawn.segments[path.segments.size()] == i)
      path.segments.push_back({current});
    switch (verbs[i]) {
      case PathVerb::MoveTo:
        current = points[at++];
        break;
      case PathVerb::LineTo:
        current = points[at++];
        path.segments.back().push_back(current);
        break;
      case PathVerb::CurveTo: {
        const Point a = current, b = points[at], c = points[at + 1], d = points[at + 2];
        for (int line = 1; line <= linesPerCurve; ++line) {
          const double t = double(line) / linesPerCurve, s = 1 - t;
          path.segments.back().push_back(a * (s * s * s) + b * (3 * s * s * t) + c * (3 * s * t * t) + d * (t * t * t));
        }
        current = d;
        at += 3;
        break;
      }
      case PathVerb::Close:
        break;
    }
  }
  return path;
}

}  // namespace

Maybe<FormulaPath> measuredPath(const Store& store, SheetId sheet, SectionNumber section, bool& exists) {
  exists = isGeometry(section) && !rowsOf(store, sheet, section).empty();
  if (!exists) return {};
  const GeometryPath drawn = geometryPath(store, sheet, section, arcStep);
  if (!drawn.isMeasurable) return {};
  return flattened(drawn);
}

Maybe<std::vector<double>> drawnBox(const Store& store, SheetId shape) {
  std::vector<double> box;
  const Sheet* root = store.sheet(shape);
  if (!root) return {};
  const Matrix fromPage = toPageMatrix(store, root->parent).inverse();
  for (const SheetId each : store.subtree(shape)) {
    const Matrix matrix = fromPage * toPageMatrix(store, each);
    const auto include = [&](Point point) {
      const Point at = matrix(point);
      if (box.empty()) box = {at.x, at.y, at.x, at.y};
      box = {std::min(box[0], at.x), std::min(box[1], at.y), std::max(box[2], at.x), std::max(box[3], at.y)};
    };
    for (const SectionNumber section : sectionsOf(store, each)) {
      if (!isGeometry(section)) continue;
      const GeometryPath drawn = geometryPath(store, each, section, arcStep);
      if (!drawn.isMeasurable || drawn.segments.empty()) {
        for (const Point vertex : verticesOf(store, each, section)) include(vertex);
        continue;
      }
      for (const std::vector<Point>& segment : flattened(drawn).segments)
        for (const Point point : segment) include(point);
    }
  }
  if (box.empty()) return {};
  return box;
}

}  // namespace quorvel::host
