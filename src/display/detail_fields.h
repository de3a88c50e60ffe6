// The table of what can be shown around a Task: its details by position, with the names that cells and shapes bear.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "base/maybe.h"

namespace quorvel::addin {

/// One detail that a Task may show.
struct DetailField {
  std::string_view row;         ///< behind "Prop.": the cell whose text is shown
  std::string_view tag;         ///< what stands in Data2 of the shapes that show it; shared by the five rows of a list
  std::string_view switchCell;  ///< shows the detail while it is 1
  std::string_view icon;        ///< file among the installed icons; lower fields only
  std::string_view linkedIcon;  ///< the same for a line with hyperlinks
};

namespace icons {
inline constexpr std::string_view guideline = "GuideLines.gif", guidelineLinked = "Guidelineslink.gif";
inline constexpr std::string_view resource = "Resources.gif", resourceLinked = "Resourceslink.gif";
inline constexpr std::string_view role = "Supporting Role.gif", roleLinked = "Supporting Rolelink.gif";
}  // namespace icons

/// Positions count from 1, so that the first entry is empty. 1 to 14 are the lower fields, in the order in which they
/// hang below the Task; 1 to 10 of these are the rows of the two lists.
// clang-format off
inline constexpr std::array<DetailField, 18> detailFields{{
    {},
    {"controls1",         "controls",                "User.controls",                icons::guideline, icons::guidelineLinked},
    {"controls2",         "controls",                "User.controls",                icons::guideline, icons::guidelineLinked},
    {"controls3",         "controls",                "User.controls",                icons::guideline, icons::guidelineLinked},
    {"controls4",         "controls",                "User.controls",                icons::guideline, icons::guidelineLinked},
    {"controls5",         "controls",                "User.controls",                icons::guideline, icons::guidelineLinked},
    {"Resources1",        "Resources",               "User.Resources",               icons::resource,  icons::resourceLinked},
    {"Resources2",        "Resources",               "User.Resources",               icons::resource,  icons::resourceLinked},
    {"Resources3",        "Resources",               "User.Resources",               icons::resource,  icons::resourceLinked},
    {"Resources4",        "Resources",               "User.Resources",               icons::resource,  icons::resourceLinked},
    {"Resources5",        "Resources",               "User.Resources",               icons::resource,  icons::resourceLinked},
    {"SupportingRole_1",  "SupportingRole_1",        "User.Supporting_Role1",        icons::role,      icons::roleLinked},
    {"SupportingRole_2",  "SupportingRole_2",        "User.Supporting_Role2",        icons::role,      icons::roleLinked},
    {"SupportingRole_3",  "SupportingRole_3",        "User.Supporting_Role3",        icons::role,      icons::roleLinked},
    {"SupportingRole_4",  "SupportingRole_4",        "User.Supporting_Role4",        icons::role,      icons::roleLinked},
    {"Frequency_Partial", "Frequency_Of_Occurrence", "User.Frequency_Of_Occurrence", {},               {}},
    {"Process_Time_Str",  "Task_Completion_Time",    "User.Task_Completion_Time",    {},               {}},
    {"Responsible_Role",  "Responsible_Role",        "User.Responsible_Role",        {},               {}},
}};
// clang-format on

inline constexpr int lastListRow = 10, lastLowerField = 14, responsibleRole = 17, rowsOfOneList = 5;
/// Data2 of the line from which the lower fields hang.
inline constexpr std::string_view verticalTag = "Vertical";

/// The position of the first lower field with this tag, 1 to 14; nothing for any other text.
constexpr Maybe<int> firstPositionOf(std::string_view tag) {
  for (int position = 1; position <= lastLowerField; ++position) {
    if (detailFields[static_cast<std::size_t>(position)].tag == tag) return position;
  }
  return {};
}
/// The position of the row with this name, 1 to 17; nothing for any other text.
constexpr Maybe<int> positionOfRow(std::string_view row) {
  for (int position = 1; position < static_cast<int>(detailFields.size()); ++position) {
    if (detailFields[static_cast<std::size_t>(position)].row == row) return position;
  }
  return {};
}
inline const DetailField& detailField(int position) { return detailFields[static_cast<std::size_t>(position)]; }

/// The cell that keeps a row's hyperlinks as text while its line is not drawn.
inline std::string cellOfKeptHyperlinks(int position) {
  const bool isListRow = position <= lastListRow;
  std::string cell = isListRow ? "Prop." : "User.";
  cell += detailField(position).row;
  cell += isListRow ? ".Label" : "_Hyper";
  return cell;
}

}  // namespace quorvel::addin
