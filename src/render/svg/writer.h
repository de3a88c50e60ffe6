// Writes a scene as SVG.
#pragma once

#include <string>

#include "render/scene/scene.h"

namespace quorvel::render {

/// A whole document. One unit is a point. Shapes are groups with their number and name as data-shape and data-name, and
/// with what ShapeBegin::data holds;
/// text stays text that can be searched and copied; links are followed unless they would run a script.
std::string writeSvg(const Scene& scene);

}  // namespace quorvel::render
