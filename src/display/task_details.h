// Draws what a Task shows around itself: the role across its top, frequency and time in its lower band, and the column
// of guidelines, resources and supporting roles below. All of it is drawn from the Task's cells and can be redrawn at
// any time; a step that fails leaves out only its own part.
#pragma once

#include <string_view>

#include "connect/dsr_visio_connect.h"
#include "display/list_rows.h"

namespace quorvel::addin {

/// Deletes and draws an upper field: "Responsible_Role", "Frequency_Of_Occurrence" or "Task_Completion_Time".
void RedrawTaskUpperExtraFields(const Shape& task, std::string_view field);

/// Deletes and draws the lower fields from `field` on: "controls", "Resources" or "SupportingRole_1" to
/// "SupportingRole_4". `before` is the snapshot of the list rows before they were rewritten. Clears
/// the selection of the window that shows the Task's page.
void redrawTaskLowerFields(const dsrVisioConnect& connect, const Shape& task, std::string_view field, ListRows before);

/// Deletes and draws everything.
void redrawAllTaskFields(const dsrVisioConnect& connect, const Shape& task);

/// Deletes the sub-shapes of `field` and of every lower field after it; their hyperlinks go into `rows`. The vertical
/// line beside them stays.
void deleteTaskLowerFields(const Shape& task, std::string_view field, ListRows& rows);

}  // namespace quorvel::addin
