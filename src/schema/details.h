// The details that can be shown around a Task: one row of a table for each kind, and one for each line of text.
//
// A new detail is a new row here, and its cell among those of the Task master.
#pragma once

#include <array>
#include <string_view>

#include "base/maybe.h"
#include "schema/named_row.h"

namespace quorvel::schema {

/// A kind of detail is shown or hidden as a whole.
struct DetailKind {
  std::string_view tag;         ///< Data2 of the shapes that show it
  NamedRow displaySwitch;       ///< on a Task, and on a page as the default of its Tasks: shown while it is 1
  std::string_view caption;     ///< in the dialog of display options
  std::string_view icon;        ///< file among the installed icons; empty for a detail at the Task itself
  std::string_view linkedIcon;  ///< the same for a line with hyperlinks
};

namespace detailKinds {
inline constexpr std::string_view roleIcon = "Supporting Role.gif", linkedRoleIcon = "Supporting Rolelink.gif";
// clang-format off
inline constexpr DetailKind
    responsibleRole{"Responsible_Role", "User.Responsible_Role", "Responsible role", {}, {}},
    supportingRole1{"SupportingRole_1", "User.Supporting_Role1", "Supporting Role 1", roleIcon, linkedRoleIcon},
    supportingRole2{"SupportingRole_2", "User.Supporting_Role2", "Supporting Role 2", roleIcon, linkedRoleIcon},
    supportingRole3{"SupportingRole_3", "User.Supporting_Role3", "Supporting Role 3", roleIcon, linkedRoleIcon},
    supportingRole4{"SupportingRole_4", "User.Supporting_Role4", "Supporting Role 4", roleIcon, linkedRoleIcon},
    guidelines{"controls", "User.controls", "Guidelines", "GuideLines.gif", "Guidelineslink.gif"},
    resources{"Resources", "User.Resources", "Resources", "Resources.gif", "Resourceslink.gif"},
    frequency{"Frequency_Of_Occurrence", "User.Frequency_Of_Occurrence", "Frequency of Occurrence", {}, {}},
    completionTime{"Task_Completion_Time", "User.Task_Completion_Time", "Task completion time", {}, {}};
// clang-format on

/// In the order in which the dialog of display options lists them.
inline constexpr std::array<const DetailKind*, 9> inDialog{&responsibleRole, &supportingRole1, &supportingRole2,
                                                           &supportingRole3, &supportingRole4, &guidelines,
                                                           &resources,       &frequency,       &completionTime};
/// In the order in which a new page gets its switches. Pages of older maps lack the last two, which are added apart.
inline constexpr std::array<const DetailKind*, 7> onNewPage{
    &responsibleRole, &guidelines, &resources, &supportingRole1, &supportingRole2, &completionTime, &frequency};
inline constexpr std::array<const DetailKind*, 2> onEveryPage{&supportingRole3, &supportingRole4};
/// In the order in which a dropped Task gets its switches; its switch for all details comes behind the first.
inline constexpr std::array<const DetailKind*, 9> onTask{&responsibleRole, &guidelines,      &resources,
                                                         &completionTime,  &frequency,       &supportingRole1,
                                                         &supportingRole2, &supportingRole3, &supportingRole4};
}  // namespace detailKinds

/// One line of text around a Task.
struct Detail {
  NamedRow row;                          ///< the value cell holds the text that is shown
  const DetailKind* kind;                ///<
  std::string_view keptHyperlinks = {};  ///< the cell that keeps its hyperlinks as text while the line is not drawn
};

/// The lower fields come first, in the order in which they are drawn below the Task, and the rows of the two lists
/// first among them.
// clang-format off
inline constexpr std::array details{
    Detail{"Prop.controls1",         &detailKinds::guidelines,      "Prop.controls1.Label"},
    Detail{"Prop.controls2",         &detailKinds::guidelines,      "Prop.controls2.Label"},
    Detail{"Prop.controls3",         &detailKinds::guidelines,      "Prop.controls3.Label"},
    Detail{"Prop.controls4",         &detailKinds::guidelines,      "Prop.controls4.Label"},
    Detail{"Prop.controls5",         &detailKinds::guidelines,      "Prop.controls5.Label"},
    Detail{"Prop.Resources1",        &detailKinds::resources,       "Prop.Resources1.Label"},
    Detail{"Prop.Resources2",        &detailKinds::resources,       "Prop.Resources2.Label"},
    Detail{"Prop.Resources3",        &detailKinds::resources,       "Prop.Resources3.Label"},
    Detail{"Prop.Resources4",        &detailKinds::resources,       "Prop.Resources4.Label"},
    Detail{"Prop.Resources5",        &detailKinds::resources,       "Prop.Resources5.Label"},
    Detail{"Prop.SupportingRole_1",  &detailKinds::supportingRole1, "User.SupportingRole_1_Hyper"},
    Detail{"Prop.SupportingRole_2",  &detailKinds::supportingRole2, "User.SupportingRole_2_Hyper"},
    Detail{"Prop.SupportingRole_3",  &detailKinds::supportingRole3, "User.SupportingRole_3_Hyper"},
    Detail{"Prop.SupportingRole_4",  &detailKinds::supportingRole4, "User.SupportingRole_4_Hyper"},
    Detail{"Prop.Frequency_Partial", &detailKinds::frequency},
    Detail{"Prop.Process_Time_Str",  &detailKinds::completionTime},
    Detail{"Prop.Responsible_Role",  &detailKinds::responsibleRole, "User.Responsible_Role_Hyper"},
};
// clang-format on

/// The five rows of a Task that hold a role; each has the list of roles in its Format cell.
inline constexpr std::array<NamedRow, 5> roleRows{"Prop.Responsible_Role", "Prop.SupportingRole_1",
                                                  "Prop.SupportingRole_2", "Prop.SupportingRole_3",
                                                  "Prop.SupportingRole_4"};

}  // namespace quorvel::schema
