#include "render/build/shape_geometry.h"

#include <algorithm>
#include <numbers>

#include "host/sheet/geometry_rows.h"

namespace quorvel::render {

Path roundCorners(const Path& path, double radius) {
  if (!(radius > 0)) return path;
  Path rounded;
  for (const Path& subpath : subpathsOf(path)) {
    const auto verbs = subpath.verbs();
    const bool straight = std::none_of(verbs.begin(), verbs.end(), [](PathVerb v) { return v == PathVerb::CurveTo; });
    const bool closed = isClosed(subpath);
    std::vector<Point> corners;
    for (Point p : subpath.points())
      if (corners.empty() || distance(corners.back(), p) > 1e-9) corners.push_back(p);
    if (closed && corners.size() > 1 && distance(corners.front(), corners.back()) < 1e-6) corners.pop_back();
    if (!straight || corners.size() < 3) {
      rounded.append(subpath);
      continue;
    }
    const std::size_t n = corners.size();
    for (std::size_t i = 0; i < n; ++i) {
      const Point corner = corners[i];
      if (!closed && (i == 0 || i + 1 == n)) {
        rounded.isEmpty() || i == 0 ? rounded.moveTo(corner) : rounded.lineTo(corner);
        continue;
      }
      const Point back = corners[(i + n - 1) % n] - corner, on = corners[(i + 1) % n] - corner;
      const double backLength = length(back), onLength = length(on);
      const double cosine = std::clamp((back.x * on.x + back.y * on.y) / (backLength * onLength), -1.0, 1.0);
      const double half = std::acos(cosine) / 2;
      // Where the fillet touches the sides; never beyond their middle.
      const double cut = std::min({radius / std::max(std::tan(half), 1e-6), backLength / 2, onLength / 2});
      const Point from = corner + back * (cut / backLength), to = corner + on * (cut / onLength);
      if (closed && i == 0)
        rounded.moveTo(from);
      else
        rounded.lineTo(from);
      const double turn = std::numbers::pi - 2 * half;
      if (turn > 1e-6) {
        // The control points of a circular arc that turns by `turn` between two tangents of length `cut`.
        const double share = 4.0 / 3 * std::tan(turn / 4) / std::max(std::tan(turn / 2), 1e-9);
        rounded.curveTo(from + (corner - from) * share, to + (corner - to) * share, to);
      }
    }
    if (closed) rounded.close();
  }
  return rounded;
}

std::vector<GeometrySection> geometryOf(const ShapeCells& cells) {
  std::vector<GeometrySection> sections;
  const ColumnKeys& columns = columnKeys();
  for (const host::SectionNumber section : host::sectionsOf(cells.store(), cells.sheet())) {
    if (!host::isGeometry(section)) continue;
    const auto component = host::RowKey::index(0);
    if (cells.flag({section, component, columns.GeometryNoShow})) continue;
    GeometrySection shown;
    shown.path = host::geometryPath(cells.store(), cells.sheet(), section).path;
    if (shown.path.isEmpty()) continue;
    shown.filled = !cells.flag({section, component, columns.GeometryNoFill});
    shown.stroked = !cells.flag({section, component, columns.GeometryNoLine});
    sections.push_back(std::move(shown));
  }
  return sections;
}

}  // namespace quorvel::render
