#include "dialogs/task_link_display_option.h"

#include "schema/display_switches.h"

namespace quorvel::addin {

TaskLinkDisplayOption::TaskLinkDisplayOption(Platform& platform)
    : DisplayOptionsDialog(platform,
                           {"TaskLinkDisplayOption", "Task Link Display Option",
                            "Display detailed Task Link data selected above for", "Selected Task Link(s) only",
                            "All Task Links on current page", "All Task Links on all pages in this drawing"},
                           "Display the Task Link data indicated below"),
      chkTimeBetweenTasks(addBox(schema::linkSwitches[0].box, schema::linkSwitches[0].caption)),
      chkDescription(addBox(schema::linkSwitches[1].box, schema::linkSwitches[1].caption)),
      chkGreaterThanZero(addBox(schema::linkSwitches[2].box, schema::linkSwitches[2].caption)) {
  chkGreaterThanZero.setEnabled(false);
}

void TaskLinkDisplayOption::boxChanged(std::size_t) {
  const bool showsTime = chkTimeBetweenTasks.state() != CheckState::Off;
  chkGreaterThanZero.setEnabled(showsTime);
  if (!showsTime) chkGreaterThanZero.setState(CheckState::Off);
}

}  // namespace quorvel::addin
