// Keeps out of a scene what no backend can draw: numbers that are none, places far beyond every page, letters of a size
// that font libraries refuse. One such item would end all painting.
#pragma once

#include "render/scene/scene.h"

namespace quorvel::render {

/// Points from the page's corner beyond which nothing is drawn: 350 m, far more than any paper.
constexpr double farthestPlace = 1e6;
/// Points; letters of three and a half metres.
constexpr double largestLetters = 10000;

/// Whether the item can be drawn. Outlines that reach too far are cut there; what is left is drawn.
bool makeDrawable(PathItem& item);
/// A clip stays, with its end, whatever it holds.
bool makeDrawable(ClipBegin& clip);
bool isDrawable(const TextItem& item);
bool isDrawable(const ImageItem& item);

}  // namespace quorvel::render
