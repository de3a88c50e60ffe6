// A shape's fill and shadow from its cells.
#pragma once

#include <vector>

#include "render/cells/page_context.h"
#include "render/cells/shape_cells.h"
#include "render/scene/scene.h"

namespace quorvel::render {

/// A fill before it is placed on the page: gradients still know only their direction.
struct FillStyle {
  enum Kind : std::uint8_t { None, Plain, Hatch, Linear, Radial } kind = None;
  Colour fore, back;
  int pattern = 1;
  std::vector<GradientStop> stops;
  double angle = 0;       ///< Linear: direction in which the colours change, radians counterclockwise from the right
  Point focus{0.5, 0.5};  ///< Radial: the centre as shares of the shape's width and height, from its lower left corner
  bool turnsWithShape = true;
};

FillStyle fillStyleOf(const PageContext& page, const ShapeCells& cells);
/// The gradient of the shape's line; of no kind when it has none.
FillStyle lineGradientOf(const PageContext& page, const ShapeCells& cells);
/// `local`: the filled area in the shape's coordinates (y upward); `toPage`: those to the page.
Fill placedFill(const FillStyle& style, const Box& local, const Matrix& toPage);

struct ShadowStyle {
  bool visible = false;
  Colour colour;
  Point offset;     ///< on the page, points, y downward
  double blur = 0;  ///< deviation, points
};
ShadowStyle shadowStyleOf(const PageContext& page, const ShapeCells& cells);

/// Sets a quick style's list number (1-based) from its cell: 1 to 6 unchanged, 100 to 103 by the page's variation.
/// 0: the theme gives nothing.
int quickStyleIndex(const PageContext& page, int matrix, int Theme::VariationStyle::*part);

}  // namespace quorvel::render
