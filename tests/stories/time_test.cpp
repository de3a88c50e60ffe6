// Times as a user types them: the stored duration, the shown number, and another unit.
#include <gtest/gtest.h>

#include "shapes/time_unit_display.h"
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
  static std::string label(const Shape& task, std::string_view kind) {
    std::string text;
    for (const Shape& member : task.Shapes().all()) {
      if (member.Data2() == kind) text += member.Text().or_("(none)");
    }
    return text;
  }
};

TEST_F(Times, ATypedCompletionTimeIsKeptInItsUnitAndConverted) {
  const Shape task = dropTask(page);
  const struct {
    const char *unit, *typed, *stored, *shown, *label, *otherUnit, *shownThere, *labelThere;
  } cases[] = {
      {"Hours", "2", "2eh", "2 eh.", "2h", "Minutes", "120 em.", "120m"},
      {"Minutes", "90", "90em", "90 em.", "90m", "Hours", "1.5 eh.", "1.5h"},
      {"Seconds", "45", "45es", "45 es.", "45s", "Minutes", "0.75 em.", "0.75m"},
      {"Days", "1.125", "1.125ed", "1.125 ed.", "1.125d", "Hours", "27 eh.", "27h"},
      {"Weeks", "0.5", "0.5ew", "0.5 ew.", "0.5w", "Days", "3.5 ed.", "3.5d"},
      {"Seconds", "1", "1es", "1 es.", "1s", "Weeks", "0 ew.", ""},  // too little to be shown, yet not lost
  };
  for (const auto& c : cases) {
    ASSERT_TRUE(choose(task, "Prop.Time_Units", c.unit));
    ASSERT_TRUE(type(task, "Prop.Task_Completion_Time", c.typed));
    EXPECT_EQ(task.Cells("User.TimeValue").Formula(), c.stored) << c.unit;
    EXPECT_EQ(text(task, "Prop.Task_Completion_Time"), c.shown) << c.unit;
    EXPECT_EQ(label(task, "Task_Completion_Time"), c.label) << c.unit;
    ASSERT_TRUE(choose(task, "Prop.Time_Units", c.otherUnit));
    EXPECT_EQ(text(task, "Prop.Task_Completion_Time"), c.shownThere) << c.unit;
    EXPECT_EQ(label(task, "Task_Completion_Time"), c.labelThere) << c.unit;
    EXPECT_EQ(task.Cells("User.TimeValue").Formula(), c.stored) << "a conversion is not captured back: " << c.unit;
  }
  ASSERT_TRUE(choose(task, "Prop.Time_Units", "Seconds"));
  EXPECT_EQ(label(task, "Task_Completion_Time"), "1s");
  // A text that is no number with a unit is not captured.
  ASSERT_TRUE(choose(task, "Prop.Time_Units", "Years"));
  type(task, "Prop.Task_Completion_Time", "7");
  EXPECT_EQ(task.Cells("User.TimeValue").Formula(), "1es");
}

TEST_F(Times, FrequencyAndTimeAreJoined) {
  const Shape task = dropTask(page);
  const auto band = [&] { return label(task, "Frequency_Of_Occurrence") + label(task, "Task_Completion_Time"); };
  ASSERT_TRUE(choose(task, "Prop.Time_Units", "Hours"));
  const struct {
    const char *cell, *typed, *band;
  } steps[] = {
      {"Prop.Frequency_Of_Occurrence", "\"Weekly\"", "WK"},
      {"Prop.Task_Completion_Time", "2", "WK:2h"},
      {"Prop.Frequency_Of_Occurrence", "\"Daily\"", "DY:2h"},
      {"Prop.Frequency_Of_Occurrence", "\"weekly\"", "DY:2h"},  // no such frequency
      {"Prop.Frequency_Of_Occurrence", "\"\"", "2h"},
      {"Prop.Frequency_Of_Occurrence", "\"Yearly\"", "YR:2h"},
      {"Prop.Task_Completion_Time", "0", "YR"},
      {"Prop.Task_Completion_Time", "3", "YR:3h"},
  };
  for (const auto& step : steps) {
    ASSERT_TRUE(type(task, step.cell, step.typed)) << lastRefusal();
    EXPECT_EQ(band(), step.band) << step.cell << " " << step.typed;
  }
  // A description in the list twice: the last one is used, without a joint.
  map.DocumentSheet().Cells("User.FreqSuggestions").FormulaForce("\";Now;Then;Now\"");
  map.DocumentSheet().Cells("User.FreqSuggestions.Prompt").FormulaForce("\";N1;TH;N2\"");
  ASSERT_TRUE(choose(task, "Prop.Frequency_Of_Occurrence", "Now"));
  EXPECT_EQ(text(task, "Prop.Frequency_Partial"), "N2");
}

TEST(TimesOnAnOlderHost, AChosenEntryIsLeftAsTheHostStoresIt) {
  for (const char* version : {"12.0", "11.0"}) {
    SessionOptions options;
    options.installFolder = QUORVEL_SOURCE_FOLDER "/data";
    options.configurationFolder = testing::TempDir() + "quorvel-stories";
    options.version = version;
    Session session(options);
    const Shape shape = session.app().Documents().Add("").Pages().Item(1).DrawRectangle(1, 1, 2, 2);
    shape.AddNamedRow(visio::sectionProp, "Time_Units", 0);
    shape.Cells("Prop.Time_Units.Format").FormulaForce("\"Seconds;Minutes\"");
    shape.Cells("Prop.Time_Units").FormulaForce("INDEX(1,Prop.Time_Units.Format)");
    const bool storesText = options.version == "12.0";
    EXPECT_EQ(shape.Cells("Prop.Time_Units").Formula(), storesText ? "\"Minutes\"" : "INDEX(1,Prop.Time_Units.Format)");
  }
}

/// Shapes that come from a drawing with other abbreviations still show those after the paste.
class ForeignUnits : public Times {
 protected:
  Shape task, link;
  std::vector<std::string> messages;
  MessageAnswer reply = MessageAnswer::Yes;

  void SetUp() override {
    Times::SetUp();
    task = dropTask(page);
    link = drop(page, "Task Link");
    link.Cells("User.TaskLink_Visible").SetResult(0, 1.0);
    session.platform().onMessage = [this](const MessageBox& box) {
      messages.push_back(box.text);
      return reply;
    };
  }
  void setAbbreviations(const std::string& list) {
    map.DocumentSheet().Cells("User.Time_Unit_Disply").FormulaForce("\"" + list + "\"");
  }
  std::string abbreviations() { return text(map.DocumentSheet(), "User.Time_Unit_Disply"); }
  void setTime(const Shape& shape, const char* cell, const char* unit, const std::string& time) {
    ASSERT_TRUE(choose(shape, "Prop.Time_Units", unit));
    ASSERT_TRUE(type(shape, cell, time));
  }
  void check(std::initializer_list<Shape> arrived) {
    messages.clear();
    app.ActiveWindow().DeselectAll();
    for (const Shape& shape : arrived) app.ActiveWindow().Select(shape, visio::select);
    addin::CheckTimeUnitDisplay(session.addin(), app.ActiveWindow().Selection(), false, false);
  }
};

TEST_F(ForeignUnits, AreUsedWhenTheUserAgrees) {
  setAbbreviations("s;M;h;dy;w");
  setTime(task, "Prop.Task_Completion_Time", "Days", "5");
  setTime(link, "Prop.Time_Between_Tasks", "Minutes", "3");
  const Shape second = dropTask(page, 6);
  setTime(second, "Prop.Task_Completion_Time", "Minutes", "7");
  setAbbreviations("s;m;h;d;w");
  EXPECT_EQ(label(task, "Task_Completion_Time"), "5dy") << "nothing has been redrawn yet";

  reply = MessageAnswer::No;
  check({task, link, second});
  EXPECT_EQ(messages, std::vector<std::string>{
                          "The time unit abbreviation is not the same. Do you want to update it in this document?"});
  EXPECT_EQ(abbreviations(), "s;m;h;d;w;");
  EXPECT_EQ(label(task, "Task_Completion_Time") + label(second, "Task_Completion_Time"), "5d7m");
  EXPECT_EQ(link.Text(), "Task Link (3m)");

  for (const Shape& asked : {task, link, second}) {
    setAbbreviations("s;M;h;dy;w");
    addin::redrawTimeUnits(map);
    setAbbreviations("s;m;h;d;w");
    reply = MessageAnswer::Yes;
    messages.clear();
    check({asked, second});  // selecting has begun a new batch, so the question comes again
    EXPECT_EQ(messages.size(), 1u);
    EXPECT_EQ(abbreviations(), asked == task ? "s;M;h;dy;w;" : "s;M;h;d;w;");
    EXPECT_EQ(label(second, "Task_Completion_Time"), "7M") << "letter case counts";
    EXPECT_EQ(link.Text(), "Task Link (3M)");
  }
}

TEST_F(ForeignUnits, AreReadBackOfEveryUnit) {
  for (const char* unit : {"Seconds", "Minutes", "Hours", "Days", "Weeks"}) {
    setAbbreviations("xs;xm;xh;xd;xw");
    setTime(task, "Prop.Task_Completion_Time", unit, "5");
    setTime(link, "Prop.Time_Between_Tasks", unit, "3");
    for (const Shape& arrived : {task, link}) {
      setAbbreviations("xs;xm;xh;xd;xw");
      addin::redrawTimeUnits(map);
      setAbbreviations("s;m;h;d;w");
      check({arrived});
      std::string expected = "s;m;h;d;w;";
      expected.insert(expected.find(static_cast<char>(std::tolower(unit[0]))), "x");
      EXPECT_EQ(abbreviations(), expected) << unit;
    }
  }
}

TEST_F(ForeignUnits, AreNotSeenWhereNoneAreShown) {
  // A label in minutes says nothing about hours, and a Task without a time nothing at all.
  setTime(task, "Prop.Task_Completion_Time", "Minutes", "5");
  const Shape idle = dropTask(page, 6);
  ASSERT_TRUE(choose(idle, "Prop.Time_Units", "Hours"));
  setTime(link, "Prop.Time_Between_Tasks", "Hours", "3");
  ASSERT_TRUE(choose(link, "Prop.Task_Link", "Boss's 'OK'"));
  check({task, idle, link});
  EXPECT_EQ(messages.size(), 0u) << "a copy within one drawing";
  EXPECT_EQ(abbreviations(), "s;m;h;d;w;");

  setAbbreviations("s;m;hr;d;w");
  link.Cells("User.TaskLink_txt_Visible").SetResult(0, 0.0);
  check({idle, link});
  EXPECT_EQ(messages.size(), 0u) << "a link whose description is hidden never asks";
  link.Cells("User.TaskLink_txt_Visible").SetResult(0, 1.0);
  link.Cells("User.TaskLink_Visible").SetResult(0, 0.0);
  check({idle, link});
  EXPECT_EQ(messages.size(), 0u) << "nor does one that shows no time";
  EXPECT_EQ(abbreviations(), "s;m;hr;d;w;");
}

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
      {"Minutes", "2 eh.", "2em.", "2 em.", "Seconds", "120 es."},  // the number is kept, the unit is the shape's
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
  // No time: the number alone is refused as a duration, the text is rebuilt.
  link.Cells("User.TimegreaterThanzero").SetResult(0, 1.0);
  ASSERT_TRUE(type(link, "Prop.Time_Between_Tasks", "0"));
  EXPECT_EQ(link.Cells("Prop.Time_Between_Tasks").Formula(), "0");
  EXPECT_EQ(link.Cells("User.TimeValue").Formula(), "2em.");
  EXPECT_EQ(link.Text().or_("").substr(0, 9), "Task Link");
  EXPECT_EQ(link.Text().or_("").find('('), std::string::npos);
}

TEST_F(Times, AChosenEntryIsPlainText) {
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
