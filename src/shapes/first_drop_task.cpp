// The first drop of a Task: its menu, its rows, the cover that receives the clicks, and its Task ID.
#include <algorithm>

#include "base/basic_text.h"
#include "display/detail_shapes.h"
#include "schema/details.h"
#include "shapes/first_drop.h"
#include "shapes/give_task_id.h"
#include "shapes/initialize_znb_shapes.h"
#include "shapes/task_count.h"
#include "sheets/document_cells.h"
#include "sheets/protection.h"
#include "sheets/rows.h"
#include "sheets/shape_actions.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

namespace taskCells = schema::taskCells;

void addActions(const Shape& task, const std::string& separator) {
  addActionRow(task);
  setAction(task, 1, shapeDataAction, menuWithAddin("Define Task Details...", separator));
  task.Cells("Actions.D1").FormulaForce(disabledFormula(separator));
  addActionRow(task);
  setAction(task, 2, hyperlinkAction(separator), quoted("Add/Edit Hyperlink"));
}

void prepareSubTaskBox(const Shape& box) {
  box.SetData1(std::string(marks::subTaskBox));
  addHyperlinkAction(box);
  addRow(box, schema::subTaskBoxCells::textWidth);
  box.Cells(schema::subTaskBoxCells::textWidth).FormulaForce("GUARD(TEXTWIDTH(TheText))");
  addRow(box, schema::linkedCells::storedTaskId);
  box.Cells(schema::linkedCells::storedTaskId).FormulaForce(quoted(""));
}

void prepareRoles(const Shape& task, const Document& document) {
  // Masters of older stencils hide the roles after these.
  constexpr std::size_t rolesOfOldMasters = 3;
  for (const schema::NamedRow& role : taskCells::roles) task.Cells(role.column("Type")).FormulaForce("1");
  for (std::size_t i = rolesOfOldMasters; i < taskCells::roles.size(); ++i)
    task.Cells(taskCells::roles[i].column("Invisible")).FormulaForce("0");
  const std::string roles = quoted(documentText(document, schema::documentCells::roleNames));
  for (const schema::NamedRow& role : taskCells::roles) task.Cells(role.column("Format")).FormulaForce(roles);
}

/// A new Task shows what its page shows, and everything where the page has no switch: a bare new row would read as
/// hidden.
void addDisplaySwitches(const Shape& task, const Shape& page) {
  auto inOrder = schema::taskSwitches;
  std::ranges::sort(inOrder, {}, &schema::TaskSwitch::onTask);
  for (const schema::TaskSwitch& each : inOrder) {
    addRow(task, each.cell);
    task.Cells(each.cell).SetResult(visio::unitsNone, page.Cells(each.cell).Result(visio::unitsNone).or_(1));
  }
}

/// The details that are no list rows keep their hyperlinks in rows of their own.
void addHyperlinkRows(const Shape& task) {
  for (const schema::NamedRow& row : schema::keptHyperlinkRows) addRow(task, row);
  for (const schema::NamedRow& row : schema::keptHyperlinkRows) task.Cells(row).FormulaForce(quoted(""));
}

void prepareFrequencyAndTime(const Shape& task, const Document& document) {
  for (const schema::NamedRow& row : {taskCells::frequencyAbbreviation, taskCells::shownTime}) {
    addRow(task, row);
    // A bare new row reads as 0, which would count as an abbreviation.
    task.Cells(row).FormulaForce(quoted(""));
    task.Cells(row.column("Invisible")).FormulaForce("1");
  }
  task.Cells(schema::timeCells::unit)
      .FormulaForce(quoted(documentText(document, schema::documentCells::defaultTimeUnit)));
  task.Cells(taskCells::frequency.column("Format"))
      .FormulaForce(quoted(documentText(document, schema::documentCells::frequencies)));
}

void lockBoxes(const Shape& task) {
  task.Cells("LockGroup").FormulaForce("0");
  task.Cells("resizeMode").FormulaForce("0");
  task.Cells("SelectMode").FormulaForce("2");
  const Shape lowerBox = task.Shapes().Item(taskMember::lowerBox);
  const Shape descriptionBox = task.Shapes().Item(taskMember::descriptionBox);
  lowerBox.Cells("LockSelect").FormulaForce("1");
  descriptionBox.Cells("LockSelect").FormulaForce("1");
  placeDescriptionBox(task);
}

/// An invisible rectangle over the whole Task, which receives the clicks instead of its boxes.
void drawCover(const Shape& task) {
  const Shape cover = task.DrawRectangle(0, 0, task.Cells("Width").Result(visio::unitsInches).or_(1),
                                         task.Cells("Height").Result(visio::unitsInches).or_(1));
  if (const auto sheet = task.NameID()) {
    cover.Cells("Width").FormulaForce("GUARD(" + *sheet + " !Width)");
    cover.Cells("Height").FormulaForce("GUARD(" + *sheet + " !Height)");
  }
  cover.Cells("PinX").FormulaForce("GUARD(width/2)");
  cover.Cells("PinY").FormulaForce("GUARD(height/2)");
  cover.Cells("FillForegndTrans").FormulaForce("GUARD(100%)");
  // A transparent fill alone would leave its outline around the Task.
  cover.Cells("LinePattern").FormulaForce("0");
  cover.Cells("LockFormat").FormulaForce("1");
  Protection(cover);
}

}  // namespace

void firstDropOfTask(dsrVisioConnect& connect, const Shape& task, const Page& page) {
  const Document document = page.Document();
  const std::string separator = listSeparator(document);
  InitializeZNBShapes(connect, task, page);
  task.Cells("EventDrop").FormulaForce(quoted(""));
  task.Cells(taskCells::notes).FormulaForce(quoted(""));
  addRow(task, schema::shapeCells::alreadyAdded);
  addActions(task, separator);
  prepareSubTaskBox(task.Shapes().Item(taskMember::subTaskBox));
  prepareRoles(task, document);
  addDisplaySwitches(task, page.PageSheet());
  addHyperlinkRows(task);
  prepareFrequencyAndTime(task, document);
  lockBoxes(task);
  drawCover(task);
  addTimeValue(task);
  if (isOnlyTaskOnPage(page) && !connect.askTaskIds(connect, page)) {
    task.Delete();
    return;
  }
  giveNextTaskId(connect, task, page);
}

}  // namespace quorvel::addin
