#include "render/build/line_style.h"

#include <algorithm>
#include <span>

#include "render/cells/colours.h"
#include "render/cells/fill.h"

namespace quorvel::render {
namespace {

/// A width of 0 asks for the thinnest line that a printer shows.
constexpr double hairline = 0.24;

void themedLine(const PageContext& page, const ShapeCells& cells, ThemeLine& line, std::uint32_t& rgb) {
  if (!page.theme) return;
  const ObjectKeys& keys = objectKeys();
  const int type = cells.integer(keys.QuickStyleType);
  const bool connector = type == 2 || type == 3 || (type == 0 && cells.held(keys.BeginX));
  const std::vector<ThemeLine>& lines = connector ? page.theme->connectorLines : page.theme->lines;
  int matrix = cells.integer(keys.QuickStyleLineMatrix, 100);
  matrix = quickStyleIndex(page, matrix, &Theme::VariationStyle::line);
  if (connector && cells.integer(keys.QuickStyleLineMatrix, 100) >= 100) matrix = 1;
  rgb = page.theme->quickColour(cells.integer(keys.QuickStyleLineColor, 100), page.variationColour);
  if (matrix < 1 || matrix > int(lines.size())) return;
  line = lines[std::size_t(matrix - 1)];
  rgb = page.theme->resolve(line.colour, rgb);
}

}  // namespace

std::vector<double> dashesOf(int pattern, double width) {
  // In multiples of the line's width. 9 to 15 are the short forms of 2 to 8, 16 to 22 the long ones.
  static constexpr double table[][10] = {
      {6, 3},  {1, 3}, {6, 3, 1, 3},  {6, 3, 1, 3, 1, 3},  {6, 3, 6, 3, 1, 3},   {14, 2, 6, 2},  {14, 2, 6, 2, 6, 2},
      {3, 2},  {1, 2}, {3, 2, 1, 2},  {3, 2, 1, 2, 1, 2},  {3, 2, 3, 2, 1, 2},   {7, 2, 3, 2},   {7, 2, 3, 2, 3, 2},
      {12, 6}, {1, 6}, {12, 6, 1, 6}, {12, 6, 1, 6, 1, 6}, {12, 6, 12, 6, 1, 6}, {27, 5, 12, 5}, {27, 5, 12, 5, 12, 5},
      {2, 2},
  };
  std::vector<double> dashes;
  if (pattern < 2 || pattern > 1 + int(std::size(table))) return dashes;
  // A thin line's dashes would run together.
  const double unit = std::max(width, 0.5);
  for (double multiple : table[pattern - 2])
    if (multiple > 0) dashes.push_back(multiple * unit);
  return dashes;
}

LineStyle lineStyleOf(const PageContext& page, const ShapeCells& cells) {
  const ObjectKeys& keys = objectKeys();
  LineStyle style;
  const host::Value pattern = cells.value(keys.LinePattern), colour = cells.value(keys.LineColor),
                    weight = cells.value(keys.LineWeight);
  ThemeLine themed;
  std::uint32_t themedRgb = 0;
  if (isThemed(pattern) || isThemed(colour) || isThemed(weight)) themedLine(page, cells, themed, themedRgb);
  const int number = isThemed(pattern) ? themed.pattern : int(pattern.asNumber().or_(1));
  if (number == 0) return style;
  style.stroke.visible = true;
  style.stroke.colour.rgb = colourOf(page.document, colour).or_(themedRgb);
  style.stroke.colour.opacity = 1 - std::clamp(cells.number(keys.LineColorTrans), 0.0, 1.0);
  style.gradient = lineGradientOf(page, cells);
  const double width = isThemed(weight) ? themed.weight : weight.asNumber().or_(0.01) * 72;
  style.stroke.width = std::max(width, hairline);
  const int cap = cells.integer(keys.LineCap);
  style.stroke.cap = cap == 1 ? LineCap::Butt : cap == 2 ? LineCap::Square : LineCap::Round;
  style.stroke.dashes = dashesOf(number, style.stroke.width);
  // Round ends would close the gaps of short dashes.
  if (!style.stroke.dashes.empty()) style.stroke.cap = LineCap::Butt;
  const host::Value rounding = cells.value(keys.Rounding);
  style.rounding = isThemed(rounding) ? themed.rounding : std::max(0.0, rounding.asNumber().or_(0));
  const auto arrow = [&](const host::CellKey& key, int ofTheme) {
    const host::Value value = cells.value(key);
    return isThemed(value) ? ofTheme : std::clamp(int(value.asNumber().or_(0)), 0, 45);
  };
  style.beginArrow = arrow(keys.BeginArrow, themed.beginArrow);
  style.endArrow = arrow(keys.EndArrow, themed.endArrow);
  style.beginSize = std::clamp(cells.integer(keys.BeginArrowSize, themed.beginSize), 0, 6);
  style.endSize = std::clamp(cells.integer(keys.EndArrowSize, themed.endSize), 0, 6);
  return style;
}

}  // namespace quorvel::render
