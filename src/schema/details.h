// The table of what can be shown around a Task: its details by position, with the names that cells and shapes have.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include "base/maybe.h"
#include "schema/cells.h"
#include "schema/display_switches.h"

namespace quorvel::schema {

namespace tags {
inline constexpr std::string_view guidelines = "controls", resources = "Resources",
                                  frequency = "Frequency_Of_Occurrence", completionTime = "Task_Completion_Time",
                                  responsibleRole = "Responsible_Role";
}

namespace icons {
inline constexpr std::string_view guideline = "GuideLines.gif", guidelineLinked = "Guidelineslink.gif";
inline constexpr std::string_view resource = "Resources.gif", resourceLinked = "Resourceslink.gif";
inline constexpr std::string_view role = "Supporting Role.gif", roleLinked = "Supporting Rolelink.gif";
}  // namespace icons

/// Where the roles keep their hyperlinks as text while no line is drawn, in the order in which a dropped Task gets the
/// rows; list rows keep them in their label.
inline constexpr std::array<NamedRow, 5> keptHyperlinkRows{"User.SupportingRole_1_Hyper", "User.SupportingRole_2_Hyper",
                                                           "User.SupportingRole_3_Hyper", "User.SupportingRole_4_Hyper",
                                                           "User.Responsible_Role_Hyper"};

/// One detail that a Task may show.
struct Detail {
  NamedRow row;                     ///< its text is shown
  std::string_view tag;             ///< Data2 of the shapes that show it; shared by the rows of a list
  NamedRow switchCell;              ///< shows the detail while it is 1
  std::string_view keptHyperlinks;  ///< the cell that keeps the hyperlinks; empty: it has none
  std::string_view icon;            ///< file among the installed icons; lower details only
  std::string_view linkedIcon;      ///< the same for a line with hyperlinks
};

/// The rows of the two lists, then the supporting roles: these are the lower details, in their order below the
/// Task. The rest is drawn on the Task.
// clang-format off
inline constexpr std::array details{
    Detail{"Prop.controls1",         tags::guidelines,      switches::guidelines,         "Prop.controls1.Label",        icons::guideline, icons::guidelineLinked},
    Detail{"Prop.controls2",         tags::guidelines,      switches::guidelines,         "Prop.controls2.Label",        icons::guideline, icons::guidelineLinked},
    Detail{"Prop.controls3",         tags::guidelines,      switches::guidelines,         "Prop.controls3.Label",        icons::guideline, icons::guidelineLinked},
    Detail{"Prop.controls4",         tags::guidelines,      switches::guidelines,         "Prop.controls4.Label",        icons::guideline, icons::guidelineLinked},
    Detail{"Prop.controls5",         tags::guidelines,      switches::guidelines,         "Prop.controls5.Label",        icons::guideline, icons::guidelineLinked},
    Detail{"Prop.Resources1",        tags::resources,       switches::resources,          "Prop.Resources1.Label",       icons::resource,  icons::resourceLinked},
    Detail{"Prop.Resources2",        tags::resources,       switches::resources,          "Prop.Resources2.Label",       icons::resource,  icons::resourceLinked},
    Detail{"Prop.Resources3",        tags::resources,       switches::resources,          "Prop.Resources3.Label",       icons::resource,  icons::resourceLinked},
    Detail{"Prop.Resources4",        tags::resources,       switches::resources,          "Prop.Resources4.Label",       icons::resource,  icons::resourceLinked},
    Detail{"Prop.Resources5",        tags::resources,       switches::resources,          "Prop.Resources5.Label",       icons::resource,  icons::resourceLinked},
    Detail{"Prop.SupportingRole_1",  "SupportingRole_1",    switches::supportingRoles[0], keptHyperlinkRows[0], icons::role,      icons::roleLinked},
    Detail{"Prop.SupportingRole_2",  "SupportingRole_2",    switches::supportingRoles[1], keptHyperlinkRows[1], icons::role,      icons::roleLinked},
    Detail{"Prop.SupportingRole_3",  "SupportingRole_3",    switches::supportingRoles[2], keptHyperlinkRows[2], icons::role,      icons::roleLinked},
    Detail{"Prop.SupportingRole_4",  "SupportingRole_4",    switches::supportingRoles[3], keptHyperlinkRows[3], icons::role,      icons::roleLinked},
    Detail{"Prop.Frequency_Partial", tags::frequency,       switches::frequency,          "",                            {},               {}},
    Detail{"Prop.Process_Time_Str",  tags::completionTime,  switches::completionTime,     "",                            {},               {}},
    Detail{"Prop.Responsible_Role",  tags::responsibleRole, switches::responsibleRole,    keptHyperlinkRows[4], {},               {}},
};
// clang-format on

/// A list of a Task and the details that show its entries.
struct DetailList {
  NamedRow cell;
  std::string_view tag;
  bool keepsPrompt;  ///< a row's prompt gets the text that the row had before
};
inline constexpr std::array<DetailList, 2> detailLists{
    {{taskCells::guidelines, tags::guidelines, false}, {taskCells::resources, tags::resources, true}}};

// Positions are 1-based.
inline constexpr int lastDetail = static_cast<int>(details.size());
constexpr const Detail& detailAt(int position) { return details[static_cast<std::size_t>(position - 1)]; }

constexpr int rowsWithTag(std::string_view tag) {
  return static_cast<int>(std::ranges::count(details, tag, &Detail::tag));
}
inline constexpr int lastListRow = rowsWithTag(tags::guidelines) + rowsWithTag(tags::resources);
inline constexpr int lastLowerDetail =
    static_cast<int>(std::ranges::count_if(details, [](const Detail& detail) { return !detail.icon.empty(); }));
inline constexpr int responsibleRole = lastDetail;

/// The position of the first detail with this tag, up to `lastLowerDetail`; nothing for any other text.
constexpr Maybe<int> firstPositionOf(std::string_view tag) {
  for (int position = 1; position <= lastLowerDetail; ++position) {
    if (detailAt(position).tag == tag) return position;
  }
  return {};
}
/// The position of the detail whose row has this name, "controls1"; nothing for any other text.
constexpr Maybe<int> positionOfRow(std::string_view name) {
  for (int position = 1; position <= lastDetail; ++position) {
    if (detailAt(position).row.name() == name) return position;
  }
  return {};
}

}  // namespace quorvel::schema
