// Details of a Task while the host refuses one call of the add-in's: besides the checks of every such story, the
// Task's own members stay where they are, and the next redraw completes what was left half done.
#include <gtest/gtest.h>

#include <map>

#include "commands/task_display_options.h"
#include "display/task_details.h"
#include "failure/story_sweep.h"

namespace quorvel {
namespace {

void write(const Shape& task, const std::string& cell, const std::string& text) {
  EXPECT_TRUE(task.Cells(cell).SetFormula("\"" + text + "\"")) << cell;
}

Shape taskOn(const Page& page) {
  for (const Shape& shape : page.Shapes().all()) {
    if (shape.Master().Name() == "Task") return shape;
  }
  return {};
}

/// A Task with a role, two guidelines, the second with a hyperlink, a resource, and a supporting role with two.
void taskWithDetails(StorySweep::Stage& stage) {
  const Shape task = stage.page.Drop(stage.stencil.Masters().Item("Task"), 3, 6);
  write(task, "Prop.Responsible_Role", "Clerk");
  write(task, "Prop.Guidelines", "One;Two");
  write(task, "Prop.Resources", "Form");
  write(task, "Prop.SupportingRole_1", "Manager");
  for (const Shape& member : task.Shapes().all()) {
    if (member.Data3() == "controls2") member.AddHyperlink().SetAddress(std::string("two.doc"));
    if (!(member.Data3() == "SupportingRole_1")) continue;
    member.AddHyperlink().SetAddress(std::string("manager.doc"));
    member.AddHyperlink().SetAddress(std::string("deputy.doc"));
  }
}

/// Which text has which links, of all lines that are drawn.
std::map<std::string, std::string> linksByText(const Shape& task) {
  std::map<std::string, std::string> links;
  for (const Shape& member : task.Shapes().all()) {
    for (const Hyperlink& link : member.Hyperlinks().all()) {
      links[member.Text().or_("(none)")] += link.Address().or_("(none)") + " ";
    }
  }
  return links;
}

/// Runs the act and looks at the Task: its members 1 to 4 are those of before, and redrawing it gives one line for
/// each of `rows`.
void actOnTask(StorySweep::Stage& stage, const std::vector<std::string>& rows, const std::function<void(Shape)>& act) {
  const Shape task = taskOn(stage.page);
  std::vector<int> members;
  for (int place = 1; place <= 4; ++place) members.push_back(task.Shapes().Item(place).ID().or_(-1));
  act(task);
  for (int place = 1; place <= 4; ++place) {
    EXPECT_EQ(task.Shapes().Item(place).ID(), members[static_cast<std::size_t>(place) - 1]);
  }
  act(task);
  // What is hidden because of a refused read is shown again.
  for (const char* shown : {"User.controls", "User.Supporting_Role1"}) task.Cells(shown).FormulaForce("1");
  addin::redrawAllTaskFields(stage.connect, task);
  std::map<std::string, int> lines;
  for (const Shape& member : task.Shapes().all()) {
    const std::string row = member.Data3().or_({});
    if (member.Data1() == "Pline" && !row.empty() && !row.starts_with("Pic")) ++lines[row];
  }
  EXPECT_LE(lines.size(), rows.size());
  for (const auto& [row, count] : lines) EXPECT_EQ(count, 1) << row;
  EXPECT_EQ(linksByText(task),
            (std::map<std::string, std::string>{{"Two", "two.doc "}, {"Manager", "manager.doc deputy.doc "}}));
}

TEST(RefusedDetails, AReorderedList) {
  const auto act = [](StorySweep::Stage& stage) {
    actOnTask(stage, {"Responsible_Role", "controls1", "controls2", "controls3", "Resources1", "SupportingRole_1"},
              [](const Shape& task) {
                write(task, "Prop.Guidelines", "Two;Three;One");
                write(task, "Prop.Guidelines", "Three;Two;One");
              });
  };
  const auto onForm = [](Form& form) {
    if (Control* ok = form.find("BtnOK")) ok->click();
  };
  StorySweep(taskWithDetails, act, onForm).refuseEach(1, StorySweep::toTheEnd, 101, 1000);
}

TEST(RefusedDetails, OptionsForThePage) {
  const auto act = [](StorySweep::Stage& stage) {
    actOnTask(stage, {"Responsible_Role", "controls1", "controls2", "SupportingRole_1"},
              [&](const Shape&) { addin::cbrBtnTaskDisplayOption_Click(stage.connect); });
  };
  const auto onForm = [](Form& form) {
    if (Control* resources = form.find("chkResources")) resources->setState(CheckState::Off);
    if (Control* ok = form.find("BtnOK")) ok->click();
  };
  StorySweep(taskWithDetails, act, onForm).refuseEach(1, StorySweep::toTheEnd, 101, 1000);
}

}  // namespace
}  // namespace quorvel
