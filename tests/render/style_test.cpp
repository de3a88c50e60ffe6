// Colours, fills, lines, shadows and themes.
#include <gtest/gtest.h>

#include "render/build/line_style.h"
#include "render/drawing.h"
#include "render/scene/hatch.h"

namespace quorvel::render {
namespace {

struct StyledDrawing : Drawing {
  host::SheetId shape = addRectangle(2, 1.5, 2, 1);
  SceneOptions options;

  PathItem item() const {
    const Scene built = scene(options);
    const auto found = itemsOf<PathItem>(built);
    return found.empty() ? PathItem{} : *found.back();
  }
  std::uint32_t fillColour() const {
    const PathItem path = item();
    const auto* colour = std::get_if<Colour>(&path.fill);
    return colour ? colour->rgb : 0xDEAD0000;
  }
};

TEST(Style, ColoursAreNumbersTextsOrValues) {
  StyledDrawing drawing;
  drawing.store.document(drawing.document)->colours = {{24, 0x112233}, {3, 0x00EE00}};
  const std::pair<host::Value, std::uint32_t> cases[] = {
      {host::Value::number(2), 0xFF0000},        {host::Value::number(24), 0x112233},
      {host::Value::number(3), 0x00EE00},        {host::Value::text("#5b9BD5"), 0x5B9BD5},
      {host::Value::colour(0x010203), 0x010203}, {host::Value::number(9000), 0xFFFFFF},
      {host::Value::text("nothing"), 0xFFFFFF},  {host::Value::error(host::ErrorCode::Reference), 0xFFFFFF},
  };
  for (const auto& [value, rgb] : cases) {
    drawing.set(drawing.shape, "FillForegnd", value);
    EXPECT_EQ(drawing.fillColour(), rgb) << value.asText();
  }
}

TEST(Style, FillsArePlainHatchedOrGraduated) {
  StyledDrawing drawing;
  drawing.set(drawing.shape, "FillForegnd", 2);
  drawing.set(drawing.shape, "FillBkgnd", 4);
  drawing.set(drawing.shape, "FillForegndTrans", 0.25);
  EXPECT_EQ(std::get<Colour>(drawing.item().fill), (Colour{0xFF0000, 0.75}));
  drawing.set(drawing.shape, "FillPattern", 6);
  EXPECT_EQ(std::get<Pattern>(drawing.item().fill), (Pattern{6, {0xFF0000, 0.75}, {0x0000FF, 1}}));
  const auto direction = [&](int pattern) {
    drawing.set(drawing.shape, "FillPattern", pattern);
    const Gradient gradient = std::get<Gradient>(drawing.item().fill);
    return std::pair(std::round(gradient.to.x - gradient.from.x), std::round(gradient.to.y - gradient.from.y));
  };
  EXPECT_EQ(direction(25), std::pair(144.0, 0.0)) << "to the right";
  EXPECT_EQ(direction(27), std::pair(-144.0, 0.0));
  EXPECT_EQ(direction(28), std::pair(0.0, 72.0)) << "downward";
  EXPECT_EQ(direction(30), std::pair(0.0, -72.0));
  drawing.set(drawing.shape, "FillPattern", 25);
  drawing.set(drawing.shape, "Angle", 3.141592653589793);
  const Gradient turned = std::get<Gradient>(drawing.item().fill);
  EXPECT_NEAR(turned.from.x, 216, 1e-6) << "a gradient turns with its shape";
  EXPECT_NEAR(turned.to.x, 72, 1e-6);
  EXPECT_EQ(turned.stops.front().colour.rgb, 0xFF0000u);

  drawing.set(drawing.shape, "FillGradientEnabled", 1);
  for (int row = 0; row < 3; ++row) {
    const auto at = [&](host::Column column) -> host::Value& {
      return drawing.store.sheet(drawing.shape)
          ->local({host::SectionNumber::FillGradient, host::RowKey::index(std::uint32_t(row)), column})
          .value;
    };
    at(columnKeys().FillGradientGradientStopColor) = host::Value::number(row + 2);
    at(columnKeys().FillGradientGradientStopPosition) = host::Value::number(1 - row / 2.0);
  }
  drawing.set(drawing.shape, "FillGradientAngle", 1.5707963267948966);
  drawing.set(drawing.shape, "RotateGradientWithShape", 0.0);
  const Gradient own = std::get<Gradient>(drawing.item().fill);
  ASSERT_EQ(own.stops.size(), 3u);
  EXPECT_EQ(own.stops[0].colour.rgb, 0x0000FFu) << "in the order of their positions";
  EXPECT_NEAR(own.from.y, 72, 1e-6) << "from the top, though the shape is upside down";
  EXPECT_NEAR(own.to.y, 144, 1e-6);
  drawing.set(drawing.shape, "FillGradientDir", 3);
  EXPECT_TRUE(std::get<Gradient>(drawing.item().fill).radial);
  for (int number = 2; number <= 24; ++number) {
    const PatternTile tile = patternTile(number);
    EXPECT_FALSE(tile.lines.isEmpty() && tile.areas.isEmpty()) << number;
  }
}

TEST(Style, LinesHaveWeightDashesAndCaps) {
  StyledDrawing drawing;
  drawing.set(drawing.shape, "LineWeight", 0.0);
  drawing.set(drawing.shape, "LinePattern", 2);
  drawing.set(drawing.shape, "LineCap", 2);
  EXPECT_GT(drawing.item().stroke.width, 0) << "a line of no width is the thinnest one";
  EXPECT_EQ(drawing.item().stroke.dashes.size(), 2u);
  drawing.set(drawing.shape, "LinePattern", 1);
  EXPECT_TRUE(drawing.item().stroke.dashes.empty());
  EXPECT_EQ(drawing.item().stroke.cap, LineCap::Square);
  for (int pattern = 2; pattern <= 23; ++pattern) {
    const std::vector<double> dashes = dashesOf(pattern, 2);
    EXPECT_TRUE(!dashes.empty() && dashes.size() % 2 == 0) << pattern;
    EXPECT_EQ(dashesOf(pattern, 4)[0], 2 * dashes[0]);
  }
  EXPECT_TRUE(dashesOf(24, 1).empty());
}

TEST(Style, ShadowsAreBehindAtThePagesOffset) {
  StyledDrawing drawing;
  drawing.set(drawing.shape, "ShdwPattern", 1);
  drawing.set(drawing.shape, "ShdwForegnd", 2);
  const Scene scene = drawing.scene();
  const auto paths = itemsOf<PathItem>(scene);
  ASSERT_EQ(paths.size(), 2u);
  EXPECT_EQ(std::get<Colour>(paths[0]->fill).rgb, 0xFF0000u);
  EXPECT_NEAR(boundsOf(paths[0]->path).left, 72 + 9, 1e-6);
  EXPECT_NEAR(boundsOf(paths[0]->path).top, 72 + 9, 1e-6);
  EXPECT_EQ(paths[0]->blur, 0);
  drawing.set(drawing.shape, "ShapeShdwBlur", 8.0 / 72);
  const Scene soft = drawing.scene();
  EXPECT_NEAR(itemsOf<PathItem>(soft)[0]->blur, 2, 1e-9);
  EXPECT_EQ(itemsOf<PathItem>(soft)[1]->blur, 0) << "the shape itself stays sharp";

  const auto group = drawing.addShape(2, 1.5, 2, 1, {}, host::SheetKind::Group);
  const auto member = drawing.addRectangle(1, 0.5, 2, 1, group);
  drawing.set(drawing.shape, "ShdwPattern", 0.0);
  drawing.set(member, "ShdwPattern", 1);
  for (const auto& [show, count] : {std::pair{0, 3u}, {1, 2u}, {2, 3u}}) {
    drawing.set(member, "ShapeShdwShow", show);
    EXPECT_EQ(itemsOf<PathItem>(drawing.scene()).size(), count) << "a member's shadow, " << show;
  }
}

/// One row for each stop: red at the left, blue at the right.
void setStops(Drawing& drawing, host::SheetId shape, host::SectionNumber section, host::Column colour,
              host::Column position) {
  for (std::uint32_t row = 0; row < 2; ++row) {
    drawing.store.sheet(shape)->local({section, host::RowKey::index(row), colour}).value =
        host::Value::number(row == 0 ? 2 : 4);
    drawing.store.sheet(shape)->local({section, host::RowKey::index(row), position}).value = host::Value::number(row);
  }
}

TEST(Style, LinesMayChangeTheirColour) {
  StyledDrawing drawing;
  setStops(drawing, drawing.shape, host::SectionNumber::LineGradient, columnKeys().LineGradientGradientStopColor,
           columnKeys().LineGradientGradientStopPosition);
  EXPECT_FALSE(drawing.item().stroke.gradient) << "not enabled";
  drawing.set(drawing.shape, "LineGradientEnabled", 1);
  drawing.set(drawing.shape, "LineGradientAngle", 0.0);
  const auto gradient = drawing.item().stroke.gradient;
  ASSERT_TRUE(gradient);
  EXPECT_NEAR(gradient->from.x, 72, 1e-6);
  EXPECT_NEAR(gradient->to.x, 216, 1e-6);
  EXPECT_EQ(gradient->stops[1].colour.rgb, 0x0000FFu);
  EXPECT_EQ(std::get<Colour>(drawing.item().fill).rgb, 0xFFFFFFu);
}

constexpr std::string_view themePart = R"(<?xml version="1.0"?>
<a:theme xmlns:a="urn:a" xmlns:vt="urn:v"><a:themeElements><a:clrScheme>
  <a:dk1><a:srgbClr val="000000"/></a:dk1><a:lt1><a:sysClr val="window" lastClr="FFFFFF"/></a:lt1>
  <a:accent1><a:srgbClr val="5B9BD5"/></a:accent1>
  <a:extLst><a:ext><vt:schemeID schemeEnum="33"/></a:ext><a:ext><vt:variationClrSchemeLst>
    <vt:variationClrScheme monotone="1"><vt:varColor1><a:srgbClr val="5B9BD5"/></vt:varColor1>
      <vt:varColor2><a:srgbClr val="111111"/></vt:varColor2></vt:variationClrScheme>
    <vt:variationClrScheme><vt:varColor1><a:srgbClr val="A5A5A5"/></vt:varColor1>
      <vt:varColor2><a:srgbClr val="B43500"/></vt:varColor2></vt:variationClrScheme>
  </vt:variationClrSchemeLst></a:ext></a:extLst></a:clrScheme>
  <a:fontScheme><a:minorFont><a:latin typeface="Liberation Serif"/></a:minorFont></a:fontScheme>
  <a:fmtScheme><a:fillStyleLst><a:solidFill><a:schemeClr val="lt1"/></a:solidFill>
    <a:solidFill><a:schemeClr val="phClr"><a:shade val="75000"/></a:schemeClr></a:solidFill>
    <a:gradFill><a:gsLst><a:gs pos="0"><a:schemeClr val="phClr"/></a:gs><a:gs pos="100000"><a:schemeClr val="lt1"/></a:gs>
      </a:gsLst><a:lin ang="5400000"/></a:gradFill></a:fillStyleLst>
  <a:lnStyleLst><a:ln w="25400"><a:solidFill><a:schemeClr val="phClr"><a:shade val="50000"/></a:schemeClr></a:solidFill></a:ln>
    </a:lnStyleLst></a:fmtScheme></a:themeElements>
  <a:extLst><vt:lineStyles><vt:fmtSchemeLineStyles><vt:lineStyle><vt:lineEx pattern="9"/></vt:lineStyle>
    <vt:lineStyle><vt:lineEx pattern="2" rndg="0"/></vt:lineStyle></vt:fmtSchemeLineStyles></vt:lineStyles>
  <vt:fontStyles><vt:fontProps style="1"><vt:color><a:schemeClr val="lt1"/></vt:color></vt:fontProps></vt:fontStyles>
  <vt:variationStyleSchemeLst><vt:variationStyleScheme><vt:varStyle fillIdx="2" lineIdx="1" fontIdx="1"/>
    </vt:variationStyleScheme></vt:variationStyleSchemeLst></a:extLst></a:theme>)";

TEST(Style, ThemedCellsHaveTheThemesValues) {
  StyledDrawing drawing;
  const Maybe<Theme> theme = readTheme(themePart);
  ASSERT_TRUE(theme);
  EXPECT_EQ(theme->schemeNumber, 33);
  drawing.options.themes = {Theme{}, *theme};
  const auto sheet = drawing.store.page(drawing.page)->sheet;
  drawing.set(sheet, "ColorSchemeIndex", 33);
  for (const char* cell : {"FillForegnd", "FillPattern", "FillGradientEnabled", "LineColor", "LineWeight",
                           "LinePattern", "Char.Color", "Char.Style", "Char.Font"})
    drawing.set(drawing.shape, cell, "Themed");
  drawing.setText(drawing.shape, "Task");
  drawing.set(drawing.shape, "QuickStyleFillColor", 101);
  EXPECT_EQ(drawing.fillColour(), 0x4F88BBu)
      << "one-coloured: the variation's first colour, with three quarters of its lightness";
  EXPECT_EQ(drawing.item().stroke.colour.rgb, 0x41719Cu);
  EXPECT_DOUBLE_EQ(drawing.item().stroke.width, 2);
  EXPECT_EQ(drawing.item().stroke.dashes, dashesOf(2, 2));

  drawing.set(drawing.shape, "QuickStyleFillColor", 201);
  EXPECT_EQ(drawing.fillColour(), theme->resolve(theme->fills[1].stops[0].colour, 0x111111))
      << "its own colour all the same";
  drawing.set(drawing.shape, "QuickStyleFillColor", 101);

  drawing.set(sheet, "VariationColorIndex", 1);
  drawing.set(drawing.shape, "QuickStyleFillMatrix", 3);
  const Gradient gradient = std::get<Gradient>(drawing.item().fill);
  EXPECT_EQ(gradient.stops[0].colour.rgb, 0xB43500u);
  EXPECT_NEAR(gradient.to.y, 144, 1e-6) << "downward";

  const auto textStyle = [&] {
    const Scene scene = drawing.scene(drawing.options);
    return itemsOf<TextItem>(scene).at(0)->layout->styles[0];
  };
  EXPECT_EQ(textStyle().colour.rgb, 0xFFFFFFu);
  EXPECT_TRUE(textStyle().bold);
  drawing.set(drawing.shape, "QuickStyleVariation", 2);
  EXPECT_EQ(textStyle().colour.rgb, 0xA5A5A5u) << "white text on the page would be invisible";

  // A page without a theme is plain even if the file has themes; a shape, or a group, may have its own.
  for (const double none : {0.0, 65534.0}) {
    drawing.set(sheet, "ColorSchemeIndex", none);
    EXPECT_EQ(drawing.fillColour(), 0xFFFFFFu) << none;
    EXPECT_EQ(textStyle().colour.rgb, 0x000000u) << none;
  }
  drawing.set(drawing.shape, "ColorSchemeIndex", 33);
  drawing.set(drawing.shape, "QuickStyleFillMatrix", 2);
  EXPECT_NE(drawing.fillColour(), 0xFFFFFFu);
  const auto group = drawing.addShape(2, 1.5, 2, 1, {}, host::SheetKind::Group);
  const auto member = drawing.addRectangle(1, 0.5, 2, 1, group);
  drawing.set(member, "FillForegnd", "Themed");
  EXPECT_EQ(drawing.fillColour(), 0xFFFFFFu);
  drawing.set(group, "ColorSchemeIndex", 33);
  EXPECT_NE(drawing.fillColour(), 0xFFFFFFu);

  drawing.set(sheet, "ColorSchemeIndex", 33);
  drawing.options.themes.clear();
  EXPECT_EQ(drawing.fillColour(), 0xFFFFFFu) << "without a theme it is drawn plainly";
  EXPECT_FALSE(readTheme("<a:theme><broken"));
  EXPECT_FALSE(readTheme("<other/>"));
}

}  // namespace
}  // namespace quorvel::render
