#include "document/upgrade_task_links.h"

#include <string>

#include "base/basic_text.h"
#include "base/text.h"
#include "hyperlinks/upgrade_links.h"
#include "links/process_connector.h"
#include "links/task_link_description.h"
#include "schema/cells.h"
#include "schema/display_switches.h"
#include "schema/time_units.h"
#include "sheets/document_cells.h"
#include "sheets/page_walk.h"
#include "sheets/rows.h"
#include "sheets/shape_actions.h"
#include "sheets/shape_classes.h"
#include "vocab/default_lists.h"
#include "vocab/time_units.h"

namespace quorvel::addin {
namespace {

namespace connectorCells = schema::connectorCells;
namespace switches = schema::switches;
namespace taskLinkCells = schema::taskLinkCells;
namespace timeCells = schema::timeCells;

bool put(const Shape& shape, std::string_view cell, const std::string& formula) {
  return askAgain([&] { return shape.Cells(cell).FormulaForce(formula); });
}

void upgradeConnector(const Shape& connector, const std::string& separator) {
  addWhenMissing(connector, schema::linkedCells::storedTaskId);
  put(connector, "lockCustProp", "1");
  const Maybe<std::string> shown = connector.Cells(connectorCells::shownId).ResultStr(visio::unitsNone);
  if (shown) askAgain([&] { return connector.SetName(connectorText(*shown)); });
  connector.DeleteSection(visio::sectionAction);
  addWhenMissing(connector, schema::shapeCells::alreadyAdded);
  addActionRow(connector);
  setAction(connector, 1, hyperlinkAction(separator), quoted("Define Connector Link..."));
  addActionRow(connector);
  setAction(connector, 2, shapeDataAction, menuWithAddin("Modify Connector Text...", separator));
  put(connector, "Actions.D1", "= IF(TheDoc!User.DisableDefine=1,1,0)");
  put(connector, connectorCells::shownId.column("Prompt"),
      quoted("ID of the Task where the process continues. It follows the connector's first hyperlink unless you type "
             "another; Z99 means that there is no target yet."));
  askAgain([&] { return connector.SetData1(std::string(masters::processConnector)); });
  updateHyperLinkTask(connector);
  setSubAddress(connector, connectorCells::shownId);
  changeProcessConnectorTxtFont(connector);
}

bool showDuration(const Shape& link) { return put(link, taskLinkCells::time, durationFormula()); }

/// The number that older links hold becomes a duration: in the unit that the link has, else in minutes. Nothing is
/// changed when it cannot be read. True when there is a duration.
bool moveTime(const Shape& link, bool hadUnit) {
  const Maybe<bool> isMoved = askAgain([&] { return link.CellExists(timeCells::value, 0); });
  if (!isMoved) return false;
  if (*isMoved) return showDuration(link);
  const Maybe<double> time = askAgain([&] { return link.Cells(taskLinkCells::time).Result(visio::unitsNone); });
  if (!time) return false;
  const schema::TimeUnit* unit = nullptr;
  if (hadUnit) {
    unit = schema::timeUnitNamed(
        askAgain([&] { return link.Cells(timeCells::unit).ResultStr(visio::unitsNone); }).or_({}));
  }
  const std::string suffix = (unit ? std::string(unit->suffix) : "em") + ".";
  const std::string duration = *time > 0 ? shortestNumber(*time) + suffix : quoted("0 em.");
  if (!addRow(link, timeCells::value) || !put(link, timeCells::value, duration) || !showDuration(link)) return false;
  // The number that is shown is rounded, and it was taken for one that the user typed.
  return put(link, timeCells::value, duration);
}

void upgradeLink(const Shape& link, const Document& document) {
  put(link, taskLinkCells::description.column("Label"), quoted("Task Link Description"));
  const bool hadUnit = !addWhenMissing(link, timeCells::unit);
  if (!hadUnit) {
    put(link, timeCells::unit.column("Label"), quoted("Time Units"));
    put(link, timeCells::unit.column("Type"), "1");
    put(link, timeCells::unit.column("Format"), quoted(defaults::timeUnits));
    const std::string unit = documentText(document, schema::documentCells::defaultTimeUnit);
    // Without a unit the time would be shown in weeks.
    put(link, timeCells::unit, quoted(unit.empty() ? defaults::timeUnit : unit));
    put(link, timeCells::unit.column("Prompt"),
        quoted("Select units to be used for the Time Between Tasks immediately above."));
  }
  if (addWhenMissing(link, switches::linkDescription)) put(link, switches::linkDescription, "1");
  // Marks a converted link: a time of zero shows or not as before.
  if (addWhenMissing(link, switches::linkTimeAboveZero)) put(link, switches::linkTimeAboveZero, "2");
  put(link, taskLinkCells::time.column("Format"), quoted("#,##0.####"));
  put(link, taskLinkCells::time.column("Type"), "6");
  moveTime(link, hadUnit);
  put(link, "Fields.Value[1]", "=" + std::string(taskLinkCells::time.cell()));
  GetAddedTaskLinkDescription2(link);
  put(link, "lockCustProp", "1");
}

}  // namespace

void updateTaskLink(const Document& document) {
  const std::string separator = listSeparator(document);
  forEachShape(document, [&](const Shape& shape) {
    if (askAgain([&] { return IsProcessConnector(shape); })) {
      upgradeConnector(shape, separator);
    } else if (askAgain([&] { return IsTaskLink(shape); })) {
      upgradeLink(shape, document);
    }
  });
}

}  // namespace quorvel::addin
