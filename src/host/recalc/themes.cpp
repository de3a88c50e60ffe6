#include "host/recalc/themes.h"

#include "base/text.h"
#include "host/cells/cell_table.h"
#include "host/sheet/inheritance.h"
#include "host/sheet/theme_index.h"

namespace quorvel::host {
namespace {

struct CellOfTheme {
  std::string_view cell, property;
};

/// Cells whose names differ from those of the theme's properties; the rest have the same.
constexpr CellOfTheme cellsOfTheme[] = {
    {"FillForegnd", "FillColor"},
    {"FillBkgnd", "FillColor2"},
    {"FillForegndTrans", "FillTransparency"},
    {"Rounding", "LineRounding"},
    {"BeginArrow", "LineBegin"},
    {"EndArrow", "LineEnd"},
    {"BeginArrowSize", "LineBeginSize"},
    {"EndArrowSize", "LineEndSize"},
    {"Font", "LatinFont"},
    {"Color", "TextColor"},
    {"Style", "TextStyle"},
    {"ComplexScriptFont", "ComplexFont"},
    {"ShdwPattern", "ShadowPattern"},
};

struct ColourWithoutTheme {
  std::string_view property;
  std::string_view number;  ///< as cells name the colour that a shape takes; empty: none does
  std::uint32_t rgb;
};

/// What drawings without a theme hold for these; of the second fill colour they have only how light it is.
constexpr ColourWithoutTheme coloursWithoutTheme[] = {
    {"Dark", "#0", 0x000000},
    {"Light", "#1", 0xFFFFFF},
    {"AccentColor", "#2", 0xC05046},
    {"AccentColor2", "#3", 0x9DBB61},
    {"AccentColor3", "#4", 0xAB9AC0},
    {"AccentColor4", "#5", 0x4BACC6},
    {"AccentColor5", "#6", 0xF59D56},
    {"AccentColor6", "#7", 0xFFC000},
    {"BackgroundColor", "#8", 0xFFFFFF},
    {"VariantColor1", "#100", 0xC05046},
    {"VariantColor2", "#101", 0x9DBB61},
    {"VariantColor3", "#102", 0xAB9AC0},
    {"VariantColor4", "#103", 0x4BACC6},
    {"VariantColor5", "#104", 0xF59D56},
    {"VariantColor6", "#105", 0xFFC000},
    {"VariantColor7", "#106", 0x000000},
    {"FillColor", "", 0x96AFCF},
    {"FillColor2", "", 0xBFCEE1},
    {"LineColor", "", 0x1F477D},
    {"ConnectorColor", "", 0x000000},
    {"ShadowColor", "", 0x464646},
};

struct NumberWithoutTheme {
  std::string_view property;
  double number;
  Unit unit = Unit::None;
};

constexpr NumberWithoutTheme numbersWithoutTheme[] = {
    {"ConnectorWeight", 0.75, Unit::Points},
    {"ConnectorPattern", 1},
    {"ConnectorRounding", 0, Unit::Inches},
    {"ConnectorTransparency", 0},
    {"ConnectorBegin", 0},
    {"ConnectorEnd", 0},
    {"ConnectorBeginSize", 2},
    {"ConnectorEndSize", 2},
    {"LineWeight", 0.75, Unit::Points},
    {"LinePattern", 1},
    {"LineTransparency", 0},
    {"FillPattern", 1},
    {"ShadowXOffset", 0, Unit::Inches},
    {"ShadowYOffset", 0, Unit::Inches},
    {"ShadowDirection", 0, Unit::Degrees},
    {"ShadowMagnification", 1},
    {"ShadowTransparency", 0},
};

/// #N/A where it is not known.
Value withoutTheme(std::string_view property) {
  for (const ColourWithoutTheme& row : coloursWithoutTheme) {
    if (equalIgnoringCase(row.property, property) || (!row.number.empty() && row.number == property))
      return Value::colour(row.rgb);
  }
  for (const NumberWithoutTheme& row : numbersWithoutTheme) {
    if (equalIgnoringCase(row.property, property)) return Value::number(toInternal(row.number, row.unit), row.unit);
  }
  return Value::error(ErrorCode::NotAvailable);
}

/// What a shape without a theme shows where its style leaves a cell to the theme: a white box with a black line.
Maybe<Value> plainCell(std::string_view cell) {
  if (cell == "Font" || cell == "ComplexScriptFont") return Value::text("Calibri");
  if (cell == "LineWeight") return withoutTheme("ConnectorWeight");
  for (const std::string_view one : {"FillForegnd", "FillPattern", "LinePattern", "ShapeShdwScaleFactor"}) {
    if (cell == one) return Value::number(1);
  }
  for (const std::string_view two : {"BeginArrowSize", "EndArrowSize"}) {
    if (cell == two) return Value::number(2);
  }
  for (const std::string_view none :
       {"LineColor", "LineColorTrans", "FillForegndTrans", "FillBkgndTrans", "BeginArrow", "EndArrow", "Color", "Style",
        "LineCap", "ShdwPattern", "ShdwForegnd", "ShdwForegndTrans", "ShapeShdwType", "FillGradientEnabled",
        "LineGradientEnabled"}) {
    if (cell == none) return Value::number(0);
  }
  for (const std::string_view none : {"Rounding", "ShapeShdwOffsetX", "ShapeShdwOffsetY"}) {
    if (cell == none) return Value::number(0, Unit::Inches);
  }
  if (cell == "ShapeShdwObliqueAngle") return Value::number(0, Unit::Degrees);
  return {};
}

/// Drawings of earlier releases name one of a fixed set of themes in a row of their pages.
bool hasFixedTheme(const Store& store, SheetId id) {
  static const CellKey colours{SectionNumber::User, RowKey::named(intern("msvThemeColors")), 0};
  const Sheet* sheet = store.sheet(id);
  const Page* page = sheet ? store.page(sheet->page) : nullptr;
  return page && cellExists(store, page->sheet, colours, false) && cellNumber(store, page->sheet, colours) != 0;
}

}  // namespace

ThemeAnswer themeProperty(const Store& store, SheetId sheet, std::string_view property) {
  if (themeNumber(store, sheet) == 0) {
    if (hasFixedTheme(store, sheet)) return {};
    return {ThemeAnswer::NoTheme, withoutTheme(property)};
  }
  if (!store.themes()) return {};
  const Maybe<Value> value = store.themes()->valueOf(store, sheet, property);
  return value ? ThemeAnswer{ThemeAnswer::Known, *value} : ThemeAnswer{};
}

ThemeAnswer themedCell(const Store& store, SheetId sheet, const CellKey& key) {
  // A style sheet is of no page: what its cells give depends on the shape.
  const Sheet* holder = store.sheet(sheet);
  if (!holder || !store.page(holder->page)) return {};
  std::string_view property = columnName(key);
  if (themeNumber(store, sheet) == 0) {
    const Maybe<Value> plain = plainCell(property);
    return plain && !hasFixedTheme(store, sheet) ? ThemeAnswer{ThemeAnswer::Known, *plain} : ThemeAnswer{};
  }
  for (const CellOfTheme& known : cellsOfTheme) {
    if (known.cell == property) {
      property = known.property;
      break;
    }
  }
  return themeProperty(store, sheet, property);
}

}  // namespace quorvel::host
