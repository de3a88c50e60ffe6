// Times the actions that change all Tasks of a page, on pages of growing size: filling them, redrawing all details as
// the options command does, applying time units and frequencies, renaming a role that all Tasks have, and hiding the
// details. Prints a line for each size: what one Task costs must not depend on how many there are.
#include "commands/customize_role_names.h"
#include "commands/quorvel_options.h"
#include "commands/task_display.h"
#include "commands/task_display_options.h"
#include "map_with_tasks.h"
#include "measuring.h"

namespace {

using namespace quorvel;

/// Role, frequency, time, three guidelines, two resources, one supporting role.
void fill(const Shape& task) {
  const std::pair<const char*, const char*> entries[] = {
      {"Prop.Responsible_Role", "\"Sales Representative\""},
      {"Prop.Frequency_Of_Occurrence", "\"Daily\""},
      {"Prop.Task_Completion_Time", "15"},
      {"Prop.Guidelines", "\"Record orders on the day they arrive;Ask for a delivery address;Credit policy\""},
      {"Prop.Resources", "\"Order form;Customer register\""},
      {"Prop.SupportingRole_1", "\"Clerk\""},
  };
  for (const auto& [cell, formula] : entries) task.Cells(cell).SetFormula(formula);
}

/// Renames the role of all Tasks, and applies options with another abbreviation for minutes.
void answer(Form& form) {
  if (form.name() == "frmCustomizeRoleNames") {
    Control& roles = *form.find("lstRoleNames");
    for (std::size_t i = 0; i < roles.rows().size(); ++i)
      if (roles.rows()[i].text() == "Sales Representative") roles.selectRow(i);
    form.find("btnEdit")->click();
  }
  if (form.name() == "frmNewRoleName") {
    form.find("txtNewRoleName")->type("Account Manager");
    form.find("btnOK")->click();
  }
  if (form.name() == "frmTaskOption") {
    form.find("Text1(1)")->type("mi");
    form.find("btnApplyAndClose")->click();
  }
}

void measure(int tasks) {
  MapWithTasks map(tasks);
  addin::dsrVisioConnect& addin = map.session.addin();
  std::vector<Shape> all;
  for (const Shape& shape : map.page.Shapes().all()) {
    if (shape.Master()) all.push_back(shape);
  }
  const double entries = cpuMilliseconds([&] {
    for (const Shape& shape : all) fill(shape);
  });
  const double redraw = cpuMilliseconds([&] {
    addin::applyTaskDisplayOptions(addin, addin::shownNow(addin), {1, 1, 1, 1, 1, 1, 1, 1, 1}, "Page");
  });
  map.session.platform().onForm = answer;
  const double options = cpuMilliseconds([&] { addin::cbrQuorvelOption_Click(addin); });
  const double rename = cpuMilliseconds([&] { addin::cbrBtnCustomizeRoleName_Click(addin); });
  const std::string role = all.front().Cells("Prop.Responsible_Role").ResultStr(visio::unitsNone).or_("");
  const double off = cpuMilliseconds([&] { addin::applyTaskDisplay(addin, addin::shownNow(addin), "Page"); });
  std::printf(
      "%6d Tasks, ms for each: entries %6.2f  redraw %6.2f  options %6.2f  rename %6.2f  off %6.3f; peak %5.0f MiB%s\n",
      tasks, entries / tasks, redraw / tasks, options / tasks, rename / tasks, off / tasks, peakMemory(),
      role == "Account Manager" ? "" : "; the role was not renamed");
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  for (const int tasks : taskCounts(argc, argv, 1, {}, "details_bench TASKS...")) measure(tasks);
  return 0;
}
