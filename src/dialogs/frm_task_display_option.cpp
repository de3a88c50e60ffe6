#include "dialogs/frm_task_display_option.h"

#include "schema/display_switches.h"

namespace quorvel::addin {

frmTaskDisplayOption::frmTaskDisplayOption(Platform& platform)
    : DisplayOptionsDialog(
          platform,
          {"frmTaskDisplayOption", "Task Display Options", "Display detailed Task data selected above for",
           "Selected Task(s) only", "All Tasks on current page", "All Tasks on all pages in this drawing"},
          "Display the Task data indicated below") {
  for (const schema::TaskSwitch& each : schema::boxedTaskSwitches()) addBox(each.box, each.caption);
}

}  // namespace quorvel::addin
