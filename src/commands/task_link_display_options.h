// The command Task Link Display Options: what Task Links show.
#pragma once

#include <array>
#include <string_view>

#include "commands/display_scope.h"
#include "connect/dsr_visio_connect.h"
#include "schema/display_switches.h"

namespace quorvel::addin {

/// A box for each of the links' switches: 0 off, 1 on, 2 grey.
using TaskLinkSwitchBoxes = std::array<int, schema::linkSwitches.size()>;

/// Shows the dialog and applies it. Does nothing on a background page.
void cbrBtnTaskLinkDisplayOption_Click(dsrVisioConnect& connect);

/// A command that does nothing: a link's display is set through its options alone.
inline void cbrBtnTaskLinkDisplay_Click(dsrVisioConnect&) {}

/// The switch of the selected Task Links: its value, 2 where they differ, the page's when none is selected.
int commonTaskLinkSwitch(const DisplayTarget& target, std::string_view cellName);

/// Writes the switches and rewrites the text of each link. A grey box turns its switch on.
void applyTaskLinkDisplayOptions(const dsrVisioConnect& connect, const DisplayTarget& target,
                                 const TaskLinkSwitchBoxes& boxes, std::string_view scope);

}  // namespace quorvel::addin
