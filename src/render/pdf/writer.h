// Writes scenes as the pages of a PDF document.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "render/scene/scene.h"

namespace quorvel::render {

/// The bytes of the file. Each page is as large as its scene and is listed in the outline by its title. A link
/// "#Page-2" or "#Page-2/A01" leads to the page, or the shape of that name on it, when the document holds it. Empty
/// when there is not enough memory.
std::string writePdf(std::span<const Scene> pages, std::string_view title = {});

}  // namespace quorvel::render
