// The paths that a shape shows, one for each of its Geometry sections.
#pragma once

#include <vector>

#include "render/cells/shape_cells.h"
#include "render/scene/box.h"

namespace quorvel::render {

/// A path whose corners between straight lines are rounded; closed subpaths at their start too. No-op for radius 0.
Path roundCorners(const Path& path, double radius);

struct GeometrySection {
  Path path;
  bool filled = true, stroked = true;
};
/// All sections of the shape that are shown.
std::vector<GeometrySection> geometryOf(const ShapeCells& cells);

}  // namespace quorvel::render
