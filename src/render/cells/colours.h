// What a colour cell means.
#pragma once

#include <cstdint>

#include "base/maybe.h"
#include "host/sheet/store.h"

namespace quorvel::render {

/// 0xRRGGBB of a colour cell: a number into the document's colour table, "#RRGGBB", or a colour value. Nothing for a
/// themed cell, an unknown number and other text.
Maybe<std::uint32_t> colourOf(const host::Document& document, const host::Value& value);
/// 0 for black to 1 for white.
double luminance(std::uint32_t rgb);

}  // namespace quorvel::render
