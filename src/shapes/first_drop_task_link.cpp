// What makes a dropped Task Link work.
#include "base/basic_text.h"
#include "document/document_cells.h"
#include "links/task_link_description.h"
#include "shapes/first_drop.h"
#include "shapes/initialize_znb_shapes.h"
#include "shapes/rows.h"
#include "shapes/shape_actions.h"

namespace quorvel::addin {

void firstDropOfTaskLink(const dsrVisioConnect& connect, const Shape& link, const Page& page) {
  const Document document = page.Document();
  const std::string separator = listSeparator(document);
  // The description's text is composed at each write of what it shows, so the rows that it reads come first.
  addPropRow(link, "Time_Str");
  addUserRow(link, "AlreadyAdded");
  addUserRow(link, "TaskLink_Visible");
  addUserRow(link, "TaskLink_txt_Visible");
  addUserRow(link, "TimegreaterThanzero");
  const Shape pageSheet = page.PageSheet();
  for (const char* cell :
       {"User.TaskLink_txt_Visible.Value", "User.TaskLink_Visible.Value", "User.TimegreaterThanzero.Value"}) {
    link.Cells(cell).SetResult(visio::unitsNone, pageSheet.Cells(cell).Result(visio::unitsNone));
  }
  InitializeZNBShapes(connect, link, page);

  link.Cells("Prop.Time_Units.Value").FormulaForce(quoted(documentText(document, "User.Time_Unit.Prompt")));
  link.Cells("Prop.Time_Str.Label").FormulaForce(quoted("Time_Str"));
  link.Cells("Prop.Time_Str.Invisible").FormulaForce("-1");

  // The host must run no drop event of its own.
  link.Cells("EventDrop").FormulaForce(quoted(""));
  addActionRow(link);
  setAction(link, 1, shapeDataAction, menuWithAddin("Define Task Link Details...", separator));
  link.Cells("Actions.D1").FormulaForce(disabledFormula(separator));

  link.Cells("Prop.Time_Between_Tasks").FormulaForce("0");
  GetAddedTaskLinkDescription2(link);

  link.Cells("LockTextEdit").FormulaForce("1");
  addTimeValue(link);
  link.Cells("Fields.Value[1]").FormulaForce("=Prop.Time_Between_Tasks");
}

}  // namespace quorvel::addin
