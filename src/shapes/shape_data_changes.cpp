#include "shapes/shape_data_changes.h"

#include <algorithm>
#include <array>

#include "addin/host_queries.h"
#include "base/basic_text.h"
#include "base/text.h"
#include "display/detail_fields.h"
#include "display/detail_shapes.h"
#include "display/task_details.h"
#include "links/task_link_description.h"
#include "shapes/list_change.h"
#include "shapes/rows.h"
#include "shapes/shape_classes.h"
#include "vocab/task_times.h"

namespace quorvel::addin {
namespace {

void taskWidthChanged(const dsrVisioConnect& connect, const Shape& task) {
  // The members of a Task answer its master too.
  if (!IsTask(task) || !isTopLevel(task) || !(task.CellExists("User.AlreadyAdded", 1) == true)) return;
  redrawTaskLowerFields(connect, task, "controls", snapshotOfListRows(task));
}

void linkDescriptionChanged(const dsrVisioConnect& connect, const Shape& link) {
  if (IsTaskLink(link)) GetAddedTaskLinkDescription2(connect, link);
}

void responsibleRoleChanged(const dsrVisioConnect& connect, const Shape& task) {
  if (IsTask(task)) RedrawTaskUpperExtraFields(connect, task, "Responsible_Role");
}

// The labels show cells that follow from what changed; those come first.
void timeOfTaskChanged(const dsrVisioConnect& connect, const Shape& task) {
  if (!IsTask(task)) return;
  completionTimeChanged(task);
  RedrawTaskUpperExtraFields(connect, task, "Task_Completion_Time");
}

void frequencyOfTaskChanged(const dsrVisioConnect& connect, const Shape& task) {
  if (!IsTask(task)) return;
  frequencyChanged(connect, task);
  RedrawTaskUpperExtraFields(connect, task, "Frequency_Of_Occurrence");
}

/// Another role is somebody else: the hyperlinks of the one before go.
void supportingRoleChanged(const dsrVisioConnect& connect, const Shape& task, const std::string& row) {
  task.Cells("User." + row + "_Hyper").FormulaForce(quoted(""));
  for (const Shape& member : task.Shapes().all()) {
    if (member.Data3() == row) member.DeleteSection(visio::sectionHyperlink);
  }
  redrawTaskLowerFields(connect, task, "controls", snapshotOfListRows(task));
}

template <int n>
void supportingRoleChanged(const dsrVisioConnect& connect, const Shape& task) {
  if (IsTask(task)) supportingRoleChanged(connect, task, "SupportingRole_" + std::to_string(n));
}

void guidelinesChanged(const dsrVisioConnect& connect, const Shape& task) {
  if (IsTask(task)) spreadGuidelines(connect, task);
}

void resourcesChanged(const dsrVisioConnect& connect, const Shape& task) {
  if (IsTask(task)) spreadResources(connect, task);
}

/// A line of a Task's details got a hyperlink: its icon shows that, once.
void lineAddressChanged(const dsrVisioConnect& connect, const Shape& line) {
  const Maybe<int> position = positionOfRow(line.Data3().or_({}));
  if (!position || *position > lastLowerField || !(line.Data2() == detailField(*position).tag)) return;
  const Shape task = line.Parent();
  if (!IsTask(task) || !(line.Hyperlinks().Count() > 0)) return;
  const std::string mark = std::string(marks::detailHyperlink) + std::string(detailField(*position).row);
  for (const Shape& member : task.Shapes().all()) {
    if (member.Data3() == mark) return;
  }
  drawLineIcon(connect, task, line, detailLayerOf(task), *position, true);
}

struct Consequence {
  std::string_view cell;
  void (*follow)(const dsrVisioConnect& connect, const Shape& shape);
};

constexpr std::array consequences{
    Consequence{"Width", taskWidthChanged},
    Consequence{"Prop.Task_Link", linkDescriptionChanged},
    Consequence{"Prop.Responsible_Role", responsibleRoleChanged},
    Consequence{"Prop.Task_Completion_Time", timeOfTaskChanged},
    Consequence{"Prop.Frequency_Of_Occurrence", frequencyOfTaskChanged},
    Consequence{"Prop.SupportingRole_1", supportingRoleChanged<1>},
    Consequence{"Prop.SupportingRole_2", supportingRoleChanged<2>},
    Consequence{"Prop.SupportingRole_3", supportingRoleChanged<3>},
    Consequence{"Prop.SupportingRole_4", supportingRoleChanged<4>},
    Consequence{"Prop.Guidelines", guidelinesChanged},
    Consequence{"Prop.Resources", resourcesChanged},
};

constexpr int columnHyperlinkAddress = 1;

using Follow = decltype(Consequence::follow);

/// Null for a cell that nothing follows from.
Follow followOf(const Cell& cell) {
  const std::string name = cell.Name().or_({});
  if (name.starts_with("Hyperlink.")) {
    return cell.Column() == columnHyperlinkAddress ? lineAddressChanged : nullptr;
  }
  const auto found = std::ranges::find_if(consequences, [&](const Consequence& consequence) {
    return consequence.cell.size() == name.size() && equalIgnoringCase(consequence.cell, name);
  });
  return found == consequences.end() ? nullptr : found->follow;
}

}  // namespace

void gvsoApp_CellChanged(dsrVisioConnect& connect, const Cell& cell) {
  // The cell is looked at first: nearly all changes end here.
  const Follow follow = followOf(cell);
  if (follow && isInitialized(connect) && isQuorvelDocument(connect)) follow(connect, cell.Shape());
}

}  // namespace quorvel::addin
