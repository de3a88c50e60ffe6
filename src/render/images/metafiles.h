// Draws metafiles: images that drawings hold as recorded drawing calls.
#pragma once

#include <string>
#include <vector>

#include "render/scene/scene.h"
#include "render/text/layout.h"

namespace quorvel::render {

/// The image as paths, texts and images in the unit square, (0, 0) its top left corner; line widths are shares of its
/// side. Empty when the bytes are no such image or hold nothing that we draw. Bitmaps that are mixed with what lies
/// below them are left out.
std::vector<SceneItem> enhancedMetafileItems(const std::string& bytes, TextEngine& text);
/// The same for the older kind, of 16 bits, with or without the header that places it.
std::vector<SceneItem> windowsMetafileItems(const std::string& bytes, TextEngine& text);

}  // namespace quorvel::render
