// The toolbar of the add-in: its buttons, its place between two sessions, and what a click on each button runs.
#pragma once

#include <string>

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Makes the toolbar when there is none, at the place that the profile holds.
void CreateCommandBar(dsrVisioConnect& connect, const std::string& name);
/// A button at the end of the bar, with the picture as its face. A missing picture leaves it without.
CommandBarButton AddButton(const dsrVisioConnect& connect, const CommandBar& bar, const char* tag, const char* caption,
                           const char* tooltip, const std::string& picture);

/// Writes the place to the profile and deletes the toolbar.
void removeToolbar(dsrVisioConnect& connect);

/// Runs the command of the button with this tag; nothing for another one.
void runButton(dsrVisioConnect& connect, const CommandBarButton& button);

/// The button is down while the first selected Task Link, or without one the page, shows times.
void btnStatus(const Selection& selection, const Page& page, const CommandBarButton& button);
/// Shows in the toolbar what the selection of the window displays.
void showDisplayStates(const dsrVisioConnect& connect, const Window& window);

}  // namespace quorvel::addin
