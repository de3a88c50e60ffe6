// The first drop of a Process Connector.
#include "base/basic_text.h"
#include "links/process_connector.h"
#include "shapes/first_drop.h"
#include "sheets/document_cells.h"
#include "sheets/rows.h"
#include "sheets/shape_actions.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {

void firstDropOfProcessConnector(const Shape& connector, const Page& page) {
  const std::string separator = listSeparator(page.Document());
  addRow(connector, schema::shapeCells::alreadyAdded);
  addConnectorActions(connector, separator);
  connector.SetData1(std::string(masters::processConnector));
  connector.Cells("LockTextEdit").FormulaForce("1");
  connector.SetName(
      connectorText(connector.Cells(schema::connectorCells::shownId).ResultStr(visio::unitsNone).or_({})));
}

}  // namespace quorvel::addin
