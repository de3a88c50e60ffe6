#include "render/cells/theme_values.h"

#include <charconv>

#include "base/text.h"
#include "host/sheet/theme_index.h"
#include "render/cells/fill.h"
#include "render/cells/page_context.h"
#include "render/cells/shape_cells.h"

namespace quorvel::render {
namespace {

using host::Unit;
using host::Value;

/// The shape's choices from the theme of its page.
class ThemedShape {
 public:
  ThemedShape(const PageContext& page, host::SheetId sheet)
      : page_(page), theme_(*page.theme), cells_(page.store, sheet) {}

  /// Colours that are the same for all shapes; "#n" is a colour by number.
  Maybe<Value> colour(std::string_view property) const {
    static constexpr std::string_view names[] = {"Dark",         "Light",        "AccentColor",
                                                 "AccentColor2", "AccentColor3", "AccentColor4",
                                                 "AccentColor5", "AccentColor6", "BackgroundColor"};
    for (int i = 0; i < int(std::size(names)); ++i) {
      if (equalIgnoringCase(names[i], property)) return numbered(i);
    }
    constexpr std::string_view variant = "VariantColor";
    if (startsWithIgnoringCase(property, variant) && property.size() == variant.size() + 1) {
      const int place = property.back() - '1';
      if (place >= 0 && place < 7) return numbered(100 + place);
    }
    if (property.starts_with('#')) {
      int number = -1;
      std::from_chars(property.data() + 1, property.data() + property.size(), number);
      if ((number >= 0 && number <= 8) || (number >= 100 && number <= 106)) return numbered(number);
    }
    return {};
  }

  Maybe<Value> fill(std::string_view part) const {
    if (equalIgnoringCase(part, "Pattern")) return Value::number(1);
    const ThemeFill* fill = fillOfShape();
    if (!fill || fill->stops.empty()) return {};
    if (equalIgnoringCase(part, "Color"))
      return Value::colour(theme_.resolve(fill->stops.front().colour, own(objectKeys().QuickStyleFillColor)));
    if (equalIgnoringCase(part, "Transparency")) return Value::number(transparencyOf(fill->stops.front().colour));
    if (equalIgnoringCase(part, "GradientEnabled")) return Value::boolean(fill->stops.size() > 1);
    return {};
  }

  Maybe<Value> line(std::string_view part, bool connector) const {
    const ObjectKeys& keys = objectKeys();
    const std::vector<ThemeLine>& lines = connector ? theme_.connectorLines : theme_.lines;
    const int matrix = connector ? 1
                                 : quickStyleIndex(page_, cells_.integer(keys.QuickStyleLineMatrix, 100),
                                                   &Theme::VariationStyle::line);
    if (matrix < 1 || matrix > int(lines.size())) return {};
    const ThemeLine& line = lines[std::size_t(matrix - 1)];
    const auto is = [&](std::string_view name) { return equalIgnoringCase(name, part); };
    if (is("Color")) return Value::colour(theme_.resolve(line.colour, own(keys.QuickStyleLineColor)));
    if (is("ColorTrans") || is("Transparency")) return Value::number(transparencyOf(line.colour));
    if (is("Weight")) return Value::number(host::toInternal(line.weight, Unit::Points), Unit::Points);
    if (is("Pattern")) return Value::number(line.pattern);
    if (is("Rounding")) return Value::number(line.rounding, Unit::Inches);
    if (is("Begin")) return Value::number(line.beginArrow);
    if (is("End")) return Value::number(line.endArrow);
    if (is("BeginSize")) return Value::number(line.beginSize);
    if (is("EndSize")) return Value::number(line.endSize);
    return {};
  }

  Maybe<Value> text(std::string_view property) const {
    const ObjectKeys& keys = objectKeys();
    const auto is = [&](std::string_view name) { return equalIgnoringCase(name, property); };
    if (is("LatinFont") && !theme_.fontFamily.empty()) return Value::text(theme_.fontFamily);
    const int matrix =
        quickStyleIndex(page_, cells_.integer(keys.QuickStyleFontMatrix, 100), &Theme::VariationStyle::font);
    if (matrix < 1 || matrix > int(theme_.fonts.size())) return {};
    const ThemeFont& font = theme_.fonts[std::size_t(matrix - 1)];
    if (is("TextColor")) return Value::colour(theme_.resolve(font.colour, own(keys.QuickStyleFontColor)));
    if (is("TextStyle")) return Value::number(font.style);
    return {};
  }

  const ThemeFill* fillOfShape() const {
    const int given = cells_.integer(objectKeys().QuickStyleFillMatrix, 100);
    const int matrix = quickStyleIndex(page_, given, &Theme::VariationStyle::fill);
    return matrix < 1 || matrix > int(theme_.fills.size()) ? nullptr : &theme_.fills[std::size_t(matrix - 1)];
  }

 private:
  double transparencyOf(const ThemeColour& colour) const {
    double opacity = 1;
    theme_.resolve(colour, 0, &opacity);
    return 1 - opacity;
  }
  Value numbered(int colour) const { return Value::colour(theme_.quickColour(colour, page_.variationColour)); }
  std::uint32_t own(const host::CellKey& choice) const {
    return theme_.quickColour(cells_.integer(choice, 100), page_.variationColour);
  }

  const PageContext& page_;
  const Theme& theme_;
  ShapeCells cells_;
};

const host::Page* pageOf(const host::Store& store, host::SheetId id) {
  const host::Sheet* sheet = store.sheet(id);
  return sheet ? store.page(sheet->page) : nullptr;
}

/// The page with the theme and the variation of the shape, which may be others than its page's.
PageContext contextOf(const host::Store& store, const host::Page& page, const std::vector<Theme>& themes,
                      host::SheetId sheet) {
  PageContext context(store, page, themes);
  context.theme = nullptr;
  const int number = host::themeNumber(store, sheet);
  for (const Theme& theme : themes) {
    if (theme.schemeNumber == number) context.theme = &theme;
  }
  const auto own = [&](const host::CellKey& key, int& variation) {
    const int wanted = host::themeIndex(store, sheet, key);
    if (wanted >= 0 && wanted < 4) variation = wanted;
  };
  own(objectKeys().VariationColorIndex, context.variationColour);
  own(objectKeys().VariationStyleIndex, context.variationStyle);
  return context;
}

}  // namespace

Maybe<Value> themeProperty(const host::Store& store, const std::vector<Theme>& themes, host::SheetId sheet,
                           std::string_view property) {
  const host::Page* page = pageOf(store, sheet);
  if (!page) return {};
  const PageContext context = contextOf(store, *page, themes, sheet);
  if (!context.theme) return {};
  const ThemedShape shape(context, sheet);
  if (const Maybe<Value> colour = shape.colour(property)) return colour;
  for (const std::string_view group : {"Fill", "Line", "Connector"}) {
    if (!startsWithIgnoringCase(property, group)) continue;
    const std::string_view part = property.substr(group.size());
    return group == "Fill" ? shape.fill(part) : shape.line(part, group == "Connector");
  }
  return shape.text(property);
}

std::uint32_t throughGradientStop(const host::Store& store, const std::vector<Theme>& themes, host::SheetId sheet,
                                  std::uint32_t rgb, int stop) {
  const host::Page* page = pageOf(store, sheet);
  if (!page) return rgb;
  const PageContext context = contextOf(store, *page, themes, sheet);
  if (!context.theme) return rgb;
  const ThemeFill* fill = ThemedShape(context, sheet).fillOfShape();
  if (!fill || fill->stops.size() < 2 || stop < 1 || stop > int(fill->stops.size())) return rgb;
  ThemeColour change = fill->stops[std::size_t(stop - 1)].colour;
  change.base = ThemeColour::Placeholder;
  return context.theme->resolve(change, rgb);
}

}  // namespace quorvel::render
