// Turns the rows of a Geometry section into a path: the one interpretation of the row types, for drawing and for
// measuring.
#pragma once

#include <numbers>
#include <string>
#include <vector>

#include "host/geometry/path.h"
#include "host/geometry/row_tags.h"

namespace quorvel::host {

/// One vertex row with its numbers: lengths in inches of the shape's own coordinates (y upward), angles in radians.
struct GeometryRow {
  RowTag tag = RowTag::MoveTo;
  double x = 0, y = 0, a = 0, b = 0, c = 0, d = 0;
  std::string list = {};  ///< NurbsTo and PolylineTo: "NURBS(…)", "POLYLINE(…)"
};

struct GeometryPath {
  Path path;
  /// The index among the path's verbs with which each segment begins. A row makes one segment; a polyline makes one for
  /// each of its lines, a SplineStart with its knots makes one, a MoveTo none.
  std::vector<std::size_t> segments;
  /// False when a row has no length: an infinite line, or a row of an unknown type, which draws nothing.
  bool isMeasurable = true;
};

/// The path in the shape's own coordinates. A section that does not start with a MoveTo starts at the shape's origin. A
/// MoveTo between rows is a gap: the path goes on behind it. Subpaths whose ends meet are closed. Arcs become cubic
/// curves of at most `arcStep` radians each.
GeometryPath geometryPath(const std::vector<GeometryRow>& rows, double width, double height,
                          double arcStep = std::numbers::pi / 2);

/// The vertex of the row in the shape's own coordinates: where a row that draws a line or a curve ends.
Point vertexOf(const GeometryRow& row, double width, double height);

}  // namespace quorvel::host
