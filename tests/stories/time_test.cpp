// Times as a user types them: the stored duration, the shown number, and another unit.
#include <gtest/gtest.h>

#include "stories/map_fixture.h"

namespace quorvel {
namespace {

class Times : public MapTest {
 protected:
  Page page;
  void SetUp() override {
    MapTest::SetUp();
    page = newMap("AB Order entry");
  }
  static bool type(const Shape& shape, const char* cell, const std::string& typed) {
    return shape.Cells(cell).FormulaForce(typed);
  }
  static bool choose(const Shape& shape, const char* cell, const std::string& entry) {
    return type(shape, cell, "\"" + entry + "\"");
  }
};

TEST_F(Times, ATypedLinkTimeIsKeptInItsUnitAndConverted) {
  const Shape link = drop(page, "Task Link");
  link.Cells("User.TaskLink_Visible").SetResult(0, 1.0);
  const struct {
    const char *unit, *typed, *stored, *shown, *otherUnit, *shownThere;
  } cases[] = {
      {"Hours", "2", "2eh.", "2 eh.", "Minutes", "120 em."},
      {"Minutes", "90", "90em.", "90 em.", "Hours", "1.5 eh."},
      {"Seconds", "45", "45es.", "45 es.", "Minutes", "0.75 em."},
      {"Days", "1.125", "1.125ed.", "1.125 ed.", "Hours", "27 eh."},
      {"Weeks", "0.5", "0.5ew.", "0.5 ew.", "Days", "3.5 ed."},
      {"Minutes", "2 eh.", "2em.", "2 em.", "Seconds", "120 es."},  // the number stands, the unit is the shape's
  };
  for (const auto& c : cases) {
    ASSERT_TRUE(choose(link, "Prop.Time_Units", c.unit));
    ASSERT_TRUE(type(link, "Prop.Time_Between_Tasks", c.typed));
    EXPECT_EQ(link.Cells("User.TimeValue").Formula(), c.stored) << c.unit;
    EXPECT_EQ(text(link, "Prop.Time_Between_Tasks"), c.shown) << c.unit;
    ASSERT_TRUE(choose(link, "Prop.Time_Units", c.otherUnit));
    EXPECT_EQ(text(link, "Prop.Time_Between_Tasks"), c.shownThere) << c.unit;
    EXPECT_EQ(link.Cells("User.TimeValue").Formula(), c.stored) << "a conversion is not captured back: " << c.unit;
  }
  EXPECT_EQ(link.Text(), "Task Link (120s)");
  // No time: the number alone is refused as a duration, the text is made anew.
  link.Cells("User.TimegreaterThanzero").SetResult(0, 1.0);
  ASSERT_TRUE(type(link, "Prop.Time_Between_Tasks", "0"));
  EXPECT_EQ(link.Cells("Prop.Time_Between_Tasks").Formula(), "0");
  EXPECT_EQ(link.Cells("User.TimeValue").Formula(), "2em.");
  EXPECT_EQ(link.Text().or_("").substr(0, 9), "Task Link");
  EXPECT_EQ(link.Text().or_("").find('('), std::string::npos);
}

TEST_F(Times, AChosenEntryIsPlainTextWhateverTheHostMakesOfIt) {
  const Shape task = dropTask(page);
  const struct {
    const char *cell, *formula, *text;
  } cases[] = {
      {"Prop.Time_Units", "INDEX(2,Prop.Time_Units.Format)", "Hours"},
      {"Prop.Responsible_Role", "INDEX(1,Prop.Responsible_Role.Format)", "Account Executive"},
      {"Prop.SupportingRole_4", "INDEX(7,Prop.SupportingRole_4.Format)", "Clerk"},
      {"Prop.SupportingRole_4", "INDEX(0,Prop.SupportingRole_4.Format)", ""},
      {"Prop.SupportingRole_4", "INDEX(99,Prop.SupportingRole_4.Format)", ""},
      {"Prop.Frequency_Of_Occurrence", "INDEX(6,Prop.Frequency_Of_Occurrence.Format)", "Weekly"},
      // With another separator the place is not read.
      {"Prop.Frequency_Of_Occurrence", "INDEX(6;Prop.Frequency_Of_Occurrence.Format)", ""},
  };
  for (const auto& c : cases) {
    ASSERT_TRUE(type(task, c.cell, c.formula)) << lastRefusal();
    EXPECT_EQ(task.Cells(c.cell).Formula(), "\"" + std::string(c.text) + "\"") << c.formula;
  }
  ASSERT_TRUE(type(task, "Prop.Notes", "INDEX(1,Prop.Time_Units.Format)"));
  EXPECT_EQ(task.Cells("Prop.Notes").Formula(), "INDEX(1,Prop.Time_Units.Format)");
}

}  // namespace
}  // namespace quorvel
