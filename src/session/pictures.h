// Pages as picture files: the format of a file name, and the bytes of the file.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/maybe.h"
#include "host/sheet/store.h"
#include "render/scene/scene.h"

namespace quorvel {

enum class PictureFormat { Svg, Png, Pdf };

/// By the ending of the file's name, in any case; nothing for another ending.
Maybe<PictureFormat> pictureFormatOf(std::string_view fileName);

struct PictureOptions {
  double pixelsPerInch = 150;  ///< of a PNG
};

/// What a picture of the page shows: with its background pages, in the document's themes. Top-level shapes have their
/// class ("task", "task-link", "process-connector"), a Task its ID, and their unique ID; the ids inside the picture
/// begin with the page's number.
render::Scene sceneOfPage(const host::Store& store, const host::Document& document, host::PageId page);

/// The bytes of one file. A PDF holds all the scenes, the other formats the first one. Empty when memory is short.
std::string writePicture(std::span<const render::Scene> scenes, PictureFormat format, std::string_view title,
                         const PictureOptions& options = {});

}  // namespace quorvel
