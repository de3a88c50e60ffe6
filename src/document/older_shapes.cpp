#include "document/older_shapes.h"

#include <string>

#include "display/field_hyperlinks.h"
#include "schema/details.h"
#include "sheets/cell_writes.h"
#include "sheets/page_walk.h"
#include "sheets/rows.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {

void storeLineHyperlinks(const Shape& line, const Shape& task) {
  const Maybe<std::string> tag = askAgain([&] { return line.Data2(); });
  const Maybe<std::string> links = hyperlinksAsText(line, LinkParts::WithoutFrame);
  if (!tag || !links) return;
  if (*tag == schema::tags::guidelines || *tag == schema::tags::resources) {
    const Maybe<std::string> shown = line.Characters().Text();
    for (const schema::Detail& detail : schema::details) {
      if (detail.tag != *tag || !shown) continue;
      if (!(task.Cells(detail.row).ResultStr(visio::unitsNone) == *shown)) continue;
      putText(task, detail.keptHyperlinks, *links);
      return;
    }
    return;
  }
  const std::string row = "User." + *tag + "_Hyper";
  if (task.CellExists(row, 0) == true) putText(task, row, *links);
}

void updateShapesBefore13(const Document& document) {
  forEachShape(document, [&](const Shape& task) {
    if (!askAgain([&] { return IsTask(task); })) return;
    // A row that is there may keep links.
    for (const schema::NamedRow& row : schema::keptHyperlinkRows) {
      if (lacksRow(task, row) && addRow(task, row)) putText(task, row, "");
    }
    for (const Shape& member : everyMember(task)) {
      if (!(member.Data1() == marks::detail) || !(member.Hyperlinks().Count() > 0)) continue;
      putFormula(member, "EndArrow", "10");
      storeLineHyperlinks(member, task);
    }
  });
}

void updateShapesBefore16(const Document& document) {
  forEachShape(document, [&](const Shape& shape) {
    if (askAgain([&] { return IsTask(shape); })) putText(shape, "EventDrop", "");
    if (shape.Data1() == marks::logo && lacksRow(shape, schema::shapeCells::alreadyAdded))
      addRow(shape, schema::shapeCells::alreadyAdded);
  });
}

}  // namespace quorvel::addin
