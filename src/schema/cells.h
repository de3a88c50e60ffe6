// The named rows that a drawing is read by as a process map. They are in every saved map: a changed letter breaks
// existing files.
#pragma once

#include <array>

#include "schema/named_row.h"

namespace quorvel::schema {

/// The lists that shapes choose from. Abbreviations of frequencies are in the prompt of their row.
namespace documentCells {
inline constexpr NamedRow roleNames = "User.RoleNames", frequencies = "User.FreqSuggestions",
                          timeUnits = "User.Time_Unit", timeUnitAbbreviations = "User.Time_Unit_Disply";
}  // namespace documentCells

namespace pageCells {
inline constexpr NamedRow taskIdLetters = "User.Task_Id_Letters";
}  // namespace pageCells

namespace taskCells {
inline constexpr NamedRow id = "Prop.Task_ID", description = "Prop.Task_Description", notes = "Prop.Notes",
                          linked = "Prop.Linked", guidelines = "Prop.Guidelines", resources = "Prop.Resources",
                          completionTime = "Prop.Task_Completion_Time", frequency = "Prop.Frequency_Of_Occurrence";
/// The responsible role, then the supporting ones; each row has the list of roles in its Format cell.
inline constexpr std::array<NamedRow, 5> roles{"Prop.Responsible_Role", "Prop.SupportingRole_1",
                                               "Prop.SupportingRole_2", "Prop.SupportingRole_3",
                                               "Prop.SupportingRole_4"};
}  // namespace taskCells

namespace taskLinkCells {
inline constexpr NamedRow description = "Prop.Task_Link", time = "Prop.Time_Between_Tasks";
}  // namespace taskLinkCells

namespace connectorCells {
inline constexpr NamedRow shownId = "Prop.Connecting_TaskID";
}  // namespace connectorCells

}  // namespace quorvel::schema
