// The first drop of a Task Link.
#include <algorithm>

#include "base/basic_text.h"
#include "links/task_link_description.h"
#include "schema/display_switches.h"
#include "shapes/first_drop.h"
#include "shapes/initialize_znb_shapes.h"
#include "sheets/document_cells.h"
#include "sheets/rows.h"
#include "sheets/shape_actions.h"

namespace quorvel::addin {

namespace taskLinkCells = schema::taskLinkCells;

void firstDropOfTaskLink(const dsrVisioConnect& connect, const Shape& link, const Page& page) {
  const Document document = page.Document();
  const std::string separator = listSeparator(document);
  // The description's text is composed at each write of what it shows, so the rows that it reads come first.
  addRow(link, taskLinkCells::timeText);
  addRow(link, schema::shapeCells::alreadyAdded);
  for (const schema::LinkSwitch& each : schema::linkSwitches) addRow(link, each.cell);
  const Shape pageSheet = page.PageSheet();
  auto inOrder = schema::linkSwitches;
  std::ranges::sort(inOrder, {}, &schema::LinkSwitch::copied);
  for (const schema::LinkSwitch& each : inOrder) {
    link.Cells(each.cell).SetResult(visio::unitsNone, pageSheet.Cells(each.cell).Result(visio::unitsNone));
  }
  InitializeZNBShapes(connect, link, page);

  link.Cells(schema::timeCells::unit)
      .FormulaForce(quoted(documentText(document, schema::documentCells::defaultTimeUnit)));
  link.Cells(taskLinkCells::timeText.column("Label")).FormulaForce(quoted(taskLinkCells::timeText.name()));
  link.Cells(taskLinkCells::timeText.column("Invisible")).FormulaForce("-1");

  // The host must run no drop action of the master.
  link.Cells("EventDrop").FormulaForce(quoted(""));
  addActionRow(link);
  setAction(link, 1, shapeDataAction, menuWithAddin("Define Task Link Details...", separator));
  link.Cells("Actions.D1").FormulaForce(disabledFormula(separator));

  link.Cells(taskLinkCells::time).FormulaForce("0");
  GetAddedTaskLinkDescription2(link);

  link.Cells("LockTextEdit").FormulaForce("1");
  addTimeValue(link);
  link.Cells("Fields.Value[1]").FormulaForce("=" + std::string(taskLinkCells::time.cell()));
}

}  // namespace quorvel::addin
