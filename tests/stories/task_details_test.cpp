// What a Task shows around itself: drawn from its cells, redrawn at each change, and deleted completely.
#include "display/task_details.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

#include "commands/task_display.h"
#include "commands/task_display_options.h"
#include "display/text_layout.h"
#include "host/store_dump.h"
#include "stories/details_fixture.h"

namespace quorvel {
namespace {

class TaskDetails : public DetailsTest {};

TEST_F(TaskDetails, AreBelowTheTaskInOrder) {
  write("Prop.SupportingRole_2", "Manager");
  write("Prop.Resources", "Order form");
  write("Prop.Guidelines", "Ask first; Write down ;Sign");
  const char* rows[] = {"controls1", "controls2", "controls3", "Resources1", "SupportingRole_2"};
  EXPECT_EQ(column(), (std::vector<std::string>{"controls1: Ask first", "controls2: Write down", "controls3: Sign",
                                                "Resources1: Order form", "SupportingRole_2: Manager"}));
  double y = -0.48;
  for (const char* row : rows) {
    EXPECT_NEAR(number(line(row), "PinY"), y, 1e-9) << row;
    EXPECT_NEAR(number(line(std::string("Pic") + row), "PinY"), y, 1e-9) << row;
    y -= 0.2;
  }
  EXPECT_EQ(line("controls1").Cells("BeginY").Formula(), "guard(-0.48)");
  EXPECT_NEAR(number(tagged("Vertical"), "EndY"), -1.18, 1e-9);

  // A deleted detail leaves neither line nor icon, and the column has no gap.
  write("Prop.Guidelines", "Sign");
  EXPECT_EQ(column(),
            (std::vector<std::string>{"controls1: Sign", "Resources1: Order form", "SupportingRole_2: Manager"}));
  EXPECT_NEAR(number(line("SupportingRole_2"), "PinY"), -0.88, 1e-9);
  for (const char* row : {"controls2", "Piccontrols2", "controls3", "Piccontrols3"}) EXPECT_FALSE(line(row)) << row;
  write("Prop.Guidelines", "");
  write("Prop.Resources", "");
  write("Prop.SupportingRole_2", "");
  EXPECT_TRUE(column().empty());
  EXPECT_EQ(number(tagged("Vertical"), "EndY"), 0) << "the one that stays";
  EXPECT_EQ(task.Shapes().Count(), 6) << "four of the master, the cover and the vertical";
}

TEST_F(TaskDetails, RoleFrequencyAndTimeAreAtTheTaskItself) {
  write("Prop.Responsible_Role", "Sales Representative");
  Shape role = tagged("Responsible_Role");
  EXPECT_EQ(textOf(role), "Sales Representative");
  EXPECT_NEAR(number(role, "Char.Size[1]"), 8.0 / 72, 1e-9) << "20 characters";
  write("Prop.Responsible_Role", "Sales Representatives");
  role = tagged("Responsible_Role");
  EXPECT_NEAR(number(role, "Char.Size[1]"), 7.0 / 72, 1e-9) << "21 characters";
  EXPECT_EQ(role.RowType(visio::sectionFirstComponent, 2), visio::tagEllipticalArcTo);

  // The role stays on the upper edge and has the Task's format.
  task.Cells("Width").SetFormula("2 in");
  write("Prop.Task_Description", std::string(200, 'm') + std::string(100, ' ') + std::string(200, 'm'));
  const double height = number(task, "Height");
  EXPECT_GT(height, 1.4);
  task.Cells("FillForegnd").SetFormula("RGB(1,2,3)");
  EXPECT_EQ(number(role, "Width"), 2);
  EXPECT_EQ(number(role, "PinY"), height);
  EXPECT_EQ(text(role, "FillForegnd"), text(task, "FillForegnd"));

  write("Prop.Frequency_Of_Occurrence", "Weekly");
  EXPECT_EQ(textOf(tagged("Frequency_Of_Occurrence")), "WK");
  EXPECT_FALSE(tagged("Task_Completion_Time")) << "a time of 0 has no label";
  task.Cells("Prop.Task_Completion_Time").SetFormula("1.5");
  EXPECT_EQ(textOf(tagged("Frequency_Of_Occurrence")), "WK:");
  EXPECT_EQ(textOf(tagged("Task_Completion_Time")), "1.5m");
  write("Prop.Time_Units", "Seconds");
  EXPECT_EQ(textOf(tagged("Task_Completion_Time")), "90s") << "another unit shows another number";
  task.Cells("Prop.Task_Completion_Time").SetFormula("0");
  EXPECT_FALSE(tagged("Task_Completion_Time"));
  EXPECT_EQ(textOf(tagged("Frequency_Of_Occurrence")), "WK");
  write("Prop.Responsible_Role", "");
  write("Prop.Frequency_Of_Occurrence", "");
  EXPECT_EQ(task.Shapes().Count(), 6) << "resizing added the vertical line";
}

TEST_F(TaskDetails, AListIsSpreadOverFiveRows) {
  write("Prop.Resources", "a");
  write("Prop.Resources", "b;; c ;d;e;f;g");
  EXPECT_EQ(text(task, "Prop.Resources5"), "f");
  EXPECT_EQ(text(task, "Prop.Resources"), "b;; c ;d;e;f;g") << "what the user entered is kept completely";
  EXPECT_EQ(text(task, "Prop.Resources1.Prompt"), "b");
  EXPECT_EQ(text(task, "Prop.Resources1.Invisible"), "TRUE");
  EXPECT_EQ(column().size(), 5u);
  ASSERT_TRUE(task.Cells("Prop.Guidelines").SetFormula(R"("the ""green"" form;5")"));
  EXPECT_EQ(textOf(line("controls1")), "the \"green\" form");
  EXPECT_EQ(textOf(line("controls2")), "5") << "a text that reads as a number shows as it is";
}

TEST_F(TaskDetails, HyperlinksMoveWithTheText) {
  write("Prop.Guidelines", "One;Two;Three");
  write("Prop.Resources", "Two");
  addLink(line("controls2"), "two.doc", "second");
  addLink(line("controls2"), "2.doc", "other");
  ASSERT_TRUE(line("controls2").Hyperlinks().Item(1).SetIsDefaultLink(true));
  addLink(line("controls3"), "three.doc", "third");
  addLink(line("Resources1"), "r.doc", "resource");
  EXPECT_TRUE(line("PicLinkedcontrols2")) << "shown at once, and once";
  int linkIcons = 0;
  for (const Shape& member : task.Shapes().all()) linkIcons += member.Data3() == "PicLinkedcontrols2";
  EXPECT_EQ(linkIcons, 1);

  write("Prop.Guidelines", "Three;Zero;Two;One");
  EXPECT_EQ(links(line("controls1")), "third=three.doc");
  EXPECT_EQ(links(line("controls2")), "");
  EXPECT_EQ(links(line("controls3")), "second=two.doc other=2.doc");
  EXPECT_EQ(line("controls3").Hyperlinks().Item(0).IsDefaultLink(), false);
  EXPECT_EQ(line("controls3").Hyperlinks().Item(1).IsDefaultLink(), true);
  EXPECT_EQ(links(line("Resources1")), "resource=r.doc");
  EXPECT_TRUE(line("PicLinkedcontrols3"));
  EXPECT_FALSE(line("Piccontrols3")) << "one icon for a line";
  EXPECT_TRUE(line("Piccontrols2"));

  // They are kept while the line is not drawn, and after a change of size.
  task.Cells("User.controls").SetResult(0, 0.0);
  addin::redrawAllTaskFields(session.addin(), task);
  EXPECT_EQ(column(), (std::vector<std::string>{"Resources1: Two"}));
  task.Cells("Width").SetFormula("2 in");
  task.Cells("User.controls").SetResult(0, 1.0);
  addin::redrawAllTaskFields(session.addin(), task);
  EXPECT_EQ(links(line("controls3")), "second=two.doc other=2.doc");

  // A link that the user deletes stays deleted.
  ASSERT_TRUE(line("controls1").Hyperlinks().Item(0).Delete());
  write("Prop.Resources", "");
  EXPECT_EQ(links(line("controls1")), "");
  EXPECT_TRUE(line("Piccontrols1")) << "the plain icon is back";

  // Of two equal texts the later one's links count for both.
  write("Prop.Guidelines", "Same;Same");
  addLink(line("controls1"), "first.doc", "a");
  addLink(line("controls2"), "later.doc", "b");
  write("Prop.Guidelines", "Same;Same;Other");
  EXPECT_EQ(links(line("controls1")), "b=later.doc");
}

TEST_F(TaskDetails, ARolesHyperlinksAreDeletedWhenTheRoleChanges) {
  write("Prop.SupportingRole_1", "Clerk");
  write("Prop.SupportingRole_2", "Manager");
  write("Prop.Responsible_Role", "Director");
  for (const char* row : {"SupportingRole_1", "SupportingRole_2", "Responsible_Role"}) addLink(line(row), row, "x");
  write("Prop.SupportingRole_1", "President");
  EXPECT_EQ(links(line("SupportingRole_1")), "");
  EXPECT_EQ(links(line("SupportingRole_2")), "x=SupportingRole_2");
  EXPECT_TRUE(line("PicSupportingRole_1"));
  EXPECT_TRUE(line("PicLinkedSupportingRole_2"));
  write("Prop.Responsible_Role", "Manager");
  EXPECT_EQ(links(line("Responsible_Role")), "x=Responsible_Role");
  EXPECT_EQ(text(task, "User.Responsible_Role_Hyper"), ";Responsible_Role,x,,0,");
}

TEST_F(TaskDetails, LongTextsPushTheNextRowsDown) {
  const std::string sentence = "Whoever records an order asks for the delivery address and reads it back. ";
  std::string list;
  for (const int times : {1, 2, 4, 6, 1}) {
    for (int i = 0; i < times; ++i) list += sentence;
    list += ";";
  }
  write("Prop.Guidelines", list);
  write("Prop.SupportingRole_4", "Clerk");
  ASSERT_EQ(column().size(), 6u);
  // The texts of neighbours do not overlap; the margins of their blocks may.
  const char* rows[] = {"controls1", "controls2", "controls3", "controls4", "controls5", "SupportingRole_4"};
  constexpr double margins = 8.0 / 72;
  for (int i = 0; i + 1 < 6; ++i) {
    const Shape upper = line(rows[i]), lower = line(rows[i + 1]);
    const double needed = (number(upper, "TxtHeight") + number(lower, "TxtHeight")) / 2 - margins;
    EXPECT_GE(number(upper, "PinY") - number(lower, "PinY"), std::max(0.2, needed) - 1e-6) << rows[i];
  }
  EXPECT_GT(number(line("controls4"), "TxtHeight"), 1) << "it does wrap";

  // The first one moves down by half of its height beyond one line, so that it does not overlap the Task.
  const double firstHeight = number(line("controls1"), "TxtHeight");
  EXPECT_GT(firstHeight, 0.3);
  EXPECT_NEAR(number(line("controls1"), "PinY"), -0.48 - (firstHeight - 0.25) / 2, 1e-6);

  // The measuring leaves no shapes. An empty row is skipped; the last one has its own height.
  const Maybe<int> members = task.Shapes().Count();
  const double last = number(line("SupportingRole_4"), "TxtHeight"), fifth = number(line("controls5"), "TxtHeight");
  EXPECT_NEAR(addin::calcTxtdown(task, 14), last / 2, 1e-6);
  EXPECT_NEAR(addin::calcTxtdown(task, 5), (fifth + last) / 2, 1e-6);
  EXPECT_NEAR(addin::calcTxtUp(task, 14, 5), (fifth + last) / 2 - 0.02, 1e-6);
  EXPECT_EQ(task.Shapes().Count(), members);
}

TEST_F(TaskDetails, ATaskGrowsWithItsDescription) {
  write("Prop.Responsible_Role", "Clerk");
  write("Prop.Guidelines", "One;Two");
  const Shape lower = task.Shapes().Item(2), description = task.Shapes().Item(4);
  const Shape side = drop(page, "Task Link", 6), above = drop(page, "Task Link", 5, 8);
  ASSERT_TRUE(side.Cells("BeginX").GlueTo(task.Cells("Connections.X2")));
  ASSERT_TRUE(above.Cells("EndX").GlueTo(task.Cells("Connections.X4")));
  description.AddNamedRow(visio::sectionUser, "Needed", 0);
  ASSERT_TRUE(description.Cells("User.Needed").SetFormula("TEXTHEIGHT(TheText,TxtWidth)"));
  const double sideY = number(side, "BeginY");

  const auto expectWhole = [](const Shape& whole) {
    const Shape foot = whole.Shapes().Item(2), text = whole.Shapes().Item(4);
    const double height = number(whole, "Height"), boxHeight = number(text, "Height");
    EXPECT_NEAR(height, number(foot, "Height") + boxHeight, 1e-9);
    const double bottom = number(text, "PinY") - number(text, "LocPinY");
    EXPECT_NEAR(bottom, number(foot, "Height"), 1e-9);
    EXPECT_NEAR(bottom + boxHeight, height, 1e-9);
    EXPECT_NEAR(boxHeight - number(text, "LocPinY"), 0.07, 1e-9);
  };
  const std::string sentence = "Whoever records an order asks for the delivery address and reads it back. ";
  const struct {
    int sentences;
    const char* width;
  } cases[] = {{1, "1.5 in"}, {4, "1.5 in"}, {4, "0.9 in"}, {12, "2.5 in"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::to_string(c.sentences) + " on " + c.width);
    std::string text;
    for (int i = 0; i < c.sentences; ++i) text += sentence;
    write("Prop.Task_Description", text);
    task.Cells("Width").SetFormula(c.width);
    const double height = number(task, "Height");
    expectWhole(task);
    EXPECT_EQ(height > 1.1, c.sentences > 1) << height;
    EXPECT_GE(number(description, "TxtHeight") + 1e-9, number(description, "User.Needed")) << "the text fits its box";
    // What belongs to the Task stays at its place; a link at the side does not move at all.
    EXPECT_EQ(number(line("Responsible_Role"), "PinY"), height);
    EXPECT_EQ(number(task.Shapes().Item(5), "Height"), height) << "the cover";
    EXPECT_NEAR(number(line("controls1"), "PinY"), -0.48, 1e-9);
    EXPECT_NEAR(number(side, "BeginY"), sideY, 1e-9);
    EXPECT_NEAR(number(above, "EndY"), number(task, "PinY") + height / 2, 1e-9);
  }
  EXPECT_NEAR(number(lower, "Height"), 0.18, 1e-9);

  // The user cannot set the height. A copy whose height is the sum of its own boxes grows as well.
  EXPECT_EQ(number(task, "LockHeight"), 1);
  EXPECT_FALSE(task.Cells("Height").SetFormula("2 in"));
  const Shape copy = task.Duplicate();
  ASSERT_TRUE(copy) << lastRefusal();
  const std::string lowerSheet = copy.Shapes().Item(2).NameID().or_("?"),
                    descriptionSheet = copy.Shapes().Item(4).NameID().or_("?");
  ASSERT_TRUE(copy.Cells("Height").FormulaForce(lowerSheet + "!Height + " + descriptionSheet + "!Height"));
  const double before = number(copy, "Height");
  EXPECT_EQ(before, number(task, "Height"));
  write(copy, "Prop.Task_Description", "Short");
  EXPECT_NEAR(number(copy, "Height"), 1.1, 1e-9);
  expectWhole(copy);
}

// The mark of a hyperlink is put beside the text of the sub-task box, or at its left edge where the text is long.
TEST_F(TaskDetails, TheSubTaskBoxHasSpaceForAHyperlinkMark) {
  const Shape box = task.Shapes().Item(3);
  const double markWidth = 0.18, markHeight = 0.08;
  int longTexts = 0;
  for (const char* width : {"1.5 in", "1 in", "2.5 in"}) {
    for (const char* linked : {"", "AB01", "ABCD123", "ABCD12345", "OH01 and more"}) {
      SCOPED_TRACE(std::string(linked) + " on " + width);
      task.Cells("Width").SetFormula(width);
      write("Prop.Linked", linked);
      const double left = number(box, "PinX") - number(box, "LocPinX"), right = left + number(box, "Width");
      EXPECT_NEAR(right, number(task, "Width") - 0.1, 1e-9);
      const bool isLong = number(box, "TxtHeight") >= 0.23;
      longTexts += isLong;
      const double markX = isLong ? number(box, "PinX") - number(box, "Width") / 2
                                  : number(box, "PinX") + number(box, "Width") / 2 - number(box, "User.TxtWidth") - 0.1;
      EXPECT_GE(markX - markWidth / 2 + 1e-9, left);
      const double textLeft = isLong ? right - number(box, "TxtWidth") : right - number(box, "User.TxtWidth");
      EXPECT_LE(markX + markWidth / 2, textLeft + number(box, "LeftMargin") + 1e-9);
      const double markY = markHeight * 0.5 - 0.18, foot = number(box, "PinY") - number(box, "LocPinY");
      EXPECT_GE(markY - markHeight / 2, foot);
      EXPECT_LE(markY + markHeight / 2, foot + number(box, "Height"));
      EXPECT_GE(number(box, "Height") + 1e-9, number(box, "TxtHeight"));
    }
  }
  EXPECT_GT(longTexts, 2);
}

TEST_F(TaskDetails, OneUndoUndoesAllConsequencesOfOneEntry) {
  write("Prop.Guidelines", "One;Two");
  addLink(line("controls2"), "two.doc", "second");
  const auto dump = [&] { return StoreDump::of(session.engine().store(), host::DocumentId{map.ref().id}); };
  const std::pair<const char*, const char*> entries[] = {
      {"Prop.Guidelines", "\"Two;Three\""},   {"Prop.Responsible_Role", "\"Clerk\""},
      {"Prop.Task_Completion_Time", "3"},     {"Prop.Frequency_Of_Occurrence", "\"Daily\""},
      {"Prop.SupportingRole_3", "\"Clerk\""}, {"Width", "2 in"},
  };
  for (const auto& [cell, formula] : entries) {
    const std::string before = dump();
    ASSERT_TRUE(task.Cells(cell).SetFormula(formula)) << cell;
    const std::string after = dump();
    ASSERT_TRUE(app.Undo());
    EXPECT_EQ(firstDifference(before, dump()), "") << cell;
    ASSERT_TRUE(app.Redo());
    EXPECT_EQ(firstDifference(after, dump()), "") << cell;
  }
}

TEST_F(TaskDetails, StayCompleteAfterAnySequenceOfChanges) {
  const unsigned seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  const auto pick = [&](std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(random); };
  const std::vector<std::string> lists{"", "One", "Two;One", "One;Two;Three;Four;Five;Six", "Three;;Three"},
      roles{"", "Clerk", "Manager", "Chief Information Officer"}, frequencies{"", "Daily", "Weekly"};
  std::vector<Maybe<int>> firstFour;
  for (int place = 1; place <= 4; ++place) firstFour.push_back(task.Shapes().Item(place).ID());

  const std::vector<std::function<void()>> acts{
      [&] { write("Prop.Guidelines", lists[pick(lists.size())]); },
      [&] { write("Prop.Resources", lists[pick(lists.size())]); },
      [&] { write("Prop.SupportingRole_" + std::to_string(1 + pick(4)), roles[pick(roles.size())]); },
      [&] { write("Prop.Responsible_Role", roles[pick(roles.size())]); },
      [&] { write("Prop.Frequency_Of_Occurrence", frequencies[pick(frequencies.size())]); },
      [&] { task.Cells("Prop.Task_Completion_Time").SetFormula(std::to_string(pick(3))); },
      [&] { task.Cells("Width").SetFormula(std::to_string(1 + pick(3)) + " in"); },
      [&] {
        addin::TaskSwitchBoxes boxes;
        for (int& box : boxes) box = static_cast<int>(pick(3));
        addin::applyTaskDisplayOptions(session.addin(), addin::shownNow(session.addin()), boxes, "Page");
      },
      [&] { addin::applyTaskDisplay(session.addin(), addin::shownNow(session.addin()), "Drawing"); },
      [&] {
        const Shape last = task.Shapes().Item(task.Shapes().Count().or_(0) - 1);
        if (last.Data1() == "Pline" && !last.Data3().or_({}).starts_with("Pic")) addLink(last, "a.doc", "a");
      },
      [&] { app.Undo(); },
      [&] { app.Redo(); },
  };
  for (int round = 0; round < 150 && !HasFailure(); ++round) {
    acts[pick(acts.size())]();
    if (!task.ID()) {
      ASSERT_TRUE(app.Redo()) << "the drop itself was undone";
    }
    for (int place = 1; place <= 4; ++place) {
      EXPECT_EQ(task.Shapes().Item(place).ID(), firstFour[static_cast<std::size_t>(place) - 1]) << place;
    }
    std::map<std::string, int> lines, icons;
    int verticals = 0;
    for (const Shape& member : task.Shapes().all()) {
      if (member.Data1() != "Pline") continue;
      const std::string row = member.Data3().or_({});
      verticals += member.Data2() == "Vertical";
      if (row.starts_with("Pic")) ++icons[row.substr(row.starts_with("PicLinked") ? 9 : 3)];
      if (row.starts_with("controls") || row.starts_with("Resources") || row.starts_with("Supporting")) {
        ++lines[row];
        EXPECT_EQ(textOf(member), text(task, "Prop." + row));
      }
      EXPECT_EQ(layers(member), number(task, "User.Task_Visible") == 0 ? "InvisibleLayer" : "VisibleLayer") << row;
    }
    EXPECT_LE(verticals, 1);
    for (const auto& [row, count] : lines) EXPECT_EQ(count, 1) << row;
    for (const auto& [row, count] : icons) EXPECT_EQ(lines.count(row), 1u) << "an icon without a line: " << row;
    EXPECT_EQ(lines.size(), icons.size());
  }
}

}  // namespace
}  // namespace quorvel
