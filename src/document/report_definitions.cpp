#include "document/report_definitions.h"

#include <string>
#include <vector>

#include "base/basic_text.h"
#include "data/install_folder.h"
#include "schema/cells.h"

namespace quorvel::addin {

using schema::documentCells::reportRows;

void addReportDefinitions(const dsrVisioConnect& connect, const Document& document) {
  const Shape sheet = document.DocumentSheet();
  const std::vector<std::string> files =
      connect.platform.filesIn(installedFile(connect.platform, installed::reports)).or_({});
  int number = 0;
  for (const std::string& file : files) {
    ++number;
    const Maybe<std::string> definition =
        connect.platform.readXmlFile(installedFile(connect.platform, std::string(installed::reports) + "/" + file));
    const std::string end = std::to_string(number);
    const std::string row = std::string(reportRows.name()) + end, cell = std::string(reportRows.cell()) + end;
    if (!definition || sheet.CellExists(cell, 1) != false) continue;
    const Maybe<int> place = sheet.AddNamedRow(visio::sectionUser, row, 0);
    // An empty row would keep a later opening from adding the definition.
    if (place && !sheet.Cells(cell).FormulaForce(quoted(*definition))) sheet.DeleteRow(visio::sectionUser, *place);
  }
}

}  // namespace quorvel::addin
