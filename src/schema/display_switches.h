// The switches that decide what Tasks and Task Links show. Each is a User row of the shape; a page has the same rows
// for its new shapes.
#pragma once

#include <array>
#include <span>

#include "schema/named_row.h"

namespace quorvel::schema {

namespace switches {
inline constexpr NamedRow taskDetails = "User.Task_Visible";
inline constexpr NamedRow responsibleRole = "User.Responsible_Role", guidelines = "User.controls",
                          resources = "User.Resources", frequency = "User.Frequency_Of_Occurrence",
                          completionTime = "User.Task_Completion_Time";
inline constexpr std::array<NamedRow, 4> supportingRoles{"User.Supporting_Role1", "User.Supporting_Role2",
                                                         "User.Supporting_Role3", "User.Supporting_Role4"};
inline constexpr NamedRow linkTime = "User.TaskLink_Visible", linkDescription = "User.TaskLink_txt_Visible",
                          linkTimeAboveZero = "User.TimegreaterThanzero";
}  // namespace switches

/// When a page gets a switch with its first value.
enum class PagePreparation {
  Once,     ///< when the page is first initialized
  EachTime  ///< each time it is initialized
};

struct TaskSwitch {
  NamedRow cell;
  const char* box;      ///< name of its box in the dialog; empty for the first one, which has a dialog of its own
  const char* caption;  ///< of the box
  int onTask;           ///< its place among the switches that a dropped Task gets, from 1
  int onPage;           ///< its place among those that a new page gets at the same time, from 1
  PagePreparation preparation;
};

/// Of Tasks, in the order of their dialog. All are on at first.
// clang-format off
inline constexpr std::array<TaskSwitch, 10> taskSwitches{{
    {switches::taskDetails,        "",                   "",                         2, 1, PagePreparation::Once},
    {switches::responsibleRole,    "chkResponsibleRole", "Responsible role",         1, 2, PagePreparation::Once},
    {switches::supportingRoles[0], "chkSupportingRole1", "Supporting Role 1",        7, 5, PagePreparation::Once},
    {switches::supportingRoles[1], "chkSupportingRole2", "Supporting Role 2",        8, 6, PagePreparation::Once},
    {switches::supportingRoles[2], "chkSupportingRole3", "Supporting Role 3",        9, 1, PagePreparation::EachTime},
    {switches::supportingRoles[3], "chkSupportingRole4", "Supporting Role 4",       10, 2, PagePreparation::EachTime},
    {switches::guidelines,         "chkGuidelines",      "Guidelines",               3, 3, PagePreparation::Once},
    {switches::resources,          "chkResources",       "Resources",                4, 4, PagePreparation::Once},
    {switches::frequency,          "chkFrequency",       "Frequency of Occurrence",  6, 8, PagePreparation::Once},
    {switches::completionTime,     "chkCompletionTime",  "Task completion time",     5, 7, PagePreparation::Once},
}};
// clang-format on
/// Those that have a box in the dialog.
constexpr std::span<const TaskSwitch> boxedTaskSwitches() { return std::span(taskSwitches).subspan(1); }

struct LinkSwitch {
  NamedRow cell;
  const char* box;
  const char* caption;
  int copied;     ///< its place in the order in which a dropped Task Link takes them from its page, from 1
  int pageValue;  ///< the value that a page gets
  PagePreparation preparation;
};
/// Of Task Links, in the order of their dialog.
// clang-format off
inline constexpr std::array<LinkSwitch, 3> linkSwitches{{
    {switches::linkTime,          "chkTimeBetweenTasks", "Time Between Tasks",                   2, 0, PagePreparation::Once},
    {switches::linkDescription,   "chkDescription",      "Task Link Description ",               1, 1, PagePreparation::EachTime},
    {switches::linkTimeAboveZero, "chkGreaterThanZero",  "Only display times greater than zero", 3, 0, PagePreparation::EachTime},
}};
// clang-format on

}  // namespace quorvel::schema
