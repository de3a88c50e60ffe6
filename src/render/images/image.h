// Pictures that shapes carry.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/sheet/sheet.h"
#include "render/scene/scene.h"
#include "render/text/layout.h"

namespace quorvel::render {

/// An image in a form that every backend draws: bytes of an image file, or what it is made of in the unit square, with
/// line widths as shares of its side. Neither: a format that we don't draw.
struct Picture {
  std::string mediaType;
  std::shared_ptr<const std::string> bytes;
  std::vector<SceneItem> items;
};

Picture imageOf(const host::ForeignData& foreign, TextEngine& text);
/// Moves an item of an image from the unit square to its place.
SceneItem placed(SceneItem item, const Matrix& place);

}  // namespace quorvel::render
