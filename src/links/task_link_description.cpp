#include "links/task_link_description.h"

#include "base/basic_text.h"
#include "links/task_link_picture.h"
#include "schema/cells.h"
#include "schema/display_switches.h"
#include "sheets/document_cells.h"
#include "sheets/rows.h"
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
  // An inherited row will do here: unlike the rows of a first drop, this one is no mark.
  if (link.CellExists(taskLinkCells::quotedDescription, 0) == false) addRow(link, taskLinkCells::quotedDescription);
  link.Cells(taskLinkCells::quotedDescription).FormulaForce(quoted(withEscapedApostrophes(description)));
}

void GetAddedTaskLinkDescription2(const Shape& link) {
  const Document document = link.Document();
  const PictureParts parts{parse(documentText(document, schema::documentCells::timeUnits), ";"),
                           parse(documentText(document, schema::documentCells::timeUnitAbbreviations), ";"),
                           listSeparator(document)};
  replaceSingleQoutes(link);
  // A link that was copied to a foreign drawing.
  if (parts.separator.empty()) return;
  for (const LinkPictureRule& rule : linkPictureRules()) {
    // Read anew for each rule: a write before may have been answered by a change of the switches.
    if (!rule.fits(switchOf(link, switches::linkDescription), switchOf(link, switches::linkTime),
                   switchOf(link, switches::linkTimeAboveZero))) {
      continue;
    }
    const bool isAboveZero = !rule.testsTime || link.Cells(taskLinkCells::time).ResultIU() > 0;
    const std::string picture = linkPicture(isAboveZero ? rule.picture : rule.otherwise, parts);
    // An empty formula would clear the cell, and with it all that the link shows.
    if (!picture.empty()) link.CellsU("Fields.Format[1]").FormulaForce(picture);
  }
}

}  // namespace quorvel::addin
