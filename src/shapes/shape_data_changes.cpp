#include "shapes/shape_data_changes.h"

#include <algorithm>
#include <array>

#include "addin/host_queries.h"
#include "base/basic_text.h"
#include "base/text.h"
#include "display/detail_fields.h"
#include "display/detail_shapes.h"
#include "display/task_details.h"
#include "document/logo_bounds.h"
#include "links/task_link_description.h"
#include "shapes/list_change.h"
#include "shapes/rows.h"
#include "shapes/shape_classes.h"
#include "vocab/task_times.h"

namespace quorvel::addin {
namespace {

using Test = bool (*)(const Shape& shape);

/// A Task on its own, one that was dropped: the members of a Task answer its master too.
bool isDroppedTask(const Shape& shape) {
  return IsTask(shape) && isTopLevel(shape) && shape.CellExists("User.AlreadyAdded", 1) == true;
}

bool isLogo(const Shape& shape) { return shape.Data1() == marks::logo; }

bool isMemberOfTask(const Shape& shape) { return IsTask(shape.Parent()); }

void logoMovedAcross(const dsrVisioConnect&, const Shape& logo) { keepLogoInsidePageX(logo); }
void logoMovedUp(const dsrVisioConnect&, const Shape& logo) { keepLogoInsidePageY(logo); }

void taskWidthChanged(const dsrVisioConnect& connect, const Shape& task) {
  redrawTaskLowerFields(connect, task, "controls", snapshotOfListRows(task));
}

void linkDescriptionChanged(const dsrVisioConnect&, const Shape& link) { GetAddedTaskLinkDescription2(link); }

void responsibleRoleChanged(const dsrVisioConnect&, const Shape& task) {
  RedrawTaskUpperExtraFields(task, "Responsible_Role");
}

// The labels show cells that follow from what changed; those come first.
void timeOfTaskChanged(const dsrVisioConnect&, const Shape& task) {
  completionTimeChanged(task);
  RedrawTaskUpperExtraFields(task, "Task_Completion_Time");
}

void frequencyOfTaskChanged(const dsrVisioConnect&, const Shape& task) {
  frequencyChanged(task);
  RedrawTaskUpperExtraFields(task, "Frequency_Of_Occurrence");
}

/// Another role is somebody else: the hyperlinks of the one before go, unless it only has another name now.
void supportingRoleChanged(const dsrVisioConnect& connect, const Shape& task, const std::string& row) {
  const bool isRename = connect.renamedRole && connect.renamedRole == task.Cells("Prop." + row);
  if (!isRename) {
    task.Cells("User." + row + "_Hyper").FormulaForce(quoted(""));
    for (const Shape& member : task.Shapes().all()) {
      if (member.Data3() == row) member.DeleteSection(visio::sectionHyperlink);
    }
  }
  redrawTaskLowerFields(connect, task, "controls", snapshotOfListRows(task));
}

template <int n>
void supportingRoleChanged(const dsrVisioConnect& connect, const Shape& task) {
  supportingRoleChanged(connect, task, "SupportingRole_" + std::to_string(n));
}

/// A line of a Task's details got a hyperlink: its icon shows that, once.
void lineAddressChanged(const dsrVisioConnect& connect, const Shape& line) {
  const Maybe<int> position = positionOfRow(line.Data3().or_({}));
  if (!position || *position > lastLowerField || !(line.Data2() == detailField(*position).tag)) return;
  if (!(line.Hyperlinks().Count() > 0)) return;
  const Shape task = line.Parent();
  const std::string mark = std::string(marks::detailHyperlink) + std::string(detailField(*position).row);
  for (const Shape& member : task.Shapes().all()) {
    if (member.Data3() == mark) return;
  }
  drawLineIcon(connect, task, line, detailLayerOf(task), *position, true);
}

/// What follows from a change of a cell on a shape that fits.
struct Consequence {
  std::string_view cell;
  Test fits;
  void (*follow)(const dsrVisioConnect& connect, const Shape& shape);
};

constexpr std::array consequences{
    Consequence{"PinX", isLogo, logoMovedAcross},
    Consequence{"PinY", isLogo, logoMovedUp},
    Consequence{"Width", isDroppedTask, taskWidthChanged},
    Consequence{"Prop.Task_Link", IsTaskLink, linkDescriptionChanged},
    Consequence{"Prop.Responsible_Role", IsTask, responsibleRoleChanged},
    Consequence{"Prop.Task_Completion_Time", IsTask, timeOfTaskChanged},
    Consequence{"Prop.Frequency_Of_Occurrence", IsTask, frequencyOfTaskChanged},
    Consequence{"Prop.SupportingRole_1", IsTask, supportingRoleChanged<1>},
    Consequence{"Prop.SupportingRole_2", IsTask, supportingRoleChanged<2>},
    Consequence{"Prop.SupportingRole_3", IsTask, supportingRoleChanged<3>},
    Consequence{"Prop.SupportingRole_4", IsTask, supportingRoleChanged<4>},
    Consequence{"Prop.Guidelines", IsTask, spreadGuidelines},
    Consequence{"Prop.Resources", IsTask, spreadResources},
};
constexpr Consequence hyperlinkAddress{"Hyperlink.", isMemberOfTask, lineAddressChanged};

constexpr int columnHyperlinkAddress = 1;

/// Null for a cell that nothing follows from.
const Consequence* consequenceOf(const Cell& cell, std::string_view name) {
  if (name.starts_with(hyperlinkAddress.cell)) {
    return cell.Column() == columnHyperlinkAddress ? &hyperlinkAddress : nullptr;
  }
  const auto found = std::ranges::find_if(consequences, [&](const Consequence& consequence) {
    return consequence.cell.size() == name.size() && equalIgnoringCase(consequence.cell, name);
  });
  return found == consequences.end() ? nullptr : &*found;
}

}  // namespace

void gvsoApp_CellChanged(dsrVisioConnect& connect, const Cell& cell, std::string_view name) {
  // The name comes first and the shape's class second: nearly all changes end at one of them.
  const Consequence* consequence = consequenceOf(cell, name);
  if (!consequence) return;
  const Shape shape = cell.Shape();
  if (consequence->fits(shape) && isOnMapPage(shape)) consequence->follow(connect, shape);
}

}  // namespace quorvel::addin
