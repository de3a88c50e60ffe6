// Pastes and changes of IDs while the host refuses one call of the add-in's, each in turn: no ID is used twice, and
// hyperlinks do not go to another Task.
#include <gtest/gtest.h>

#include <set>

#include "commands/renumber_tasks.h"
#include "failure/story_sweep.h"
#include "schema/cells.h"
#include "schema/marks.h"

namespace quorvel {
namespace {

using Stage = StorySweep::Stage;

void write(const Shape& shape, const std::string& cell, const std::string& text) {
  EXPECT_TRUE(shape.Cells(cell).SetFormula("\"" + text + "\"")) << cell;
}
std::string text(const Shape& shape, std::string_view cell) { return shape.Cells(cell).ResultStr(0).or_({}); }

std::vector<Shape> shapesOf(const Page& page, std::string_view master) {
  std::vector<Shape> found;
  for (const Shape& shape : page.Shapes().all()) {
    if (shape.Master().Name() == master) found.push_back(shape);
  }
  return found;
}

void accept(Form& form) {
  if (Control* ok = form.find("BtnOK")) ok->click();
}

/// Three Tasks whose role, frequency and abbreviation the map of the story does not know are on the clipboard.
void copyFromAnotherMap(Stage& stage) {
  stage.page.SetName(std::string("A Page"));
  stage.page.Drop(stage.stencil.Masters().Item("Task"), 3, 8);
  const Document other = stage.user.Documents().Add(QUORVEL_SOURCE_FOLDER "/data/Quorvel.vstx");
  const Page page = other.Pages().Item(1);
  page.SetName(std::string("B Page"));
  write(other.DocumentSheet(), "User.RoleNames", ";Baker");
  write(other.DocumentSheet(), "User.FreqSuggestions", ";Never");
  write(other.DocumentSheet(), "User.FreqSuggestions.Prompt", ";NV");
  write(other.DocumentSheet(), "User.Time_Unit_Disply", "s;min;h;d;w");
  for (int i = 0; i < 3; ++i) {
    const Shape task = page.Drop(stage.stencil.Masters().Item("Task"), 2 + 2 * i, 5);
    write(task, "Prop.Responsible_Role", "Baker");
    write(task, "Prop.Frequency_Of_Occurrence", "Never");
    task.Cells("Prop.Task_Completion_Time").SetFormula(std::string("3"));
  }
  for (const Window& window : stage.user.Windows().all()) {
    if (!(window.Document() == other)) continue;
    window.DeselectAll();
    for (const Shape& task : shapesOf(page, "Task")) window.Select(task, visio::select);
    EXPECT_TRUE(window.Selection().Copy());
  }
  other.Close();
}

void expectDistinctIds(const Page& page) {
  std::set<std::string> ids;
  for (const Shape& task : shapesOf(page, "Task")) {
    const std::string id = text(task, "Prop.Task_ID");
    if (id.empty()) continue;
    EXPECT_TRUE(ids.insert(id).second) << id << " is used twice";
    EXPECT_EQ(task.Name().or_({}), id);
    EXPECT_TRUE(id.starts_with("A")) << id;
  }
}

TEST(RefusedChanges, APasteFromAnotherMap) {
  const StorySweep sweep(
      copyFromAnotherMap,
      [](Stage& stage) {
        stage.page.Paste();
        expectDistinctIds(stage.page);
      },
      accept);
  sweep.refuseEach(1, StorySweep::toTheEnd, 53, 500);
}

/// Everything that can link to the first Task does: a connector and a Task of a second page, its box and a line.
void linkedTasks(Stage& stage) {
  stage.page.SetName(std::string("A Page"));
  const Page page = stage.page.Document().Pages().Add();
  page.SetName(std::string("B Page"));
  stage.page.Drop(stage.stencil.Masters().Item("Task"), 3, 8);
  const Shape task = page.Drop(stage.stencil.Masters().Item("Task"), 3, 8);
  write(task, "Prop.Guidelines", "rules");
  const Shape connector = page.Drop(stage.stencil.Masters().Item("Process Connector"), 6, 8);
  std::vector<Shape> linking{connector, task, task.Shapes().Item(3)};
  for (const Shape& member : task.Shapes().all()) {
    if (member.Data3() == "controls1") linking.push_back(member);
  }
  for (const Shape& shape : linking) shape.AddHyperlink().SetSubAddress(std::string("A Page/A01"));
  EXPECT_EQ(text(connector, "Prop.Connecting_TaskID"), "A01");
}

int linksElsewhere(const Shape& shape) {
  int count = 0;
  for (const Hyperlink& link : shape.Hyperlinks().all()) count += link.SubAddress() != "A Page/A08";
  for (const Shape& member : shape.Shapes().all()) count += linksElsewhere(member);
  return count;
}

TEST(RefusedChanges, AnotherTaskId) {
  const StorySweep sweep(
      linkedTasks,
      [](Stage& stage) {
        const Shape task = shapesOf(stage.page, "Task").front();
        // What one refused call left behind must not keep the next change from all links.
        for (const char* id : {"A07", "A08"}) write(task, "Prop.Task_ID", id);
        EXPECT_EQ(task.Name().or_({}), "A08");
        const Page page = stage.page.Document().Pages().Item(2);
        int behind = 0;
        for (const char* master : {"Task", "Process Connector"})
          behind += linksElsewhere(shapesOf(page, master).front());
        EXPECT_EQ(behind, 0);
      },
      accept);
  sweep.refuseEach(1, StorySweep::toTheEnd, 13, 50);
}

TEST(RefusedChanges, ALinkedTaskThatIsKept) {
  const StorySweep sweep(
      linkedTasks,
      [](Stage& stage) {
        // The dialog is closed by its frame, which keeps the Task.
        shapesOf(stage.page, "Task").front().Delete();
        EXPECT_FALSE(stage.connect.flagRestoringTask);
        const std::vector<Shape> kept = shapesOf(stage.page, "Task");
        EXPECT_LE(kept.size(), 1u);
        if (!kept.empty()) expectDistinctIds(stage.page);
        const Shape next = stage.page.Drop(stage.stencil.Masters().Item("Task"), 3, 3);
        if (!kept.empty()) {
          EXPECT_NE(text(next, "Prop.Task_ID"), "A01");
        }
      },
      accept);
  sweep.refuseEach(1, StorySweep::toTheEnd, 41, 300);
}

TEST(RefusedChanges, RenumberingThePage) {
  const StorySweep sweep(
      [](Stage& stage) {
        linkedTasks(stage);
        for (int i = 0; i < 2; ++i) stage.page.Drop(stage.stencil.Masters().Item("Task"), 5 + 2 * i, 8);
        stage.user.ActiveWindow().SetPage(stage.page);
      },
      [](Stage& stage) {
        addin::cbrBtnRenumberTasks_Click(stage.connect);
        expectDistinctIds(stage.page);
        // What was left behind must not keep the next change from the links.
        write(shapesOf(stage.page, "Task").front(), "Prop.Task_ID", "A08");
        const Page page = stage.page.Document().Pages().Item(2);
        for (const char* master : {"Task", "Process Connector"})
          EXPECT_EQ(linksElsewhere(shapesOf(page, master).front()), 0) << master;
      },
      [](Form& form) {
        accept(form);
        if (Control* number = form.find("txtTaskNumber"); number && form.name() == "frmTaskRenumberingOption")
          number->type("30");
        if (Control* ok = form.find("Command2")) ok->click();
      });
  sweep.refuseEach(1, StorySweep::toTheEnd, 23, 100);
}

}  // namespace
}  // namespace quorvel
