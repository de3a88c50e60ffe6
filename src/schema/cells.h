// The named rows of a process map: of documents, pages, Tasks, Task Links and Process Connectors. They are in every
// saved map: a changed letter breaks existing files.
#pragma once

#include <array>

#include "schema/named_row.h"

namespace quorvel::schema {

namespace documentCells {
/// The lists that shapes choose from.
inline constexpr NamedRow roleNames = "User.RoleNames", frequencies = "User.FreqSuggestions",
                          timeUnits = "User.Time_Unit", timeUnitAbbreviations = "User.Time_Unit_Disply";
/// One abbreviation for each frequency, and the unit of new shapes.
inline constexpr std::string_view frequencyAbbreviations = "User.FreqSuggestions.Prompt",
                                  defaultTimeUnit = "User.Time_Unit.Prompt";
/// Formulas that rules write need the separator of arguments.
inline constexpr NamedRow listSeparator = "User.lstSpr";
inline constexpr NamedRow isInitialized = "User.Based_On_ZNB", disableDefine = "User.DisableDefine",
                          addinIsFound = "User.AddinIsFound", isSaved = "User.DocumentSaved",
                          version = "User.Quorvel_dll_Version";
/// Written by the template and by the stencil, and only shown.
inline constexpr NamedRow templateVersion = "User.Quorvel_Template_Version",
                          stencilVersion = "User.Quorvel_Stencil_Version";
/// The rows of report definitions have this name and a number from 1 on; each value is XML.
inline constexpr NamedRow reportRows = "User.visPropRpt";
}  // namespace documentCells

/// The switches of a page are in display_switches.h.
namespace pageCells {
inline constexpr NamedRow taskIdLetters = "User.Task_Id_Letters", nextTaskId = "User.Next_Task_Id",
                          name = "User.PAGE_NAME";
}  // namespace pageCells

/// Of every shape of a map.
namespace shapeCells {
/// Without it a dropped shape is new to the map; with it, it is a copy.
inline constexpr NamedRow alreadyAdded = "User.AlreadyAdded";
}  // namespace shapeCells

/// Of what may link to a Task and shows its ID: Process Connectors and sub-task boxes.
namespace linkedCells {
/// The ID that the link had when it was last followed. Another ID that is shown was typed by the user.
inline constexpr NamedRow storedTaskId = "User.StoredTaskID";
}  // namespace linkedCells

/// Of Tasks and Task Links.
namespace timeCells {
/// The duration with its unit, and the unit in which it is shown and typed.
inline constexpr NamedRow value = "User.TimeValue", unit = "Prop.Time_Units";
}  // namespace timeCells

/// The rows of a Task's details are in details.h.
namespace taskCells {
inline constexpr NamedRow id = "Prop.Task_ID", description = "Prop.Task_Description", notes = "Prop.Notes",
                          linked = "Prop.Linked", guidelines = "Prop.Guidelines", resources = "Prop.Resources",
                          completionTime = "Prop.Task_Completion_Time", frequency = "Prop.Frequency_Of_Occurrence";
/// What the lower box shows of the last two: the frequency's abbreviation, and the time or nothing.
inline constexpr NamedRow frequencyAbbreviation = "Prop.Frequency_Partial", shownTime = "Prop.Process_Time_Str";
/// The responsible role, then the supporting ones; each row has the list of roles in its Format cell.
inline constexpr std::array<NamedRow, 5> roles{"Prop.Responsible_Role", "Prop.SupportingRole_1",
                                               "Prop.SupportingRole_2", "Prop.SupportingRole_3",
                                               "Prop.SupportingRole_4"};
inline constexpr NamedRow responsibleRole = roles.front();
/// Each is 1 while the Task has the mark: of its own hyperlinks, of its notes, of its sub-task box's hyperlink.
inline constexpr NamedRow hyperlinkMark = "User.flag_pic", notesMark = "User.flag_pic_2",
                          subTaskMark = "User.flag_pic_3";
}  // namespace taskCells

namespace subTaskBoxCells {
inline constexpr NamedRow textWidth = "User.TxtWidth";
}  // namespace subTaskBoxCells

/// Of the mark for a Task's notes: what other programs show as its title, and a row that keeps their shape data windows
/// from offering an empty one.
namespace notesMarkCells {
inline constexpr NamedRow title = "User.visEquivTitle", hiddenRow = "Prop.Row1";
}  // namespace notesMarkCells

namespace taskLinkCells {
inline constexpr NamedRow description = "Prop.Task_Link", time = "Prop.Time_Between_Tasks", timeText = "Prop.Time_Str";
/// The description as it is quoted in the link's text.
inline constexpr NamedRow quotedDescription = "User.Single_TaskLink";
}  // namespace taskLinkCells

namespace connectorCells {
inline constexpr NamedRow shownId = "Prop.Connecting_TaskID";
/// Shown while there is no target. It is not reserved: a page may have a Task of this ID.
inline constexpr std::string_view noTarget = "Z99";
/// Stands before the ID in the shape's text and in its name.
inline constexpr std::string_view textStart = "Connector.";
}  // namespace connectorCells

}  // namespace quorvel::schema
