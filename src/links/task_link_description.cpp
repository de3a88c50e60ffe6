#include "links/task_link_description.h"

#include "base/basic_text.h"
#include "links/task_link_format.h"
#include "schema/cells.h"
#include "schema/display_switches.h"
#include "sheets/document_cells.h"
#include "sheets/rows.h"
#include "sheets/text_fields.h"
#include "vocab/parse.h"

namespace quorvel::addin {
namespace {

namespace switches = schema::switches;
namespace taskLinkCells = schema::taskLinkCells;

Maybe<double> switchOf(const Shape& link, std::string_view cell) {
  const Maybe<std::string> text = link.Cells(cell).ResultStr(visio::unitsNone);
  return text ? Maybe<double>(val(*text)) : Maybe<double>();
}

}  // namespace

void replaceSingleQoutes(const Shape& link) {
  const std::string description = link.Cells(taskLinkCells::description).ResultStr(visio::unitsNone).or_({});
  // An inherited row is enough here: it does not mark a first drop.
  if (link.CellExists(taskLinkCells::quotedDescription, 0) == false) addRow(link, taskLinkCells::quotedDescription);
  link.Cells(taskLinkCells::quotedDescription).FormulaForce(quoted(withEscapedApostrophes(description)));
}

void GetAddedTaskLinkDescription2(const Shape& link) {
  const Document document = link.Document();
  const FormatParts parts{parse(documentText(document, schema::documentCells::timeUnits), ";"),
                          parse(documentText(document, schema::documentCells::timeUnitAbbreviations), ";"),
                          listSeparator(document)};
  replaceSingleQoutes(link);
  // A link that was copied into a drawing that is no map, and one whose text is plain while Replace runs.
  if (parts.separator.empty() || !hasTextField(link)) return;
  for (const LinkFormatRule& rule : linkFormatRules()) {
    // Read again for each rule: a handler of the previous write may have changed the switches.
    if (!rule.fits(switchOf(link, switches::linkDescription), switchOf(link, switches::linkTime),
                   switchOf(link, switches::linkTimeAboveZero))) {
      continue;
    }
    const bool isAboveZero = !rule.testsTime || link.Cells(taskLinkCells::time).ResultIU() > 0;
    const std::string format = linkFormat(isAboveZero ? rule.format : rule.otherwise, parts);
    // An empty formula would clear the cell, and with it the link's text.
    if (!format.empty()) link.CellsU("Fields.Format[1]").FormulaForce(format);
  }
}

}  // namespace quorvel::addin
