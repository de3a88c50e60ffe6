// The named rows of a process map's sheets. They are in every saved map: a changed letter breaks existing files.
#pragma once

#include "schema/named_row.h"

namespace quorvel::schema {

namespace documentCells {
inline constexpr NamedRow version = "User.Quorvel_dll_Version", listSeparator = "User.lstSpr",
                          initialized = "User.Based_On_ZNB", disableDefine = "User.DisableDefine",
                          addinIsFound = "User.AddinIsFound", documentSaved = "User.DocumentSaved";
/// The lists that shapes choose from. Abbreviations of frequencies are in the prompt of their row, and so is the
/// default unit of the units' row.
inline constexpr NamedRow roleNames = "User.RoleNames", frequencies = "User.FreqSuggestions",
                          timeUnits = "User.Time_Unit", timeUnitAbbreviations = "User.Time_Unit_Disply";
/// Written by the template and the stencil, only read here.
inline constexpr NamedRow templateVersion = "User.Quorvel_Template_Version",
                          stencilVersion = "User.Quorvel_Stencil_Version";
}  // namespace documentCells

namespace pageCells {
inline constexpr NamedRow nextTaskId = "User.Next_Task_Id", taskIdLetters = "User.Task_Id_Letters",
                          pageName = "User.PAGE_NAME";
}  // namespace pageCells

/// Switches that a page has as the default of its shapes, and each Task or Task Link for itself. The switches of single
/// details are in details.h.
namespace displayCells {
inline constexpr NamedRow taskVisible = "User.Task_Visible", linkTimeVisible = "User.TaskLink_Visible",
                          linkTextVisible = "User.TaskLink_txt_Visible",
                          onlyTimesAboveZero = "User.TimegreaterThanzero";
}  // namespace displayCells

/// Rows that Tasks, Task Links and Process Connectors have alike.
namespace shapeCells {
inline constexpr NamedRow alreadyAdded = "User.AlreadyAdded", timeValue = "User.TimeValue",
                          timeUnits = "Prop.Time_Units", storedTaskId = "User.StoredTaskID";
}  // namespace shapeCells

namespace taskCells {
inline constexpr NamedRow id = "Prop.Task_ID", description = "Prop.Task_Description", notes = "Prop.Notes",
                          linked = "Prop.Linked", guidelines = "Prop.Guidelines", resources = "Prop.Resources",
                          completionTime = "Prop.Task_Completion_Time", processTimeText = "Prop.Process_Time_Str",
                          frequency = "Prop.Frequency_Of_Occurrence", frequencyText = "Prop.Frequency_Partial";
/// 1 while the picture exists: the Task's hyperlink, its notes, the hyperlink of its sub-task box.
inline constexpr NamedRow hasHyperlinkMark = "User.flag_pic", hasNotesMark = "User.flag_pic_2",
                          hasSubTaskMark = "User.flag_pic_3";
/// Of the sub-task box.
inline constexpr NamedRow textWidth = "User.TxtWidth";
}  // namespace taskCells

namespace taskLinkCells {
inline constexpr NamedRow description = "Prop.Task_Link", time = "Prop.Time_Between_Tasks", timeText = "Prop.Time_Str",
                          quotedDescription = "User.Single_TaskLink";
}  // namespace taskLinkCells

namespace connectorCells {
inline constexpr NamedRow shownId = "Prop.Connecting_TaskID";
/// What a connector shows that leads nowhere.
inline constexpr std::string_view noTarget = "Z99";
}  // namespace connectorCells

}  // namespace quorvel::schema
