// The tiles of hatched fills, so that every backend draws the same ones.
#pragma once

#include "render/scene/box.h"

namespace quorvel::render {

/// One tile of a hatch, repeated to the right and downward from the page's corner.
struct PatternTile {
  double size = 8;         ///< side of the square tile, points
  double lineWidth = 0.5;  ///< of `lines`
  Path lines;              ///< stroked in the ink; may reach over the tile's edge
  Path areas;              ///< filled in the ink
};

/// For fill patterns 2 to 24; other numbers give an empty tile.
PatternTile patternTile(int number);

}  // namespace quorvel::render
