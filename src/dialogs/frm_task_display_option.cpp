#include "dialogs/frm_task_display_option.h"

namespace quorvel::addin {

frmTaskDisplayOption::frmTaskDisplayOption(Platform& platform)
    : DisplayOptionsDialog(
          platform,
          {"frmTaskDisplayOption", "Task Display Options", "Display detailed Task data selected above for",
           "Selected Task(s) only", "All Tasks on current page", "All Tasks on all pages in this drawing"},
          "Display the Task data indicated below") {
  addBox("chkResponsibleRole", "Responsible role");
  addBox("chkSupportingRole1", "Supporting Role 1");
  addBox("chkSupportingRole2", "Supporting Role 2");
  addBox("chkSupportingRole3", "Supporting Role 3");
  addBox("chkSupportingRole4", "Supporting Role 4");
  addBox("chkGuidelines", "Guidelines");
  addBox("chkResources", "Resources");
  addBox("chkFrequency", "Frequency of Occurrence");
  addBox("chkCompletionTime", "Task completion time");
}

}  // namespace quorvel::addin
