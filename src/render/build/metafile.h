// Draws enhanced metafiles: the lines, shapes and curves of pictures that drawings carry as recorded drawing calls.
#pragma once

#include <string>
#include <vector>

#include "render/scene/scene.h"

namespace quorvel::render {

/// The picture as paths in the unit square, (0, 0) its top left corner; line widths are shares of its side. Empty when
/// the bytes are no such picture or hold nothing that we draw: text, bitmaps and clipping are left out.
std::vector<PathItem> metafilePaths(const std::string& bytes);

}  // namespace quorvel::render
