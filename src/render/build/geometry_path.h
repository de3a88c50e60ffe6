// Turns the rows of Geometry sections into paths.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "render/cells/shape_cells.h"
#include "render/scene/path.h"

namespace quorvel::render {

/// The published tags of Geometry rows.
enum class GeometryTag : std::uint8_t {
  Component = 137,
  MoveTo = 138,
  LineTo = 139,
  ArcTo = 140,
  InfiniteLine = 141,
  Ellipse = 143,
  EllipticalArcTo = 144,
  SplineStart = 165,
  SplineKnot = 166,
  PolylineTo = 193,
  NurbsTo = 195,
  RelCubBezTo = 236,
  RelQuadBezTo = 237,
  RelMoveTo = 238,
  RelLineTo = 239,
  RelEllipticalArcTo = 240,
};

/// One vertex row with its numbers: lengths in inches of the shape's own coordinates (y upward), angles in radians.
struct GeometryRow {
  GeometryTag tag = GeometryTag::MoveTo;
  double x = 0, y = 0, a = 0, b = 0, c = 0, d = 0;
  std::string list = {};  ///< NurbsTo and PolylineTo: "NURBS(…)", "POLYLINE(…)"
};

/// The path of one section in the shape's own coordinates. Open ends that meet are closed when `closeMeetingEnds`.
Path geometryPath(const std::vector<GeometryRow>& rows, double width, double height);

/// A path whose corners between straight lines are rounded; closed subpaths at their start too. No-op for radius 0.
Path roundCorners(const Path& path, double radius);

struct GeometrySection {
  Path path;
  bool filled = true, stroked = true;
};
/// All sections of the shape that are shown.
std::vector<GeometrySection> geometryOf(const ShapeCells& cells, double width, double height);

/// A B-spline in cubic pieces, appended from the path's current point. `points` include the first one, `knots` must
/// count points + degree + 1 in rising order; anything else gives straight lines through the points.
void appendSpline(Path& path, const std::vector<Point>& points, const std::vector<double>& weights,
                  const std::vector<double>& knots, int degree);

}  // namespace quorvel::render
