// The unit that a number without one gets when it is written into a cell.
#include <cmath>

#include "host/host_fixture.h"

namespace quorvel {
namespace {

class WrittenUnits : public HostTest {
 protected:
  /// What the cell shows after the formula was written; then its formula after a bar.
  std::string written(const Cell& cell, const std::string& formula) {
    EXPECT_TRUE(cell.FormulaForce(formula)) << formula;
    return cell.ResultStr(0).or_("nothing") + " | " + cell.Formula().or_("nothing");
  }
  Shape shape = rectangle();
};

TEST_F(WrittenUnits, AreThoseOfTheCell) {
  struct Case {
    const char *cell, *formula, *shows;
  };
  for (const Case& c : {
           Case{"Char.Size", "9", "9 pt. | 9 pt."},
           {"Char.Size", "0.125 in", "0.125 in. | 0.125 in"},
           {"Char.Size", "9", "9 pt. | 9 pt."},
           {"Char.Size", "IF(Width>0 in,10,12)", "10 pt. | IF(Width>0 in,10,12)"},
           {"Char.Size", "GUARD(8)", "8 pt. | GUARD(8)"},
           {"LineWeight", "2", "2 pt. | 2 pt."},
           {"LeftMargin", "4", "4 pt. | 4 pt."},
           {"Para.SpAfter", "6", "6 pt. | 6 pt."},
           {"Para.SpLine", "-1.2", "-1.2 | -1.2"},
           {"GlowSize", "3", "3 pt. | 3 pt."},
           {"Width", "3", "3 in. | 3 in."},
           {"Width", "50 mm", "50 mm | 50 mm"},
           {"Width", "60", "60 mm | 60 mm"},
           {"Width", "1+1", "2 in. | 1+1"},
           {"Para.IndFirst", "0.5", "0.5 in. | 0.5 in."},
           {"Angle", "30", "30 deg. | 30 deg."},
           {"Angle", "1 rad", "1 rad. | 1 rad"},
           {"Angle", "2", "2 rad. | 2 rad."},
           {"LinePattern", "2", "2 | 2"},
       }) {
    EXPECT_EQ(written(shape.Cells(c.cell), c.formula), c.shows) << c.cell << " = " << c.formula;
  }
  EXPECT_EQ(written(user(shape, "Free", "5 mm"), "6"), "6 | 6") << "the cell has no unit";
  ASSERT_TRUE(shape.Cells("Width").SetResult(0, 3.0));
  EXPECT_EQ(shape.Cells("Width").Result(visio::unitsInches), 3.0) << "a result is one in inches";
}

TEST_F(WrittenUnits, FollowThePageWhereTheCellHasNone) {
  ASSERT_TRUE(page.PageSheet().Cells("DrawingScale").FormulaForce("1 mm"));
  host::Sheet& sheet = *engine().edit().making().sheet(sheetOf(shape));
  sheet.local(*host::parseCellName("Width")).value = host::Value::number(2, host::Unit::Drawing);
  EXPECT_EQ(written(shape.Cells("Width"), "50"), "50 mm | 50 mm");
  EXPECT_EQ(written(shape.Cells("Height"), "3"), "3 in. | 3 in.") << "it was drawn in inches";
  EXPECT_EQ(written(shape.Cells("Char.Size"), "9"), "9 pt. | 9 pt.");
  EXPECT_EQ(written(user(shape, "Steps", "0"), "CEILING(Width+0[mm,D],20)"), "60 mm | CEILING(Width+0[mm,D],20)");
}

TEST_F(WrittenUnits, TextsAreMeasuredInThoseOfTheDrawing) {
  ASSERT_TRUE(page.PageSheet().Cells("DrawingScale").FormulaForce("1 mm"));
  ASSERT_TRUE(shape.SetText("one line"));
  const Cell height = user(shape, "Height", "TEXTHEIGHT(TheText,10 in)");
  const Cell steps = user(shape, "Steps", "CEILING(User.Height,1)+0 mm");
  const double exact = height.Result(visio::unitsInches).or_(0) * 25.4;
  EXPECT_NEAR(steps.Result(70).or_(0), std::ceil(exact), 1e-9) << exact;
  // Four inches of the drawing on one of paper.
  ASSERT_TRUE(page.PageSheet().Cells("DrawingScale").FormulaForce("4 mm"));
  EXPECT_NEAR(user(shape, "Large", "TEXTHEIGHT(TheText,40 in)").Result(visio::unitsInches).or_(0) * 25.4, 4 * exact,
              1e-9);
  ASSERT_TRUE(page.PageSheet().Cells("DrawingScale").FormulaForce("1 mm"));
  const Shape other = rectangle();
  ASSERT_TRUE(other.SetText("three\nshort\nlines"));
  const Cell ofOther = user(shape, "Other", "TEXTHEIGHT(" + at(other, "TheText") + ",10 in)");
  EXPECT_GT(ofOther.Result(0).or_(0), 2 * height.Result(0).or_(9)) << "another shape's text";
}

}  // namespace
}  // namespace quorvel
