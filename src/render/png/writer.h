// Writes a scene as a PNG picture.
#pragma once

#include <string>

#include "render/scene/scene.h"

namespace quorvel::render {

/// The bytes of the file, at `pixelsPerInch`; a page that would be longer than 16,000 pixels on a side gets fewer.
/// Empty when there is not enough memory for the pixels.
std::string writePng(const Scene& scene, double pixelsPerInch = 150);

}  // namespace quorvel::render
