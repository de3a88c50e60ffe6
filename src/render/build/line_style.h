// A shape's line from its cells.
#pragma once

#include "render/cells/fill.h"
#include "render/cells/page_context.h"
#include "render/cells/shape_cells.h"
#include "render/scene/scene.h"

namespace quorvel::render {

struct LineStyle {
  Stroke stroke;                     ///< invisible when the shape has no line
  FillStyle gradient;                ///< of no kind: the line has one colour
  double rounding = 0;               ///< inches of the drawing
  int beginArrow = 0, endArrow = 0;  ///< 0: none
  int beginSize = 2, endSize = 2;    ///< 0 very small to 6 colossal
};

LineStyle lineStyleOf(const PageContext& page, const ShapeCells& cells);

/// Dashes and gaps of a line pattern in points for a line of that width; empty for a solid one.
std::vector<double> dashesOf(int pattern, double width);

}  // namespace quorvel::render
