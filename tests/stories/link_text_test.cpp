// What a Task Link shows: its description, its time, both or nothing, as its three switches and the units say.
#include <gtest/gtest.h>

#include "links/task_link_description.h"
#include "stories/map_fixture.h"

namespace quorvel {
namespace {

class LinkText : public MapTest {
 protected:
  Page page;
  Shape link;
  void SetUp() override {
    MapTest::SetUp();
    page = newMap();
    link = drop(page, "Task Link");
    ASSERT_TRUE(link);
    link.Cells("Prop.Task_Link").FormulaForce("\"Send form\"");
    link.Cells("Prop.Time_Between_Tasks")
        .FormulaForce(
            "=  FORMATEX(User.TimeValue,\"#.##### u\",,IF(STRSAME(Prop.Time_Units,\"Seconds\"),\"es.\","
            "IF(STRSAME(Prop.Time_Units,\"Minutes\"),\"em.\",IF(STRSAME(Prop.Time_Units,\"Hours\"),\"eh.\","
            "IF(STRSAME(Prop.Time_Units,\"Days\"),\"ed.\",\"ew.\")))))");
  }

  /// T shows the description, K the time, G 1 hides a time of zero.
  void setSwitches(int t, int k, int g) {
    link.Cells("User.TaskLink_txt_Visible").SetResult(0, double(t));
    link.Cells("User.TaskLink_Visible").SetResult(0, double(k));
    link.Cells("User.TimegreaterThanzero").SetResult(0, double(g));
  }
  void setTime(const std::string& time, const std::string& units) {
    link.Cells("User.TimeValue").FormulaForce(time);
    link.Cells("Prop.Time_Units").FormulaForce("\"" + units + "\"");
  }
  std::string shown() {
    addin::GetAddedTaskLinkDescription2(session.addin(), link);
    std::string text = link.Text().or_("(none)");
    while (!text.empty() && text.back() == ' ') text.pop_back();
    return text;
  }
};

TEST_F(LinkText, SwitchesUnitsAndTimes) {
  const struct {
    int t, k, g;
    const char *time, *units, *shown;
  } cases[] = {
      {1, 1, 0, "1.5em.", "Minutes", "Send form (1.5m)"},
      {1, 1, 0, "2eh.", "Hours", "Send form (2h)"},
      {1, 1, 0, "2eh.", "Minutes", "Send form (120m)"},
      {1, 1, 0, "45es.", "Seconds", "Send form (45s)"},
      {1, 1, 0, "1.125ed.", "Days", "Send form (1.125d)"},
      {1, 1, 0, "2ew.", "Weeks", "Send form (2w)"},
      {1, 1, 0, "0em.", "Minutes", "Send form (0m)"},
      {1, 1, 1, "0em.", "Minutes", "Send form"},
      {1, 1, 2, "0em.", "Minutes", "Send form"},
      {1, 1, 1, "3em.", "Minutes", "Send form (3m)"},
      {1, 1, 2, "3em.", "Minutes", "Send form (3m)"},
      {1, 0, 0, "3em.", "Minutes", "Send form"},
      {1, 0, 0, "3eh.", "Hours", "Send form"},
      {0, 0, 0, "3em.", "Minutes", ""},
      {0, 1, 0, "45es.", "Seconds", " (45s)"},
      // The comma that stands where a point is expected is a thousands separator.
      {0, 1, 0, "1.5em.", "Minutes", " (2m)"},
      {0, 1, 1, "1.5em.", "Minutes", " (1.5m)"},
      {0, 1, 1, "0em.", "Minutes", ""},
  };
  for (const auto& c : cases) {
    setSwitches(c.t, c.k, c.g);
    setTime(c.time, c.units);
    EXPECT_EQ(shown(), c.shown) << c.t << c.k << c.g << " " << c.time << " " << c.units;
  }
}

TEST_F(LinkText, ADescriptionShowsAsItIs) {
  setSwitches(1, 1, 0);
  setTime("3em.", "Minutes");
  const struct {
    const char *formula, *shown;
  } cases[] = {
      {"\"Boss's OK\"", "Boss's OK (3m)"},
      {"\"the \"\"green\"\" form\"", "the \"green\" form (3m)"},
      {"\"0.00 # u\"", "0.00 # u (3m)"},
      {"\"Prüfung\"", "Prüfung (3m)"},
  };
  for (const auto& c : cases) {
    link.Cells("Prop.Task_Link").FormulaForce(c.formula);
    EXPECT_EQ(shown(), c.shown) << c.formula;
  }
}

TEST_F(LinkText, UnitsAndAbbreviationsFollowWithoutANewPicture) {
  setSwitches(1, 1, 0);
  setTime("90em.", "Minutes");
  EXPECT_EQ(shown(), "Send form (90m)");
  link.Cells("Prop.Time_Units").FormulaForce("\"Hours\"");
  EXPECT_EQ(link.Text(), "Send form (1.5h)") << "the picture holds all units";
  map.DocumentSheet().Cells("User.Time_Unit_Disply").FormulaForce("\"sec;min;hrs;d;w\"");
  EXPECT_EQ(shown(), "Send form (1.5hrs)");
}

TEST_F(LinkText, EitherSeparatorMakesTheSameText) {
  setSwitches(1, 1, 0);
  setTime("1.5em.", "Minutes");
  map.DocumentSheet().Cells("User.lstSpr").FormulaForce("\";\"");
  EXPECT_EQ(shown(), "Send form (1.5m)");
  setSwitches(1, 0, 0);
  EXPECT_EQ(shown(), "Send form");
  const Shape other = drop(page, "Task Link", 5);
  EXPECT_EQ(text(other, "Actions.Menu[1]"), "Define Task Link Details...");
}

}  // namespace
}  // namespace quorvel
