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
#include "sheets/cell_writes.h"
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

void upgradeConnector(const Shape& connector, const std::string& separator) {
  addWhenMissing(connector, schema::linkedCells::storedTaskId);
  putFormula(connector, "lockCustProp", "1");
  const Maybe<std::string> shown = connector.Cells(connectorCells::shownId).ResultStr(visio::unitsNone);
  if (shown) askAgain([&] { return connector.SetName(connectorText(*shown)); });
  connector.DeleteSection(visio::sectionAction);
  addWhenMissing(connector, schema::shapeCells::alreadyAdded);
  addConnectorActions(connector, separator);
  putText(connector, connectorCells::shownId.column("Prompt"),
          "ID of the Task where the process continues. It follows the connector's first hyperlink unless you type "
          "another; Z99 means that there is no target yet.");
  askAgain([&] { return connector.SetData1(std::string(masters::processConnector)); });
  updateHyperLinkTask(connector);
  setSubAddress(connector, connectorCells::shownId);
  changeProcessConnectorTxtFont(connector);
}

/// The unit of a link's time; minutes for a link that has none, or an unknown one.
const schema::TimeUnit& unitOf(const Shape& link) {
  const auto name = askAgain([&] { return link.Cells(timeCells::unit).ResultStr(visio::unitsNone); });
  const schema::TimeUnit* unit = schema::timeUnitNamed(name.or_({}));
  return unit ? *unit : *schema::timeUnitNamed(defaults::timeUnit);
}

void upgradeLink(const Shape& link, const Document& document) {
  putText(link, taskLinkCells::description.column("Label"), "Task Link Description");
  // A number without a unit of its own was in minutes, whatever the drawing's default is.
  const bool isInMinutes = addWhenMissing(link, timeCells::unit);
  if (isInMinutes) {
    putText(link, timeCells::unit.column("Label"), "Time Units");
    putFormula(link, timeCells::unit.column("Type"), "1");
    putText(link, timeCells::unit.column("Format"), defaults::timeUnits);
    const std::string unit = documentText(document, schema::documentCells::defaultTimeUnit);
    // Without a unit the time would be shown in weeks.
    putText(link, timeCells::unit, unit.empty() ? defaults::timeUnit : unit);
    putText(link, timeCells::unit.column("Prompt"),
            "Select units to be used for the Time Between Tasks immediately above.");
  }
  if (addWhenMissing(link, switches::linkDescription)) putFormula(link, switches::linkDescription, "1");
  // Marks a converted link: a time of zero shows or not as before.
  if (addWhenMissing(link, switches::linkTimeAboveZero)) putFormula(link, switches::linkTimeAboveZero, "2");
  putText(link, taskLinkCells::time.column("Format"), "#,##0.####");
  putFormula(link, taskLinkCells::time.column("Type"), "6");
  makeDuration(link, taskLinkCells::time, isInMinutes ? *schema::timeUnitNamed(defaults::timeUnit) : unitOf(link), ".");
  putFormula(link, "Fields.Value[1]", "=" + std::string(taskLinkCells::time.cell()));
  GetAddedTaskLinkDescription2(link);
  putFormula(link, "lockCustProp", "1");
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
