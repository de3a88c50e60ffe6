// The faces of toolbar buttons, from bitmap files.
#pragma once

#include <string_view>

#include "base/maybe.h"
#include "host/engine/command_bar_set.h"

namespace quorvel {

/// The picture of an uncompressed bitmap (BMP) with 24 or 32 bits for a pixel and at most 256 pixels in each direction.
/// Pixels of `transparentColour` (0xBBGGRR) are in the mask. Fails for any other content.
Maybe<host::ButtonFace> buttonFace(std::string_view bitmap, unsigned transparentColour);

}  // namespace quorvel
