// The command Task Display On/Off: details around Tasks are shown or hidden as a whole, and keep their own switches.
#pragma once

#include <string_view>

#include "commands/display_scope.h"
#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Asks for the scope and toggles the display of details. Does nothing on a background page.
void cbrBtnTaskdisplay_Click(dsrVisioConnect& connect);

/// True when details are shown: on the last selected shape of exactly that master, else on the page. A cell that can't
/// be read counts as hidden.
bool getCurrentDisplayState(const DisplayTarget& target, std::string_view masterName, std::string_view cell);

/// Hides what is shown or shows what is hidden, depending on the current state: the detail shapes of each Task change
/// their layer. "Page" and "Drawing" also decide for new Tasks of these pages.
void applyTaskDisplay(const dsrVisioConnect& connect, const DisplayTarget& target, std::string_view scope);

}  // namespace quorvel::addin
