// The command Task Display Options: which kinds of details Tasks show.
#pragma once

#include <array>
#include <string_view>

#include "addin/dsr_visio_connect.h"
#include "commands/display_scope.h"

namespace quorvel::addin {

/// The switches in the order of the dialog's boxes. They stand on Tasks and, for new Tasks, on pages.
inline constexpr std::array<std::string_view, 9> taskSwitches{
    "User.Responsible_Role", "User.Supporting_Role1",        "User.Supporting_Role2",
    "User.Supporting_Role3", "User.Supporting_Role4",        "User.Controls",
    "User.Resources",        "User.Frequency_of_Occurrence", "User.Task_Completion_Time"};
/// A box for each: 0 off, 1 on, 2 grey.
using TaskSwitchBoxes = std::array<int, taskSwitches.size()>;

/// Shows the dialog and applies it. Does nothing on a background page.
void cbrBtnTaskDisplayOption_Click(dsrVisioConnect& connect);

/// The switch of the selected Tasks: its value, 2 where they differ, the page's when no Task is selected.
int commonTaskSwitch(const DisplayTarget& target, std::string_view cellName);

/// Writes the switches and draws the details of each Task anew. A grey box turns its switch on.
void applyTaskDisplayOptions(const dsrVisioConnect& connect, const DisplayTarget& target, const TaskSwitchBoxes& boxes,
                             std::string_view scope);

}  // namespace quorvel::addin
