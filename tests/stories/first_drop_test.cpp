// The first map: what a user finds when Tasks, Task Links and Process Connectors are dropped on a page.
#include <gtest/gtest.h>

#include "stories/map_fixture.h"

namespace quorvel {
namespace {

class FirstDrop : public MapTest {};

TEST_F(FirstDrop, AsksForLettersOnceAndNumbersOn) {
  const Page page = newMap("AB Order entry");
  const Shape sheet = page.PageSheet();
  const Shape first = dropTask(page);
  ASSERT_TRUE(first) << lastRefusal();
  EXPECT_EQ(lettersAsked, std::vector<std::string>{"AB"});
  EXPECT_EQ(text(first, "Prop.Task_ID"), "AB01");
  EXPECT_EQ(first.Name(), "AB01");
  EXPECT_EQ(number(sheet, "User.Next_Task_Id"), 2);
  EXPECT_EQ(text(sheet, "User.Task_Id_Letters"), "AB");

  const Shape second = dropTask(page, 6);
  EXPECT_EQ(lettersAsked.size(), 1u);
  EXPECT_EQ(text(second, "Prop.Task_ID"), "AB02");
  EXPECT_EQ(second.Name(), "AB02");
  EXPECT_EQ(number(sheet, "User.Next_Task_Id"), 3);

  // Each page has its own letters.
  const Page next = map.Pages().Add();
  ASSERT_TRUE(next.SetName("Shipping"));
  answer.number = "7";
  EXPECT_EQ(text(dropTask(next), "Prop.Task_ID"), "Z07");
  EXPECT_EQ(lettersAsked, (std::vector<std::string>{"AB", "Z"}));
  EXPECT_EQ(number(sheet, "User.Next_Task_Id"), 3);
}

TEST_F(FirstDrop, ARefusalRemovesTheTaskAndTheNextDropAsksAgain) {
  const Page page = newMap("AB Order entry");
  const int before = page.Shapes().Count().or_(-1);
  map.SetSaved(true);
  const auto steps = [&] { return session.engine().undo().undoCount(host::DocumentId{map.ref().id}); };
  const std::size_t stepsBefore = steps();
  answer.accept = false;
  EXPECT_FALSE(dropTask(page));
  EXPECT_EQ(page.Shapes().Count(), before);
  EXPECT_EQ(map.Saved(), true);
  EXPECT_EQ(steps(), stepsBefore);
  EXPECT_EQ(text(page.PageSheet(), "User.Task_Id_Letters"), "");
  EXPECT_EQ(number(page.PageSheet(), "User.Next_Task_Id"), 0);
  answer = {.accept = true, .letters = "Q\"", .number = "12"};
  const Shape task = dropTask(page);
  EXPECT_EQ(lettersAsked.size(), 2u);
  EXPECT_EQ(text(task, "Prop.Task_ID"), "Q\"12");
  EXPECT_EQ(task.Name(), "Q\"12");
}

TEST_F(FirstDrop, UndoRemovesTheTaskAndItsNumberInOneStep) {
  const Page page = newMap("AB Order entry");
  dropTask(page);
  const int before = page.Shapes().Count().or_(-1);
  const Shape second = dropTask(page, 6);
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(page.Shapes().Count(), before);
  EXPECT_FALSE(second.Name());
  EXPECT_EQ(number(page.PageSheet(), "User.Next_Task_Id"), 2);
  ASSERT_TRUE(app.Redo());
  EXPECT_EQ(second.Name(), "AB02");
  EXPECT_EQ(number(page.PageSheet(), "User.Next_Task_Id"), 3);
  EXPECT_EQ(lettersAsked.size(), 1u);
  ASSERT_TRUE(app.Undo());
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(text(page.PageSheet(), "User.Task_Id_Letters"), "");
  EXPECT_EQ(text(dropTask(page), "Prop.Task_ID"), "AB01") << "the page is empty again, so it asks again";
  EXPECT_EQ(lettersAsked.size(), 2u);
}

TEST_F(FirstDrop, OtherDrawingsAndBackgroundPagesAreNotChanged) {
  const Document foreign = app.Documents().Add("");
  const Page page = foreign.Pages().Item(1);
  const Shape task = dropTask(page);
  ASSERT_TRUE(task);
  EXPECT_EQ(task.CellExists("User.AlreadyAdded", 1), false);
  EXPECT_EQ(foreign.DocumentSheet().RowCount(visio::sectionUser), 0);
  EXPECT_EQ(page.Shapes().Count(), 1);

  newMap();
  const Page background = map.Pages().Add();
  ASSERT_TRUE(background.SetBackground(true));
  const Shape there = dropTask(background);
  ASSERT_TRUE(there);
  EXPECT_EQ(there.CellExists("User.AlreadyAdded", 1), false);

  // Based on our template but never initialized.
  const Page plain = newMap("AB Order entry");
  map.DocumentSheet().DeleteRow(visio::sectionUser, *map.DocumentSheet().Cells("User.Based_On_ZNB").Row());
  EXPECT_EQ(dropTask(plain).CellExists("User.AlreadyAdded", 1), false);
  EXPECT_TRUE(lettersAsked.empty());
}

TEST_F(FirstDrop, CellsOfATask) {
  const Page page = newMap("AB Order entry");
  page.PageSheet().Cells("User.Resources").SetResult(0, 0.0);
  const Shape task = dropTask(page);
  ASSERT_TRUE(task);
  EXPECT_EQ(text(task, "Prop.Task_Description"), "Task Description");
  const struct {
    const char *cell, *formula;
  } cells[] = {
      {"EventDrop", "\"\""},
      {"Prop.Notes", "\"\""},
      {"lockCustProp", "1"},
      {"User.TimeValue", "\"0 em.\""},
      {"Prop.Time_Units", "\"Minutes\""},
      {"Prop.Responsible_Role.Type", "1"},
      {"Prop.SupportingRole_4.Invisible", "0"},
      {"Prop.Frequency_Partial", "\"\""},
      {"Prop.Frequency_Partial.Invisible", "1"},
      {"Prop.Process_Time_Str", "\"\""},
      {"User.SupportingRole_2_Hyper", "\"\""},
      {"Actions.Action[1]", "docmd(1312)"},
      {"Actions.Menu[1]", "IF(TheDoc!User.AddinIsFound=1,\"Define Task Details...\",\"\")"},
      {"Actions.D1", "IF(TheDoc!User.DisableDefine=1,1,0)"},
      {"Actions.Action[2]", "RUNADDONWARGS(\"QueueMarkerEvent\",\"/soln=Quorvel.Quorvel /cmd=1\")"},
      {"Actions.Menu[2]", "\"Add/Edit Hyperlink\""},
      {"LockGroup", "0"},
      {"SelectMode", "2"},
  };
  for (const auto& c : cells) EXPECT_EQ(task.Cells(c.cell).Formula(), c.formula) << c.cell;
  EXPECT_EQ(text(task, "Actions.Menu[1]"), "Define Task Details...");
  EXPECT_EQ(text(task, "Prop.SupportingRole_3.Format"), text(map.DocumentSheet(), "User.RoleNames"));
  EXPECT_EQ(text(task, "Prop.Frequency_Of_Occurrence.Format"), text(map.DocumentSheet(), "User.FreqSuggestions"));

  // New Tasks show what their page shows.
  EXPECT_EQ(number(task, "User.Resources"), 0);
  for (const char* on : {"User.controls", "User.Task_Visible", "User.Supporting_Role4"}) EXPECT_EQ(number(task, on), 1);

  const Shapes members = task.Shapes();
  const Shape box = members.Item(3), description = members.Item(4), cover = members.Item(members.Count().or_(0));
  EXPECT_EQ(box.Data1(), "SUBTask_ID");
  EXPECT_EQ(text(box, "User.StoredTaskID"), "");
  EXPECT_EQ(description.Text(), "Task Description");
  EXPECT_EQ(number(description, "PinY"), number(description, "Height") - 0.07 + number(members.Item(2), "Height"));
  ASSERT_TRUE(task.Cells("Prop.Task_Description").FormulaForce("\"Check the order\""));
  EXPECT_EQ(description.Text(), "Check the order");

  // The cover keeps the Task's size and cannot be deleted on its own.
  EXPECT_EQ(number(cover, "Width"), number(task, "Width"));
  ASSERT_TRUE(task.Cells("Width").SetResult(visio::unitsInches, 3.5));
  EXPECT_EQ(number(cover, "Width"), 3.5);
  EXPECT_EQ(number(cover, "PinX"), 1.75);
  EXPECT_FALSE(cover.Delete());

  // A second Task's formulas are its own.
  const Shape other = dropTask(page, 6);
  EXPECT_EQ(other.Shapes().Item(4).Text(), "Task Description");
  other.Cells("Width").SetResult(visio::unitsInches, 1.0);
  EXPECT_EQ(number(cover, "Width"), 3.5);
}

TEST_F(FirstDrop, CellsOfATaskLink) {
  const Page page = newMap();
  page.PageSheet().Cells("User.TaskLink_Visible").SetResult(0, 1.0);
  const Shape link = drop(page, "Task Link");
  ASSERT_TRUE(link);
  const struct {
    const char *cell, *formula;
  } cells[] = {
      {"Prop.Task_Link", "\"Task Link\""},
      {"Prop.Task_Link.Label", "\"Task Link Description\""},
      {"Prop.Time_Units", "\"Minutes\""},
      {"Prop.Time_Str.Label", "\"Time_Str\""},
      {"Prop.Time_Str.Invisible", "-1"},
      {"EventDrop", "\"\""},
      {"Actions.Action[1]", "docmd(1312)"},
      {"Actions.Menu[1]", "IF(TheDoc!User.AddinIsFound=1,\"Define Task Link Details...\",\"\")"},
      {"Prop.Time_Between_Tasks", "0"},
      {"LockTextEdit", "1"},
      {"User.TimeValue", "\"0 em.\""},
      {"Fields.Value[1]", "Prop.Time_Between_Tasks"},
      {"lockCustProp", "1"},
  };
  for (const auto& c : cells) EXPECT_EQ(link.Cells(c.cell).Formula(), c.formula) << c.cell;
  EXPECT_EQ(number(link, "User.TaskLink_txt_Visible"), 1);
  EXPECT_EQ(number(link, "User.TaskLink_Visible"), 1) << "as its page has it";
  EXPECT_EQ(number(link, "User.TimegreaterThanzero"), 0);
  EXPECT_EQ(link.CellExists("User.AlreadyAdded", 1), true);
  EXPECT_TRUE(lettersAsked.empty());
}

TEST_F(FirstDrop, CellsOfAProcessConnector) {
  const Page page = newMap();
  const Shape connector = drop(page, "Process Connector");
  ASSERT_TRUE(connector);
  const struct {
    const char *cell, *formula;
  } cells[] = {
      {"Actions.Action[1]", "RUNADDONWARGS(\"QueueMarkerEvent\",\"/soln=Quorvel.Quorvel /cmd=1\")"},
      {"Actions.Menu[1]", "\"Define Connector Link...\""},
      {"Actions.Action[2]", "docmd(1312)"},
      {"Actions.Menu[2]", "IF(TheDoc!User.AddinIsFound=1,\"Modify Connector Text...\",\"\")"},
      {"Actions.D1", "IF(TheDoc!User.DisableDefine=1,1,0)"},
      {"LockTextEdit", "1"},
  };
  for (const auto& c : cells) EXPECT_EQ(connector.Cells(c.cell).Formula(), c.formula) << c.cell;
  EXPECT_EQ(connector.Data1(), "Process Connector");
  EXPECT_EQ(connector.Name(), "Connector." + text(connector, "Prop.Connecting_TaskID"));
  EXPECT_EQ(connector.CellExists("User.AlreadyAdded", 1), true);
}

TEST_F(FirstDrop, NoIdIsGivenTwice) {
  const Page page = newMap("AB Order entry");
  const Cell next = page.PageSheet().Cells("User.Next_Task_Id");
  const auto dropAndRead = [&] {
    const Shape task = dropTask(page);
    EXPECT_TRUE(task) << lastRefusal();
    return text(task, "Prop.Task_ID");
  };
  dropTask(page);
  // The page's counter cannot be read, or cannot be written.
  for (const char* formula : {"\"many\"", "2147483647", "1E20", "GUARD(2)"}) {
    ASSERT_TRUE(next.FormulaForce(formula));
    EXPECT_EQ(dropAndRead(), "") << formula;
    EXPECT_EQ(next.Formula(), formula) << "nothing is counted";
  }
  ASSERT_TRUE(next.FormulaForce("2147483646"));
  EXPECT_EQ(dropAndRead(), "AB2147483646");
  ASSERT_TRUE(next.FormulaForce("2"));
  EXPECT_EQ(dropAndRead(), "AB02");

  // The dialog takes no number that does not fit.
  const Page other = map.Pages().Add();
  session.platform().onForm = [&](Form& form) {
    Control& number = *form.find("txtTaskNumber");
    number.type("2147483647");
    EXPECT_EQ(form.find("txtSuggestedTaskId")->text(), "");
    form.find("BtnOK")->click();
    EXPECT_TRUE(form.isOpen());
    EXPECT_EQ(form.focused(), &number);
    number.type("12");
    form.find("BtnOK")->click();
    EXPECT_FALSE(form.isOpen());
  };
  EXPECT_EQ(text(dropTask(other), "Prop.Task_ID"), "Z12");
}

// A refused call means that a rule had no effect, or that it ran before the row that it needs.
TEST_F(FirstDrop, MakesNoCallThatTheHostRefuses) {
  const Page page = newMap("AB Order entry");
  for (const char* master : {"Task", "Task", "Task Link", "Process Connector"}) {
    const std::size_t before = session.host().refusalCount();
    const Shape shape = drop(page, master);
    ASSERT_TRUE(shape) << master;
    std::string refused;
    const auto all = session.host().refusals();
    for (std::size_t n = session.host().refusalCount() - before; n > 0; --n) {
      const auto& refusal = all[all.size() - n];
      refused += "\n" + refusal.object + ": " + refusal.reason;
    }
    EXPECT_EQ(refused, "") << master;
  }
}

TEST_F(FirstDrop, ALinkFollowsTheTasksThatItIsGluedTo) {
  const Page page = newMap("AB Order entry");
  const Shape from = dropTask(page, 2), to = dropTask(page, 6), link = drop(page, "Task Link", 4);
  ASSERT_TRUE(link.Cells("BeginX").GlueTo(from.Cells("PinX"))) << lastRefusal();
  ASSERT_TRUE(link.Cells("EndX").GlueTo(to.Cells("PinX"))) << lastRefusal();
  const double end = number(link, "EndX"), endY = number(link, "EndY");
  EXPECT_GT(end, number(link, "BeginX"));
  to.Cells("PinX").SetResult(visio::unitsInches, 8.0);
  to.Cells("PinY").SetResult(visio::unitsInches, 7.0);
  EXPECT_NEAR(number(link, "EndX"), end + 2, 1e-9);
  EXPECT_NEAR(number(link, "EndY"), endY + 1, 1e-9);
}

}  // namespace
}  // namespace quorvel
