// What makes a dropped Task work: its menu, its rows, the cover that takes the clicks, and its Task ID.
#include "base/basic_text.h"
#include "document/document_cells.h"
#include "shapes/ask_task_id_suggestion.h"
#include "shapes/first_drop.h"
#include "shapes/initialize_znb_shapes.h"
#include "shapes/protection.h"
#include "shapes/rows.h"
#include "shapes/shape_actions.h"
#include "shapes/shape_classes.h"
#include "shapes/task_count.h"
#include "shapes/task_id.h"

namespace quorvel::addin {
namespace {

void addActions(const Shape& task, const std::string& separator) {
  addActionRow(task);
  setAction(task, 1, shapeDataAction, menuWithAddin("Define Task Details...", separator));
  task.Cells("Actions.D1").FormulaForce(disabledFormula(separator));
  addActionRow(task);
  setAction(task, 2, hyperlinkAction(separator), quoted("Add/Edit Hyperlink"));
}

void prepareSubTaskBox(const Shape& box, const std::string& separator) {
  box.SetData1(std::string(marks::subTaskBox));
  addActionRow(box);
  setAction(box, 1, hyperlinkAction(separator), quoted("Add/Edit Hyperlink"));
  addUserRow(box, "TxtWidth");
  box.Cells("User.TxtWidth").FormulaForce("GUARD(TEXTWIDTH(TheText))");
  addUserRow(box, "StoredTaskID");
  box.Cells("User.StoredTaskID").FormulaForce(quoted(""));
}

void prepareRoles(const Shape& task, const Document& document) {
  const auto roleRows = {"Prop.Responsible_Role", "Prop.SupportingRole_1", "Prop.SupportingRole_2",
                         "Prop.SupportingRole_3", "Prop.SupportingRole_4"};
  for (const std::string row : roleRows) task.Cells(row + ".Type").FormulaForce("1");
  task.Cells("Prop.SupportingRole_3.Invisible").FormulaForce("0");
  task.Cells("Prop.SupportingRole_4.Invisible").FormulaForce("0");
  const std::string roles = quoted(documentText(document, "User.RoleNames"));
  for (const std::string row : roleRows) task.Cells(row + ".Format").FormulaForce(roles);
}

/// A new Task shows what its page shows, and everything where the page does not say: a bare new row would read as
/// hidden.
void addDisplaySwitches(const Shape& task, const Shape& page) {
  for (const std::string name :
       {"Responsible_Role", "Task_Visible", "controls", "Resources", "Task_Completion_Time", "Frequency_Of_Occurrence",
        "Supporting_Role1", "Supporting_Role2", "Supporting_Role3", "Supporting_Role4"}) {
    addUserRow(task, name);
    task.Cells("User." + name).SetResult(visio::unitsNone, page.Cells("User." + name).Result(visio::unitsNone).or_(1));
  }
}

void addRoleHyperlinkRows(const Shape& task) {
  const auto names = {"SupportingRole_1_Hyper", "SupportingRole_2_Hyper", "SupportingRole_3_Hyper",
                      "SupportingRole_4_Hyper", "Responsible_Role_Hyper"};
  for (const std::string name : names) addUserRow(task, name);
  for (const std::string name : names) task.Cells("User." + name).FormulaForce(quoted(""));
}

void prepareFrequencyAndTime(const Shape& task, const Document& document) {
  addPropRow(task, "Frequency_Partial");
  // A bare new row reads as 0, which would count as an abbreviation.
  task.Cells("Prop.Frequency_Partial").FormulaForce(quoted(""));
  task.Cells("Prop.Frequency_Partial.Invisible").FormulaForce("1");
  addPropRow(task, "Process_Time_Str");
  task.Cells("Prop.Process_Time_Str").FormulaForce(quoted(""));
  task.Cells("Prop.Process_Time_Str.Invisible").FormulaForce("1");
  task.Cells("Prop.Time_Units.Value").FormulaForce(quoted(documentText(document, "User.Time_Unit.Prompt")));
  task.Cells("Prop.Frequency_Of_Occurrence.Format")
      .FormulaForce(quoted(documentText(document, "User.FreqSuggestions.Value")));
}

void lockBoxes(const Shape& task) {
  task.Cells("LockGroup").FormulaForce("0");
  task.Cells("resizeMode").FormulaForce("0");
  task.Cells("SelectMode").FormulaForce("2");
  const Shape lowerBox = task.Shapes().Item(taskMember::lowerBox);
  const Shape descriptionBox = task.Shapes().Item(taskMember::descriptionBox);
  lowerBox.Cells("LockSelect").FormulaForce("1");
  descriptionBox.Cells("LockSelect").FormulaForce("1");
  if (const auto lower = lowerBox.NameID()) {
    descriptionBox.Cells("PinY").FormulaForce("GUARD(Height-0.07+" + *lower + " !Height)");
  }
}

/// An invisible rectangle over the whole Task, which takes the clicks that its boxes would.
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

/// The page counts on before the number is used, so that no ID is given twice: where the host does not tell the page's
/// letters or number, or does not let it count, the Task stays without an ID.
void giveTaskId(const Shape& task, const Page& page) {
  const Cell id = task.Cells("Prop.Task_ID");
  const Maybe<long> number = nextTaskIdOf(page);
  const Maybe<std::string> letters = taskIdLettersOf(page);
  const bool counted =
      number && letters && page.PageSheet().Cells("User.Next_Task_Id").SetResult(visio::unitsNone, *number + 1);
  if (!counted) {
    id.FormulaForce(quoted(""));
    return;
  }
  id.FormulaForce(quoted(taskIdText(*letters, *number)));
  // The name is how a later change of the ID knows the old one.
  task.SetName(id.ResultStr(visio::unitsNone));
}

}  // namespace

void firstDropOfTask(dsrVisioConnect& connect, const Shape& task, const Page& page) {
  const Document document = page.Document();
  const std::string separator = listSeparator(document);
  InitializeZNBShapes(connect, task, page);
  task.Cells("EventDrop").FormulaForce(quoted(""));
  task.Cells("Prop.Notes").FormulaForce(quoted(""));
  addUserRow(task, "AlreadyAdded");
  addActions(task, separator);
  prepareSubTaskBox(task.Shapes().Item(taskMember::subTaskBox), separator);
  prepareRoles(task, document);
  addDisplaySwitches(task, page.PageSheet());
  addRoleHyperlinkRows(task);
  prepareFrequencyAndTime(task, document);
  lockBoxes(task);
  drawCover(task);
  addTimeValue(task);
  if (isOnlyTaskOnPage(page) && !askTaskIdSuggestion(connect, page)) {
    task.Delete();
    return;
  }
  giveTaskId(task, page);
}

}  // namespace quorvel::addin
