// Writes a scene as SVG.
#pragma once

#include <string>

#include "render/scene/scene.h"

namespace quorvel::render {

/// A whole document. One unit is a point. Shapes are groups with their number and name as data-shape and data-name, and
/// with what ShapeBegin::data holds;
/// text stays text that can be searched and copied. A link to a place in the drawing leads nowhere in a file of one
/// page, so it is written as data-link for a web page around it.
std::string writeSvg(const Scene& scene);

}  // namespace quorvel::render
