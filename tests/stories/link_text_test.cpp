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
    addin::GetAddedTaskLinkDescription2(link);
    std::string text = link.Text().or_("(none)");
    while (!text.empty() && text.back() == ' ') text.pop_back();
    return text;
  }
};

TEST_F(LinkText, WhatEachUnitShowsUnderEachSwitch) {
  // 1.236 of the unit and none of it; with description and time, and with the time alone. "0,##" has a thousands
  // separator where a decimal point is expected, so minutes, hours and days have no decimals there.
  const struct {
    const char *units, *letters, *abbreviation, *both, *timeOnly, *timeOnlyAboveZero;
  } units[] = {
      {"Seconds", "es", "s", "1.24", "1.24", "1.24"},  {"Minutes", "em", "m", "1.24", "1", "1.24"},
      {"Hours", "eh", "h", "1.24", "1", "1.24"},       {"Days", "ed", "d", "1.236", "1", "1.24"},
      {"Weeks", "ew", "w", "1.236", "1.236", "1.236"},
  };
  const std::string description = "Send form";
  for (const auto& unit : units) {
    const auto time = [&](const std::string& number) { return " (" + number + unit.abbreviation + ")"; };
    for (const bool isZero : {false, true}) {
      setTime((isZero ? "0" : "1.236") + std::string(unit.letters) + ".", unit.units);
      for (const int g : {0, 1, 2}) {
        SCOPED_TRACE(std::string(unit.units) + (isZero ? " none" : "") + ", G " + std::to_string(g));
        const bool hidesZero = isZero && g != 0;
        const std::string both = time(isZero ? "0" : unit.both);
        const std::string alone = time(isZero ? "0" : g == 0 ? unit.timeOnly : unit.timeOnlyAboveZero);
        setSwitches(1, 1, g);
        EXPECT_EQ(shown(), hidesZero ? description : description + both);
        setSwitches(0, 1, g);
        EXPECT_EQ(shown(), hidesZero ? "" : alone);
        setSwitches(1, 0, g);
        EXPECT_EQ(shown(), description);
        setSwitches(0, 0, g);
        EXPECT_EQ(shown(), "");
      }
    }
  }
  // The unit of the time need not be the one that is shown.
  setSwitches(1, 1, 0);
  setTime("2eh.", "Minutes");
  EXPECT_EQ(shown(), "Send form (120m)");
}

TEST_F(LinkText, AnEntryShowsAtOnce) {
  link.Cells("User.TaskLink_Visible").SetResult(0, 1.0);
  link.Cells("Prop.Task_Link").SetFormula("\"Boss's OK\"");
  link.Cells("Prop.Time_Between_Tasks").SetFormula("4");
  EXPECT_EQ(link.Text(), "Boss's OK (4m)");
  link.Cells("Prop.Task_Link").SetFormula("\"Approved\"");
  EXPECT_EQ(link.Text(), "Approved (4m)");
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

TEST_F(LinkText, UnitsAndAbbreviationsChangeWithoutANewFormat) {
  setSwitches(1, 1, 0);
  setTime("90em.", "Minutes");
  EXPECT_EQ(shown(), "Send form (90m)");
  link.Cells("Prop.Time_Units").FormulaForce("\"Hours\"");
  EXPECT_EQ(link.Text(), "Send form (1.5h)") << "the format has all units";
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
