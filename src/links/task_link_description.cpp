#include "links/task_link_description.h"

#include "base/basic_text.h"
#include "document/document_cells.h"
#include "links/task_link_picture.h"
#include "shapes/rows.h"
#include "vocab/parse.h"

namespace quorvel::addin {
namespace {

Maybe<double> switchOf(const Shape& link, std::string_view cell) {
  const Maybe<std::string> text = link.Cells(cell).ResultStr(visio::unitsNone);
  return text ? Maybe<double>(val(*text)) : Maybe<double>();
}

}  // namespace

void replaceSingleQoutes(const Shape& link) {
  const std::string description = link.Cells("Prop.Task_Link").ResultStr(visio::unitsNone).or_({});
  // An inherited row will do here: unlike the rows of a first drop, this one is no mark.
  if (link.CellExists("User.Single_TaskLink", 0) == false) addUserRow(link, "Single_TaskLink");
  link.Cells("User.Single_TaskLink").FormulaForce(quoted(withEscapedApostrophes(description)));
}

void GetAddedTaskLinkDescription2(const Shape& link) {
  const Document document = link.Document();
  const PictureParts parts{parse(documentText(document, "User.Time_Unit"), ";"),
                           parse(documentText(document, "User.Time_Unit_Disply"), ";"), listSeparator(document)};
  replaceSingleQoutes(link);
  // A link that was copied to a foreign drawing.
  if (parts.separator.empty()) return;
  for (const LinkPictureRule& rule : linkPictureRules()) {
    // Read anew for each rule: a write before may have been answered by a change of the switches.
    if (!rule.fits(switchOf(link, "User.TaskLink_txt_Visible"), switchOf(link, "User.TaskLink_Visible"),
                   switchOf(link, "User.TimegreaterThanzero"))) {
      continue;
    }
    const bool isAboveZero = !rule.testsTime || link.Cells("Prop.Time_Between_Tasks.Value").ResultIU() > 0;
    const std::string picture = linkPicture(isAboveZero ? rule.picture : rule.otherwise, parts);
    // An empty formula would clear the cell, and with it all that the link shows.
    if (!picture.empty()) link.CellsU("Fields.Format[1]").FormulaForce(picture);
  }
}

}  // namespace quorvel::addin
