// Values of a theme in formulas, without a theme, and in themed cells.
#include "host/host_fixture.h"
#include "host/sheet/theme_index.h"

namespace quorvel {
namespace {

using host::Value;

class TwoThemes : public host::ThemeValues {
 public:
  Maybe<Value> valueOf(const host::Store& store, host::SheetId sheet, std::string_view property) const override {
    const int number = host::themeNumber(store, sheet);
    if (property == "FillColor") return Value::colour(number == 33 ? 0x112233 : 0x445566);
    if (property == "LineWeight") return Value::number(host::toInternal(3, host::Unit::Points), host::Unit::Points);
    return {};
  }
  Maybe<std::uint32_t> throughGradientStop(const host::Store&, host::SheetId, std::uint32_t rgb, int) const override {
    return rgb / 2;
  }
};

class Themes : public HostTest {
 protected:
  Themes() { engine().setThemes(&themes); }
  std::string shown(const Shape& shape, const std::string& formula) {
    return user(shape, "Seen", formula).ResultStr(0).or_("nothing");
  }
  void scheme(const Shape& shape, const char* number) {
    ASSERT_TRUE(shape.Cells("ColorSchemeIndex").FormulaForce(number));
  }

  TwoThemes themes;
  Shape shape = rectangle();
};

TEST_F(Themes, WithoutOneTheSecondArgumentCounts) {
  for (const auto& [formula, expected] : {
           std::pair{"THEMEVAL(\"FillColor\",RGB(1,2,3))", "RGB(1,2,3)"},
           {"THEMEVAL(\"LineWeight\",0.24 pt)", "0.24 pt."},
           {"THEMEVAL(\"AccentColor2\")", "RGB(157,187,97)"},
           {"THEMEVAL(\"VariantColor1\")", "RGB(192,80,70)"},
           {"THEMEVAL(\"5\")", "RGB(171,154,192)"},
           {"THEMEVAL(2)", "RGB(192,80,70)"},
           {"THEME(\"FillColor\")", "RGB(150,175,207)"},
           {"THEMEVAL(\"ConnectorWeight\")", "0.75 pt."},
           {"SHADE(RGB(192,80,70),LUMDIFF(THEMEVAL(\"FillColor\"),THEMEVAL(\"FillColor2\")))", "RGB(207,121,114)"},
           {"THEMECBV(RGB(2,4,6),3)", "RGB(2,4,6)"},
           {"IF(ISTHEMED(),1,2)", "2"},
       }) {
    EXPECT_EQ(shown(shape, formula), expected) << formula;
  }
  // An unknown name keeps the last value.
  const Cell kept = user(shape, "Kept", "7");
  EXPECT_TRUE(kept.FormulaForce("THEMEVAL(\"SketchAmount\")"));
  EXPECT_EQ(kept.ResultStr(0), "7");
}

TEST_F(Themes, TheShapesOwnThenItsGroupsThenItsPages) {
  const std::string fill = "THEMEVAL(\"FillColor\",RGB(1,2,3))";
  const Shape other = rectangle();
  EXPECT_EQ(shown(shape, fill), "RGB(1,2,3)");
  scheme(shape, "65534");
  EXPECT_EQ(shown(shape, fill), "RGB(1,2,3)") << "the page has none";
  ASSERT_TRUE(page.PageSheet().Cells("ColorSchemeIndex").FormulaForce("33"));
  EXPECT_EQ(shown(shape, fill), "RGB(17,34,51)");
  EXPECT_EQ(shown(other, fill), "RGB(1,2,3)") << "it takes none";
  EXPECT_EQ(shown(shape, "THEMECBV(RGB(0,0,4),1)"), "RGB(0,0,2)");
  EXPECT_EQ(shown(shape, "IF(ISTHEMED(),1,2)"), "1");
  scheme(other, "40");
  EXPECT_EQ(shown(other, fill + "+0"), "RGB(68,85,102)");
  const host::SheetId member =
      engine().edit().making().addShape(host::PageId{page.ref().id}, sheetOf(other), host::SheetKind::Shape);
  engine().edit().making().sheet(member)->local(host::objectCell("ColorSchemeIndex")).value = Value::number(65534);
  EXPECT_EQ(host::themeNumber(engine().store(), member), 40);
}

TEST_F(Themes, AThemedCellIsReadAsTheThemesValue) {
  host::Sheet& sheet = *engine().edit().making().sheet(sheetOf(shape));
  for (const char* cell : {"FillForegnd", "LineWeight", "SketchAmount"})
    sheet.local(*host::parseCellName(cell)).value = Value::text("Themed");
  EXPECT_EQ(shown(shape, "FillForegnd"), "1") << "white without a theme";
  EXPECT_EQ(shown(shape, "LineWeight*2"), "1.5 pt.");
  scheme(shape, "33");
  EXPECT_EQ(shown(shape, "SHADE(FillForegnd,0)"), "RGB(17,34,51)");
  EXPECT_EQ(shown(shape, "LineWeight*4"), "12 pt.");
  const Cell kept = user(shape, "Kept", "7");
  EXPECT_TRUE(kept.FormulaForce("SketchAmount+1"));
  EXPECT_EQ(kept.ResultStr(0), "7") << "the theme has no value";
}

}  // namespace
}  // namespace quorvel
