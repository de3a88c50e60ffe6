// The command Task Display Options: which kinds of details Tasks show.
#pragma once

#include <array>
#include <string_view>

#include "commands/display_scope.h"
#include "connect/dsr_visio_connect.h"
#include "schema/display_switches.h"

namespace quorvel::addin {

/// A box for each of the switches that the dialog has: 0 off, 1 on, 2 grey.
using TaskSwitchBoxes = std::array<int, schema::boxedTaskSwitches().size()>;

/// Shows the dialog and applies it. Does nothing on a background page.
void cbrBtnTaskDisplayOption_Click(dsrVisioConnect& connect);

/// The switch of the selected Tasks: its value, 2 where they differ, the page's when no Task is selected.
int commonTaskSwitch(const DisplayTarget& target, std::string_view cellName);

/// Writes the switches and redraws the details of each Task. A grey box turns its switch on.
void applyTaskDisplayOptions(const dsrVisioConnect& connect, const DisplayTarget& target, const TaskSwitchBoxes& boxes,
                             std::string_view scope);

}  // namespace quorvel::addin
