// The marks at the ends of open lines.
#pragma once

#include <vector>

#include "render/build/line_style.h"
#include "render/scene/scene.h"

namespace quorvel::render {

/// Draws the arrowheads of every open subpath of `path` (page coordinates) into `heads`, and gives the path with its
/// lines drawn back to where filled heads begin. Closed subpaths stay as they are.
Path withArrowheads(const Path& path, const LineStyle& style, std::vector<PathItem>& heads);

/// Length of one unit in which heads are drawn, in points.
double arrowheadUnit(int size, double lineWidth);

}  // namespace quorvel::render
