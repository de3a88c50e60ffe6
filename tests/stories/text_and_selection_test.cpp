// What is selected is marked; texts that show cells are kept from the text tools, and Replace changes their cells.
#include <gtest/gtest.h>
#include <unistd.h>

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
    EXPECT_GT(steps(), before);
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

TEST_F(TextAndSelection, TypingOverAFieldIsUndone) {
  const Shape connector = drop(page, "Process Connector", 2, 2), link = drop(page, "Task Link", 4, 2);
  deselect();
  const Shape role = line("Responsible_Role"), supporting = line("SupportingRole_2"), subTask = task.Shapes().Item(3);
  const struct {
    Shape shape, owner;
    const char* cell;
  } guarded[] = {{connector, connector, "Prop.Connecting_TaskID"},
                 {role, task, "Prop.Responsible_Role"},
                 {supporting, task, "Prop.SupportingRole_2"},
                 {subTask, task, "Prop.Linked"}};
  for (const auto& c : guarded) {
    SCOPED_TRACE(c.cell);
    const std::string before = textOf(c.shape);
    messages.clear();
    ASSERT_TRUE(c.shape.BeginTextEdit()) << lastRefusal();
    EXPECT_TRUE(c.shape.EndTextEdit(before));
    EXPECT_EQ(messages.size(), 0u);
    runStory([&] {
      ASSERT_TRUE(c.shape.BeginTextEdit()) << lastRefusal();
      EXPECT_TRUE(c.shape.EndTextEdit(std::string("typed over")));
      EXPECT_EQ(textOf(c.shape), c.shape == connector ? "Connector.Z99" : before);
      EXPECT_EQ(number(c.shape, "LockTextEdit"), 1);
      ASSERT_EQ(messages.size(), 1u);
      EXPECT_TRUE(messages[0].starts_with("You cannot use Find/Replace to change this field.")) << messages[0];
    });
    // It is a field again: it follows. (A change of a role draws its line again.)
    EXPECT_TRUE(hasField(c.shape));
    if (c.shape == connector || c.shape == subTask) {
      write(c.owner, c.cell, "B07");
      EXPECT_EQ(textOf(c.shape), c.shape == connector ? "Connector.B07" : "B07");
    }
  }
  for (const Shape& locked : {line("controls1"), line("Resources1"), link}) {
    const std::string before = textOf(locked);
    EXPECT_FALSE(locked.BeginTextEdit());
    EXPECT_EQ(textOf(locked), before);
  }
}

TEST_F(TextAndSelection, ACopyThatIsNotSelectedIsNotMarked) {
  struct Keeper : ApplicationEvents {
    void BeforeShapeDelete(Shape shape) override { copy = shape.Duplicate(); }
    Shape copy;
  } keeper;
  session.host().advise(keeper);
  session.platform().onForm = [](Form& form) { form.find("BtnOK")->click(); };
  select(task);
  ASSERT_TRUE(task.Delete());
  session.host().unadvise(keeper);
  ASSERT_EQ(text(keeper.copy, "Prop.Responsible_Role"), "Clerk");
  EXPECT_FALSE(isMarked(box(keeper.copy)));
}

TEST_F(TextAndSelection, AFileHoldsNoMarks) {
  select(task);
  ASSERT_TRUE(isMarked(box(task)));
  const std::string file = testing::TempDir() + "quorvel-unmarked-" + std::to_string(getpid()) + ".vsdx";
  ASSERT_TRUE(map.SaveAs(file)) << lastRefusal();
  EXPECT_TRUE(isMarked(box(task)));
  EXPECT_EQ(map.Saved(), true);
  Session reader(options());
  const Page saved = reader.app().Documents().Open(file).Pages().Item(1);
  EXPECT_FALSE(isMarked(box(saved.Shapes().Item("AB01"))));
  std::filesystem::remove(file);
  // A save that fails leaves the mark off until the selection changes.
  map.SaveAs(std::string("/no such folder/map.vsdx"));
  select(second);
  EXPECT_TRUE(isMarked(box(task)) && isMarked(box(second)));
}

TEST_F(TextAndSelection, EmptiedNotesLoseTheirMark) {
  const auto notesMarks = [&](const Shape& task) {
    return std::ranges::count_if(task.Shapes().all(), [](const Shape& m) { return m.Data1() == "pic_indicatesNotes"; });
  };
  for (const Shape& each : {task, second}) write(each, "Prop.Notes", "ask first");
  deselect();
  runStory([&] {
    select(task);
    EXPECT_TRUE(session.host().editShapeData(task, {{"Prop.Notes", "\"\""}}));
    EXPECT_EQ(notesMarks(task), 0);
    EXPECT_EQ(number(task, "User.flag_pic_2"), 0);
    EXPECT_EQ(notesMarks(second), 1);
  });
}

/// Runs the host's Replace for the add-in.
class Replace : public TextAndSelection {
 protected:
  /// Opens a message of the program inside the dialog after each replaced text, and looks at the texts there.
  struct InDialog : ApplicationEvents {
    explicit InDialog(host::InMemoryHost& host) : host(host) { host.advise(*this); }
    ~InDialog() override { host.unadvise(*this); }
    void TextChanged(Shape) override {
      if (!isOpen || std::exchange(isInner, true)) return;
      host.beginModal();
      host.endModal();
      isInner = false;
    }
    void BeforeModal(Application) override {
      if (isInner) return;
      isOpen = true;
      if (onOpen) onOpen();
    }
    void AfterModal(Application) override { isOpen = isInner; }
    host::InMemoryHost& host;
    std::function<void()> onOpen;
    bool isOpen = false, isInner = false;
  } inDialog{session.host()};

  void replaceAll(const std::string& word, const std::string& by) {
    addin::cbrBtnFindReplace_Click(session.addin());
    EXPECT_TRUE(session.host().replaceText(word, by).outcome);
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

  inDialog.onOpen = [&] { EXPECT_FALSE(hasField(box(bare)) || hasField(link)); };
  runStory([&] {
    replaceAll("old", "new");
    replaceAll("Printer", "");
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
  EXPECT_EQ(textOf(link), std::string(linkText).replace(linkText.find("old"), 3, "new"));
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
    const std::vector<Shape> before = task.Shapes().all();
    inDialog.onOpen = [&] { EXPECT_TRUE(task.Shapes().all().back() == before[3]); };
    replaceAll("no such text", "");
    EXPECT_EQ(task.Shapes().all(), before) << lines;
  }
  inDialog.onOpen = {};
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
  inDialog.onOpen = [&] {
    EXPECT_TRUE(hasField(box(task)));
    EXPECT_TRUE(line("controls1").SetText(std::string("changed")));
  };
  session.host().replaceText("old", "new");
  EXPECT_EQ(text(task, "Prop.Guidelines"), "Form 12;; Law 7 ;the old manual;Letter;Rules");
  EXPECT_FALSE(std::filesystem::exists("c:\\lumeth.txt"));
}

}  // namespace
}  // namespace quorvel
