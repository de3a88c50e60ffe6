#include "shapes/shape_data_changes.h"

#include <algorithm>
#include <vector>

#include "base/basic_text.h"
#include "base/text.h"
#include "connect/host_queries.h"
#include "display/detail_shapes.h"
#include "display/task_details.h"
#include "links/task_link_description.h"
#include "schema/details.h"
#include "shapes/list_change.h"
#include "shapes/logo_bounds.h"
#include "sheets/rows.h"
#include "sheets/shape_classes.h"
#include "vocab/task_times.h"

namespace quorvel::addin {
namespace {

namespace tags = schema::tags;
namespace taskCells = schema::taskCells;

using Test = bool (*)(const Shape& shape);

/// A dropped Task itself: the members of a Task have its master too.
bool isDroppedTask(const Shape& shape) {
  return IsTask(shape) && isTopLevel(shape) && shape.CellExists(schema::shapeCells::alreadyAdded, 1) == true;
}

bool isLogo(const Shape& shape) { return shape.Data1() == marks::logo; }

bool isMemberOfTask(const Shape& shape) { return IsTask(shape.Parent()); }

using Connect = const dsrVisioConnect&;

void logoMovedAcross(Connect, const Shape& logo, std::string_view) { keepLogoInsidePageX(logo); }
void logoMovedUp(Connect, const Shape& logo, std::string_view) { keepLogoInsidePageY(logo); }

void taskWidthChanged(Connect connect, const Shape& task, std::string_view) {
  redrawTaskLowerFields(connect, task, tags::guidelines, snapshotOfListRows(task));
}

void linkDescriptionChanged(Connect, const Shape& link, std::string_view) { GetAddedTaskLinkDescription2(link); }

void responsibleRoleChanged(Connect, const Shape& task, std::string_view) {
  RedrawTaskUpperExtraFields(task, tags::responsibleRole);
}

// The labels show cells that depend on the changed one; those are written first.
void timeOfTaskChanged(Connect, const Shape& task, std::string_view) {
  completionTimeChanged(task);
  RedrawTaskUpperExtraFields(task, tags::completionTime);
}

void frequencyOfTaskChanged(Connect, const Shape& task, std::string_view) {
  frequencyChanged(task);
  RedrawTaskUpperExtraFields(task, tags::frequency);
}

/// Another role is another person: the hyperlinks of the one before go, unless it only has another name now.
void supportingRoleChanged(Connect connect, const Shape& task, std::string_view cell) {
  const bool isRename = connect.renamedRole && connect.renamedRole == task.Cells(cell);
  const auto detail =
      std::ranges::find(schema::details, cell, [](const schema::Detail& each) { return each.row.cell(); });
  if (!isRename && detail != schema::details.end()) {
    task.Cells(detail->keptHyperlinks).FormulaForce(quoted(""));
    for (const Shape& member : task.Shapes().all()) {
      if (member.Data3() == detail->row.name()) member.DeleteSection(visio::sectionHyperlink);
    }
  }
  redrawTaskLowerFields(connect, task, tags::guidelines, snapshotOfListRows(task));
}

void listChanged(Connect connect, const Shape& task, std::string_view cell) {
  const auto list =
      std::ranges::find(schema::detailLists, cell, [](const schema::DetailList& each) { return each.cell.cell(); });
  if (list != schema::detailLists.end()) spreadList(connect, task, *list);
}

/// When a line of a Task's details gets its first hyperlink, the icon for it is drawn.
void lineAddressChanged(Connect connect, const Shape& line, std::string_view) {
  const Maybe<int> position = schema::positionOfRow(line.Data3().or_({}));
  if (!position || *position > schema::lastLowerDetail) return;
  const schema::Detail& detail = schema::detailAt(*position);
  if (!(line.Data2() == detail.tag) || !(line.Hyperlinks().Count() > 0)) return;
  const Shape task = line.Parent();
  const std::string mark = std::string(marks::hyperlinkIcon) + std::string(detail.row.name());
  for (const Shape& member : task.Shapes().all()) {
    if (member.Data3() == mark) return;
  }
  drawLineIcon(connect, task, line, detailLayerOf(task), *position, true);
}

/// The consequence of a change of a cell, on shapes for which the test is true.
struct Consequence {
  std::string_view cell;
  Test fits;
  void (*follow)(Connect connect, const Shape& shape, std::string_view cell);
};

std::vector<Consequence> allConsequences() {
  std::vector<Consequence> all{
      {"PinX", isLogo, logoMovedAcross},
      {"PinY", isLogo, logoMovedUp},
      {"Width", isDroppedTask, taskWidthChanged},
      {schema::taskLinkCells::description, IsTaskLink, linkDescriptionChanged},
      {taskCells::responsibleRole, IsTask, responsibleRoleChanged},
      {taskCells::completionTime, IsTask, timeOfTaskChanged},
      {taskCells::frequency, IsTask, frequencyOfTaskChanged},
  };
  for (const schema::NamedRow& role : taskCells::roles) {
    if (!(role == taskCells::responsibleRole)) all.push_back({role, IsTask, supportingRoleChanged});
  }
  for (const schema::DetailList& list : schema::detailLists) all.push_back({list.cell, IsTask, listChanged});
  return all;
}

constexpr Consequence hyperlinkAddress{"Hyperlink.", isMemberOfTask, lineAddressChanged};

constexpr int columnHyperlinkAddress = 1;

/// Null for a cell without consequence.
const Consequence* consequenceOf(const Cell& cell, std::string_view name) {
  if (name.starts_with(hyperlinkAddress.cell)) {
    return cell.Column() == columnHyperlinkAddress ? &hyperlinkAddress : nullptr;
  }
  static const std::vector<Consequence> consequences = allConsequences();
  const auto found = std::ranges::find_if(consequences, [&](const Consequence& consequence) {
    return consequence.cell.size() == name.size() && equalIgnoringCase(consequence.cell, name);
  });
  return found == consequences.end() ? nullptr : &*found;
}

}  // namespace

void gvsoApp_CellChanged(dsrVisioConnect& connect, const Cell& cell, std::string_view name) {
  // The name is tested first and the shape's class second: nearly all changes fail one of these tests.
  const Consequence* consequence = consequenceOf(cell, name);
  if (!consequence) return;
  const Shape shape = cell.Shape();
  if (consequence->fits(shape) && isOnMapPage(shape)) consequence->follow(connect, shape, consequence->cell);
}

}  // namespace quorvel::addin
