#include "render/cells/fill.h"

#include <algorithm>
#include <numbers>

#include "render/cells/colours.h"

namespace quorvel::render {
namespace {

constexpr double pi = std::numbers::pi;

double opacityOf(const ShapeCells& cells, const host::CellKey& transparency) {
  return 1 - std::clamp(cells.number(transparency), 0.0, 1.0);
}

/// The gradients that older drawings name by number.
bool namedGradient(int pattern, FillStyle& style) {
  const GradientStop fore{0, style.fore}, back{1, style.back};
  const auto linear = [&](double degrees, bool mirrored) {
    style.kind = FillStyle::Linear;
    style.angle = degrees * pi / 180;
    if (mirrored)
      style.stops = {{0, style.back}, {0.5, style.fore}, {1, style.back}};
    else
      style.stops = {fore, back};
  };
  const auto radial = [&](double x, double y) {
    style.kind = FillStyle::Radial;
    style.focus = {x, y};
    style.stops = {fore, back};
  };
  switch (pattern) {
    case 25:
      linear(0, false);
      return true;
    case 26:
      linear(0, true);
      return true;
    case 27:
      linear(180, false);
      return true;
    case 28:
      linear(270, false);
      return true;
    case 29:
      linear(90, true);
      return true;
    case 30:
      linear(90, false);
      return true;
    case 31:
    case 36:
      radial(0, 1);
      return true;
    case 32:
    case 37:
      radial(1, 1);
      return true;
    case 33:
    case 38:
      radial(0, 0);
      return true;
    case 34:
    case 39:
      radial(1, 0);
      return true;
    case 35:
    case 40:
      radial(0.5, 0.5);
      return true;
    default:
      return false;
  }
}

void themedFill(const PageContext& page, const ShapeCells& cells, bool wantsGradient, FillStyle& style) {
  const ObjectKeys& keys = objectKeys();
  if (!page.theme) return;
  const int matrix = quickStyleIndex(page, cells.integer(keys.QuickStyleFillMatrix, 100), &Theme::VariationStyle::fill);
  const std::uint32_t own = page.theme->quickColour(cells.integer(keys.QuickStyleFillColor, 100), page.variationColour);
  style.fore.rgb = own;
  if (matrix < 1 || matrix > int(page.theme->fills.size())) return;
  const ThemeFill& fill = page.theme->fills[std::size_t(matrix - 1)];
  if (fill.stops.empty()) return;
  const auto resolved = [&](const ThemeColour& colour) {
    Colour result = style.fore;
    result.rgb = page.theme->resolve(colour, own, &result.opacity);
    return result;
  };
  style.fore = resolved(fill.stops.front().colour);
  if (fill.stops.size() < 2 || !wantsGradient) return;
  style.kind = fill.radial ? FillStyle::Radial : FillStyle::Linear;
  style.angle = -fill.angle;
  for (const ThemeFill::Stop& stop : fill.stops) style.stops.push_back({stop.offset, resolved(stop.colour)});
}

/// Where a gradient's cells are: those of fills and lines have the same meaning.
struct GradientCells {
  host::SectionNumber section;
  host::Column colour, transparency, position;
  host::CellKey direction, angle;
};

void ownGradient(const PageContext& page, const ShapeCells& cells, const GradientCells& from, FillStyle& style) {
  for (const host::RowView& row : host::rowsOf(page.store, cells.sheet(), from.section)) {
    const auto at = [&](host::Column column) { return host::CellKey{from.section, row.key, column}; };
    const Maybe<std::uint32_t> rgb = colourOf(page.document, cells.value(at(from.colour)));
    if (!rgb) continue;
    const double opacity = 1 - std::clamp(cells.number(at(from.transparency)), 0.0, 1.0);
    style.stops.push_back({std::clamp(cells.number(at(from.position)), 0.0, 1.0), {*rgb, opacity}});
  }
  std::stable_sort(style.stops.begin(), style.stops.end(),
                   [](const GradientStop& a, const GradientStop& b) { return a.offset < b.offset; });
  if (style.stops.size() < 2) {
    style.stops.clear();
    return;
  }
  const int direction = cells.integer(from.direction);
  if (direction == 0) {
    style.kind = FillStyle::Linear;
    style.angle = -cells.number(from.angle);
    return;
  }
  // 1 to 7 spread in circles, 8 to 12 in rectangles, from a corner, the middle of a side or the centre.
  static constexpr Point foci[] = {{1, 0}, {0, 0}, {0.5, 0.5}, {0.5, 0}, {0.5, 1}, {1, 1},    {0, 1},
                                   {1, 0}, {0, 0}, {0.5, 0.5}, {1, 1},   {0, 1},   {0.5, 0.5}};
  style.kind = FillStyle::Radial;
  style.focus = foci[std::clamp(direction - 1, 0, int(std::size(foci)) - 1)];
}

}  // namespace

int quickStyleIndex(const PageContext& page, int matrix, int Theme::VariationStyle::*part) {
  if (matrix < 100) return matrix;
  if (!page.theme || page.theme->variationStyles.empty() || matrix > 103) return 0;
  const auto& styles = page.theme->variationStyles;
  const std::size_t variation = std::min(std::size_t(page.variationStyle), styles.size() - 1);
  return styles[variation][std::size_t(matrix - 100)].*part;
}

FillStyle fillStyleOf(const PageContext& page, const ShapeCells& cells) {
  const ObjectKeys& keys = objectKeys();
  FillStyle style;
  const host::Value patternCell = cells.value(keys.FillPattern);
  style.pattern = isThemed(patternCell) ? 1 : int(patternCell.asNumber().or_(1));
  if (style.pattern == 0) return style;
  style.kind = FillStyle::Plain;
  style.fore = {0xFFFFFF, opacityOf(cells, keys.FillForegndTrans)};
  style.back = {0x000000, opacityOf(cells, keys.FillBkgndTrans)};
  const host::Value fore = cells.value(keys.FillForegnd), gradient = cells.value(keys.FillGradientEnabled);
  if (const Maybe<std::uint32_t> rgb = colourOf(page.document, fore))
    style.fore.rgb = *rgb;
  else
    themedFill(page, cells, isThemed(gradient), style);
  keep(style.back.rgb, colourOf(page.document, cells.value(keys.FillBkgnd)));
  if (gradient.asNumber().or_(0) != 0) {
    style.turnsWithShape = cells.number(keys.RotateGradientWithShape, 1) != 0;
    const ColumnKeys& columns = columnKeys();
    const GradientCells own{host::SectionNumber::FillGradient,
                            columns.FillGradientGradientStopColor,
                            columns.FillGradientGradientStopColorTrans,
                            columns.FillGradientGradientStopPosition,
                            keys.FillGradientDir,
                            keys.FillGradientAngle};
    ownGradient(page, cells, own, style);
  }
  if (style.stops.empty() && style.pattern >= 2 && !namedGradient(style.pattern, style) && style.pattern <= 24)
    style.kind = FillStyle::Hatch;
  return style;
}

FillStyle lineGradientOf(const PageContext& page, const ShapeCells& cells) {
  const ObjectKeys& keys = objectKeys();
  FillStyle style;
  if (cells.value(keys.LineGradientEnabled).asNumber().or_(0) == 0) return style;
  const ColumnKeys& columns = columnKeys();
  const GradientCells own{host::SectionNumber::LineGradient,
                          columns.LineGradientGradientStopColor,
                          columns.LineGradientGradientStopColorTrans,
                          columns.LineGradientGradientStopPosition,
                          keys.LineGradientDir,
                          keys.LineGradientAngle};
  ownGradient(page, cells, own, style);
  return style;
}

Fill placedFill(const FillStyle& style, const Box& local, const Matrix& toPage) {
  switch (style.kind) {
    case FillStyle::None:
      return {};
    case FillStyle::Plain:
      return style.fore;
    case FillStyle::Hatch:
      return Pattern{style.pattern, style.fore, style.back};
    case FillStyle::Linear:
    case FillStyle::Radial:
      break;
  }
  if (local.isEmpty()) return style.fore;
  Gradient gradient;
  gradient.stops = style.stops;
  Box box = local;
  Matrix map = toPage;
  if (!style.turnsWithShape) {
    // The gradient keeps its direction on the page: it is laid over the shape's upright frame.
    Box frame;
    for (Point p : {Point{local.left, local.top}, Point{local.right, local.top}, Point{local.left, local.bottom},
                    Point{local.right, local.bottom}})
      frame.add(toPage(p));
    box = {frame.left, -frame.bottom, frame.right, -frame.top};
    map = Matrix::scaling(1, -1);
  }
  const Point centre{(box.left + box.right) / 2, (box.top + box.bottom) / 2};
  if (style.kind == FillStyle::Linear) {
    const Point direction{std::cos(style.angle), std::sin(style.angle)};
    const double reach = (std::abs(direction.x) * box.width() + std::abs(direction.y) * box.height()) / 2;
    gradient.from = map(centre - direction * reach);
    gradient.to = map(centre + direction * reach);
  } else {
    gradient.radial = true;
    const Point focus{box.left + style.focus.x * box.width(), box.top + style.focus.y * box.height()};
    gradient.from = gradient.to = map(focus);
    double reach = 0;
    for (Point p : {Point{box.left, box.top}, Point{box.right, box.top}, Point{box.left, box.bottom},
                    Point{box.right, box.bottom}})
      reach = std::max(reach, distance(map(focus), map(p)));
    gradient.radius = reach;
  }
  return gradient;
}

ShadowStyle shadowStyleOf(const PageContext& page, const ShapeCells& cells) {
  const ObjectKeys& keys = objectKeys();
  ShadowStyle shadow;
  // Themed shadows are soft glows that few themes have; they are not drawn.
  const host::Value pattern = cells.value(keys.ShdwPattern);
  if (isThemed(pattern) || pattern.asNumber().or_(0) == 0) return shadow;
  const int show = cells.integer(keys.ShapeShdwShow);
  const host::Sheet* sheet = page.store.sheet(cells.sheet());
  if (show == 1 && sheet && sheet->parent) return shadow;
  shadow.visible = true;
  shadow.colour = {0x808080, opacityOf(cells, keys.ShdwForegndTrans)};
  keep(shadow.colour.rgb, colourOf(page.document, cells.value(keys.ShdwForegnd)));
  double x = cells.number(keys.ShapeShdwOffsetX), y = cells.number(keys.ShapeShdwOffsetY);
  if (cells.integer(keys.ShapeShdwType) == 0) {
    const ShapeCells pageCells(page.store, page.pageSheet);
    x = pageCells.number(keys.ShdwOffsetX);
    y = pageCells.number(keys.ShdwOffsetY);
  }
  shadow.offset = {x * 72, -y * 72};
  // The cell gives the whole width over which the shadow fades; nearly all of that are four deviations.
  shadow.blur = std::clamp(cells.number(keys.ShapeShdwBlur) * 72, 0.0, 100.0) / 4;
  return shadow;
}

}  // namespace quorvel::render
