// What is selected is marked; texts that show cells are kept from the text tools, and Replace changes their cells.
#include <gtest/gtest.h>

#include <filesystem>

#include "commands/find_replace.h"
#include "host/store_dump.h"
#include "stories/details_fixture.h"

namespace quorvel {
namespace {

class TextAndSelection : public DetailsTest {
 protected:
  Shape second;
  std::vector<std::string> messages;

  void SetUp() override {
    DetailsTest::SetUp();
    second = dropTask(page, 6, 6);
    for (const Shape& each : {task, second}) {
      write(each, "Prop.Guidelines", "Form 12;; Law 7 ;the old manual;Letter;Rules");
      write(each, "Prop.Resources", "Truck;Printer;old scanner;Phone;Desk");
      write(each, "Prop.Responsible_Role", "Clerk");
      write(each, "Prop.SupportingRole_2", "Director");
    }
    session.platform().onMessage = [this](const MessageBox& box) {
      messages.push_back(box.text);
      return MessageAnswer::Ok;
    };
    deselect();
  }

  Window window() { return app.ActiveWindow(); }
  void select(const Shape& shape) { EXPECT_TRUE(window().Select(shape, visio::select)) << lastRefusal(); }
  void deselect() { EXPECT_TRUE(window().DeselectAll()); }
  static Shape box(const Shape& task) { return task.Shapes().Item(4); }
  static bool isMarked(const Shape& shape) { return number(shape, "TextBkgnd") == 6; }
  static bool hasField(const Shape& shape) { return shape.CellExists("Fields.Value[1]", 0) == true; }

  std::size_t steps() { return session.engine().undo().undoCount(host::DocumentId{map.ref().id}); }
  std::string dump() { return StoreDump::of(session.engine().store(), host::DocumentId{map.ref().id}); }
  /// What the story does is undone to its start and redone to its end. Marks are no part of it.
  void runStory(const std::function<void()>& story) {
    const std::string start = dump();
    const std::size_t before = steps();
    story();
    deselect();
    const std::string end = dump();
    EXPECT_NE(firstDifference(start, end), "");
    while (steps() > before) ASSERT_TRUE(app.Undo());
    EXPECT_EQ(firstDifference(start, dump()), "");
    while (app.Redo()) continue;
    EXPECT_EQ(firstDifference(end, dump()), "");
  }
};

TEST_F(TextAndSelection, WhatIsSelectedIsMarkedInItsOwnWindow) {
  constexpr int left = 1, right = 2;
  const Shape guideline = line("controls1"), subTaskBox = task.Shapes().Item(3);
  map.SetSaved(true);
  const std::size_t before = steps();
  const struct {
    const char* name;
    int button;
    std::vector<Shape> selected, marked;
  } cases[] = {
      {"a Task", left, {task}, {box(task)}},
      {"two Tasks", left, {task, second}, {box(task), box(second)}},
      {"a Task with the right button", right, {second}, {}},
      {"a line", left, {guideline}, {guideline}},
      {"a line with the right button", right, {guideline}, {guideline}},
      {"a sub-task box and a Task", left, {subTaskBox, second}, {subTaskBox, box(second)}},
      {"nothing", left, {}, {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    deselect();
    session.host().mouseDown(c.button, 0, 1, 1);
    for (const Shape& shape : c.selected) select(shape);
    for (const Shape& part : {box(task), box(second), guideline, subTaskBox})
      EXPECT_EQ(isMarked(part), std::ranges::find(c.marked, part) != c.marked.end()) << part.NameID().or_("?");
  }
  EXPECT_EQ(map.Saved(), true);
  EXPECT_EQ(steps(), before);

  select(task);
  const Document first = map;
  const Shape elsewhere = dropTask(newMap("CD Other"));
  select(elsewhere);
  EXPECT_TRUE(isMarked(box(task)) && isMarked(box(elsewhere)));
  deselect();
  EXPECT_TRUE(isMarked(box(task)) && !isMarked(box(elsewhere)));
  EXPECT_TRUE(map.Close());
  map = first;
  deselect();
  EXPECT_FALSE(isMarked(box(task)));
}

TEST_F(TextAndSelection, AShapeThatComesBackLosesItsMark) {
  select(task);
  ASSERT_TRUE(task.Delete());
  ASSERT_TRUE(app.Undo());
  ASSERT_TRUE(isMarked(box(task)));
  select(task);
  EXPECT_TRUE(isMarked(box(task)));
  ASSERT_TRUE(app.Redo());
  ASSERT_TRUE(app.Undo());
  select(second);
  EXPECT_FALSE(isMarked(box(task)));
  EXPECT_TRUE(isMarked(box(second)));
}

/// The host's Replace as a user runs it, for all hits of a word.
class Replace : public TextAndSelection {
 protected:
  void replaceAll(const std::string& word, const std::string& by) {
    std::vector<Shape> found;
    for (const Shape& shape : page.Shapes().all()) {
      found.push_back(shape);
      for (const Shape& member : shape.Shapes().all()) found.push_back(member);
    }
    for (const Shape& shape : found) {
      const std::string before = textOf(shape), after = replaceAllIn(before, word, by);
      if (before != after && !hasField(shape) && number(shape, "LockTextEdit") == 0) {
        EXPECT_TRUE(shape.SetText(after)) << lastRefusal();
      }
    }
  }
  static std::string replaceAllIn(std::string text, const std::string& word, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(word, at)) != std::string::npos; at += by.size())
      text.replace(at, word.size(), by);
    return text;
  }

  /// The command, with `inDialog` while the dialog is open.
  void runReplace(const std::function<void()>& inDialog) {
    const Maybe<int> step = app.BeginUndoScope("Replace");
    addin::cbrBtnFindReplace_Click(session.addin());
    session.addin().EnterScope(1179, "Replace");
    session.host().beginModal();
    inDialog();
    session.host().endModal();
    session.addin().ExitScope(1179, "Replace");
    EXPECT_TRUE(app.EndUndoScope(step.or_(0), true));
  }
};

TEST_F(Replace, ChangesTheCellsThatTheTextsShow) {
  const Shape bare = dropTask(page, 3, 3), link = drop(page, "Task Link", 4, 2);
  const std::string unchanged = "Prop.Guidelines";
  write(second, unchanged, "Form 12");
  write("Prop.Task_Description", "Fill the old form");
  write(link, "Prop.Task_Link", "by \"\"old\"\" mail");
  write(link, "Prop.Time_Between_Tasks", "2");
  for (const Shape& each : {task, second, bare}) select(each);
  deselect();
  const std::string linkText = textOf(link);
  const std::vector<Shape> boxes{box(task), box(second), box(bare)};

  runStory([&] {
    runReplace([&] {
      // A message inside the dialog.
      session.host().beginModal();
      session.host().endModal();
      EXPECT_EQ(textOf(link), "by \"old\" mail");
      replaceAll("old", "new");
      replaceAll("Printer", "");
    });
  });
  EXPECT_FALSE(session.addin().flagFindReplaceActive);
  EXPECT_EQ(text(task, "Prop.Guidelines"), "Form 12;; Law 7 ;the new manual;Letter;Rules");
  EXPECT_EQ(text(task, "Prop.Resources"), "Truck;;new scanner;Phone;Desk");
  EXPECT_EQ(text(second, "Prop.Guidelines"), "Form 12");
  EXPECT_EQ(text(second, "Prop.Resources"), "Truck;;new scanner;Phone;Desk");
  EXPECT_EQ(text(task, "Prop.Task_Description"), "Fill the new form");
  EXPECT_EQ(text(bare, "Prop.Task_Description"), "Task Description");
  EXPECT_EQ(text(link, "Prop.Task_Link"), "by \"new\" mail");
  EXPECT_EQ(column(), (std::vector<std::string>{"controls1: Form 12", "controls2: Law 7", "controls3: the new manual",
                                                "controls4: Letter", "controls5: Rules", "Resources1: Truck",
                                                "Resources2: new scanner", "Resources3: Phone", "Resources4: Desk",
                                                "SupportingRole_2: Director"}));
  EXPECT_EQ(textOf(link), replaceAllIn(linkText, "old", "new"));
  EXPECT_EQ(messages.size(), 0u);

  for (const Shape& each : {task, second, bare}) {
    const Shape description = box(each);
    EXPECT_TRUE(description == boxes[each == task ? 0 : each == second ? 1 : 2]);
    EXPECT_EQ(number(description, "LockSelect"), 1);
    write(each, "Prop.Task_Description", "Later text");
    EXPECT_EQ(textOf(description), "Later text");
    for (const Shape& member : each.Shapes().all()) {
      const std::string row = member.Data3().or_({});
      if (row.starts_with("controls") || row.starts_with("Resources")) {
        EXPECT_TRUE(hasField(member)) << row;
        EXPECT_EQ(number(member, "LockTextEdit"), 1) << row;
      }
    }
  }
  EXPECT_EQ(number(link, "LockTextEdit"), 1);
  write(link, "Prop.Task_Link", "later");
  EXPECT_NE(textOf(link).find("later"), std::string::npos) << textOf(link);
}

TEST_F(Replace, APlaceInTheGroupIsKeptForAnyNumberOfMembers) {
  for (int lines = 0; lines <= 5; ++lines) {
    std::string list;
    for (int i = 1; i <= lines; ++i) list += "entry" + std::to_string(i) + ";";
    write("Prop.Guidelines", list);
    write("Prop.Resources", "");
    std::vector<Shape> before = task.Shapes().all();
    runReplace([&] { EXPECT_TRUE(task.Shapes().all().back() == before[3]); });
    EXPECT_EQ(task.Shapes().all(), before) << lines;
  }
  // A dialog while the command waits for a Replace that does not come.
  addin::cbrBtnFindReplace_Click(session.addin());
  const std::vector<Shape> before = task.Shapes().all();
  session.host().beginModal();
  EXPECT_FALSE(hasField(before[3]));
  session.host().endModal();
  EXPECT_EQ(task.Shapes().all(), before);
  EXPECT_TRUE(hasField(before[3]));
  EXPECT_TRUE(session.addin().flagFindReplaceActive);
}

TEST_F(Replace, TheCommandRunsTheHostsOwnReplace) {
  struct Clicks : ApplicationEvents {
    void Click(CommandBarButton button) override { captions.push_back(button.Caption().or_("?")); }
    std::vector<std::string> captions;
  } clicks;
  session.host().advise(clicks);
  const CommandBars bars = app.CommandBars();
  while (bars.Count() < 3) ASSERT_TRUE(bars.Add("bar " + std::to_string(*bars.Count()), 1, false, true));
  const CommandBarControls menus = bars.Item(3).Controls();
  while (menus.Count() < 2) ASSERT_TRUE(menus.Add(10));
  for (const char* caption : {"&Find...", "R&eplace...", "Replace"})
    ASSERT_TRUE(menus.Item(2).Controls().Add(1).SetCaption(std::string(caption)));
  session.addin().changedShapes = {task};
  addin::cbrBtnFindReplace_Click(session.addin());
  EXPECT_EQ(clicks.captions, std::vector<std::string>{"R&eplace..."});
  EXPECT_TRUE(session.addin().flagFindReplaceActive);
  EXPECT_TRUE(session.addin().changedShapes.empty());
  session.host().unadvise(clicks);

  // Without the command, the texts are not watched.
  session.addin().flagFindReplaceActive = false;
  session.addin().EnterScope(1179, "Replace");
  session.host().beginModal();
  EXPECT_TRUE(hasField(box(task)));
  EXPECT_TRUE(line("controls1").SetText(std::string("changed")));
  session.host().endModal();
  session.addin().ExitScope(1179, "Replace");
  EXPECT_EQ(text(task, "Prop.Guidelines"), "Form 12;; Law 7 ;the old manual;Letter;Rules");
  EXPECT_FALSE(std::filesystem::exists("c:\\lumeth.txt"));
}

}  // namespace
}  // namespace quorvel
