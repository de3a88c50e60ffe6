// Pictures that shapes carry.
#pragma once

#include <memory>
#include <string>

#include "host/sheet/sheet.h"

namespace quorvel::render {

/// A picture in a form that every backend reads. Without bytes: a format that we don't draw.
struct Picture {
  std::string mediaType;
  std::shared_ptr<const std::string> bytes;
};

Picture pictureOf(const host::ForeignData& foreign);

}  // namespace quorvel::render
