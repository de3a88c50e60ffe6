#include "shapes/shape_data_changes.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/ask_again.h"
#include "base/basic_text.h"
#include "base/text.h"
#include "connect/host_queries.h"
#include "display/detail_shapes.h"
#include "display/task_details.h"
#include "display/task_marks.h"
#include "links/link_target.h"
#include "links/process_connector.h"
#include "links/sub_task_box.h"
#include "links/task_link_description.h"
#include "schema/details.h"
#include "shapes/list_change.h"
#include "shapes/logo_bounds.h"
#include "shapes/task_id_change.h"
#include "sheets/shape_classes.h"
#include "sheets/text_fields.h"
#include "vocab/task_times.h"

namespace quorvel::addin {
namespace {

namespace linkedCells = schema::linkedCells;
namespace tags = schema::tags;
namespace taskCells = schema::taskCells;

using Test = bool (*)(const Shape& shape);

bool isDroppedTask(const Shape& shape) {
  return isWholeTask(shape) && shape.CellExists(schema::shapeCells::alreadyAdded, 1) == true;
}

bool isBoxOfTask(const Shape& shape) { return isSubTaskBox(shape) && IsTask(shape.Parent()); }

bool isLogo(const Shape& shape) { return shape.Data1() == marks::logo; }

bool isMemberOfTask(const Shape& shape) { return IsTask(shape.Parent()); }

using Connect = const dsrVisioConnect&;

void logoMovedAcross(Connect, const Shape& logo, std::string_view) { keepLogoInsidePageX(logo); }
void logoMovedUp(Connect, const Shape& logo, std::string_view) { keepLogoInsidePageY(logo); }

void descriptionChanged(Connect, const Shape& task, std::string_view cell) {
  const Shape box = task.Shapes().Item(taskMember::descriptionBox);
  const Maybe<std::string> description = task.Cells(cell).ResultStr(visio::unitsNone);
  // A field shows it already; a text would replace the field.
  if (!description || box.Text() == *description) return;
  showInText(box, cellOfTask(task, cell));
  if (!(box.Text() == *description)) box.SetText(*description);
}

void boxTextChanged(Connect, const Shape& box, std::string_view) { placeSubTaskMark(box.Parent(), box); }

void boxHyperlinkChanged(Connect connect, const Shape& box, std::string_view) {
  const Shape task = box.Parent();
  markSubTaskHyperlink(connect, task, box);
  showLinkedTask(task, box);
}

void connectorHyperlinkChanged(Connect, const Shape& connector, std::string_view) {
  addStoredTaskId(connector);
  changeProcessConnectorText(connector, connectorCallers::cellChange, {});
}

void connectorIdChanged(Connect, const Shape& connector, std::string_view cell) {
  changeProcessConnectorTxtFont(connector);
  if (connector.Cells(cell).ResultStr(visio::unitsNone) == "")
    changeProcessConnectorText(connector, connectorCallers::cellChange, {});
}

// A Task is always filled. The colour is written so that its change restores the pattern.
void fillColourChanged(Connect, const Shape& task, std::string_view) {
  const Cell pattern = task.Cells("FillPattern");
  if (pattern.Result(visio::unitsNone) == 0) pattern.FormulaForce("1");
}
void fillPatternChanged(Connect, const Shape& task, std::string_view cell) {
  const Cell pattern = task.Cells(cell);
  if (!(pattern.Result(visio::unitsNone) == 0)) return;
  task.Cells("FillForegnd").FormulaForce("1");
  // A Task that had the colour already raises no event for it.
  if (pattern.Result(visio::unitsNone) == 0) pattern.FormulaForce("1");
}

void notesChanged(Connect connect, const Shape& task, std::string_view) { markNotes(connect, task); }

void ownHyperlinkChanged(Connect connect, const Shape& task, std::string_view) { markOwnHyperlink(connect, task); }

void idChanged(Connect connect, const Shape& task, std::string_view) { taskIdChanged(connect, task); }

/// The user emptied the ID of the sub-task: its hyperlink and mark go with it.
void linkedChanged(Connect, const Shape& task, std::string_view cell) {
  const Maybe<std::string> shown = task.Cells(cell).ResultStr(visio::unitsNone);
  if (!shown || !trimmed(*shown).empty()) return;
  const Shape box = task.Shapes().Item(taskMember::subTaskBox);
  box.Cells(linkedCells::storedTaskId).FormulaForce(quoted(""));
  // A hyperlink to a page alone shows no ID: it was not the user who emptied it.
  const std::vector<Hyperlink> links = box.Hyperlinks().all();
  const bool isToPage = !links.empty() && linkTargetOf(links.front()).taskId.empty();
  if (isToPage || !hasSubTaskMark(task)) return;
  box.DeleteSection(visio::sectionHyperlink);
  removeSubTaskMark(task);
}

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

/// The consequence of a change of a cell, on shapes for which the test is true. `column` narrows a section's cells
/// down to one.
struct Consequence {
  std::string_view cell;
  Test fits;
  void (*follow)(Connect connect, const Shape& shape, std::string_view cell);
  int column = -1;
};

constexpr int columnHyperlinkAddress = 1;
constexpr std::string_view anyHyperlink = "Hyperlink.";

/// In the order in which they happen.
std::vector<Consequence> allConsequences() {
  std::vector<Consequence> all{
      {schema::subTaskBoxCells::textWidth, isBoxOfTask, boxTextChanged},
      {taskCells::description, isWholeTask, descriptionChanged},
      {anyHyperlink, isBoxOfTask, boxHyperlinkChanged},
      {anyHyperlink, IsProcessConnector, connectorHyperlinkChanged},
      {"FillForegnd", isWholeTask, fillColourChanged},
      {"FillPattern", isWholeTask, fillPatternChanged},
      {taskCells::notes, isWholeTask, notesChanged},
      {anyHyperlink, isMemberOfTask, lineAddressChanged, columnHyperlinkAddress},
      {anyHyperlink, isWholeTask, ownHyperlinkChanged, columnHyperlinkAddress},
      {taskCells::id, isWholeTask, idChanged},
      {schema::connectorCells::shownId, IsProcessConnector, connectorIdChanged},
      {taskCells::linked, isWholeTask, linkedChanged},
      {"Width", isDroppedTask, taskWidthChanged},
      {"Width", isBoxOfTask, boxTextChanged},
      {schema::taskLinkCells::description, IsTaskLink, linkDescriptionChanged},
      {"PinX", isLogo, logoMovedAcross},
      {"PinY", isLogo, logoMovedUp},
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

/// The consequences of one cell, or of all cells of a hyperlink.
struct OfOneCell {
  std::string_view cell;
  std::vector<Consequence> consequences;
};

std::vector<OfOneCell> byCell() {
  std::vector<OfOneCell> sorted;
  for (const Consequence& each : allConsequences()) {
    auto place = std::ranges::find(sorted, each.cell, &OfOneCell::cell);
    if (place == sorted.end()) place = sorted.insert(place, {each.cell, {}});
    place->consequences.push_back(each);
  }
  return sorted;
}

/// Null for a cell without consequence.
const std::vector<Consequence>* consequencesOf(std::string_view name) {
  static const std::vector<OfOneCell> sorted = byCell();
  if (name.starts_with(anyHyperlink)) name = anyHyperlink;
  const auto found = std::ranges::find_if(sorted, [&](const OfOneCell& each) {
    return each.cell.size() == name.size() && equalIgnoringCase(each.cell, name);
  });
  return found == sorted.end() ? nullptr : &found->consequences;
}

/// The stamp alone must not make a drawing ask to be saved.
void versionChanged(const Shape& sheet) {
  const Document document = sheet.Document();
  if (isMap(document) && sheet == document.DocumentSheet()) document.SetSaved(true);
}

}  // namespace

void gvsoApp_CellChanged(dsrVisioConnect& connect, const Cell& cell, std::string_view name) {
  // The name is tested first and the shape's class second: nearly all changes fail one of these tests.
  if (equalIgnoringCase(name, schema::documentCells::version)) versionChanged(cell.Shape());
  const std::vector<Consequence>* const consequences = consequencesOf(name);
  if (!consequences) return;
  // A consequence that is left out is not made up for later: a hyperlink that keeps an old ID is not found any more.
  const Shape shape = askAgain([&] { return cell.Shape(); });
  for (const Consequence& each : *consequences) {
    if (each.column >= 0 && !(askAgain([&] { return cell.Column(); }) == each.column)) continue;
    if (!askAgain([&] { return each.fits(shape); }) || !askAgain([&] { return isOnMapPage(shape); })) continue;
    each.follow(connect, shape, each.cell);
  }
}

}  // namespace quorvel::addin
