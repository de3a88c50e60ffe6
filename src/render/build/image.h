// Pictures that shapes carry.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/sheet/sheet.h"
#include "render/scene/scene.h"

namespace quorvel::render {

/// A picture in a form that every backend draws: bytes of an image file, or paths in the unit square with line widths
/// as shares of its side. Neither: a format that we don't draw.
struct Picture {
  std::string mediaType;
  std::shared_ptr<const std::string> bytes;
  std::vector<PathItem> paths;
};

Picture pictureOf(const host::ForeignData& foreign);

}  // namespace quorvel::render
