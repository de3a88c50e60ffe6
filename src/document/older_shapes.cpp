#include "document/older_shapes.h"

#include <string>

#include "base/basic_text.h"
#include "schema/details.h"
#include "sheets/page_walk.h"
#include "sheets/rows.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

std::string linksAsText(const Shape& line) {
  std::string text;
  for (const Hyperlink& link : everyHyperlink(line)) {
    const auto read = [](auto call) { return askAgain(call).or_({}); };
    text += ";" + read([&] { return link.Address(); }) + "," + read([&] { return link.Description(); }) + "," +
            read([&] { return link.SubAddress(); }) + "," +
            (askAgain([&] { return link.IsDefaultLink(); }) == true ? "-1" : "0");
  }
  return text;
}

void put(const Shape& shape, std::string_view cell, const std::string& formula) {
  askAgain([&] { return shape.Cells(cell).FormulaForce(formula); });
}

}  // namespace

void storeLineHyperlinks(const Shape& line, const Shape& task) {
  const Maybe<std::string> tag = askAgain([&] { return line.Data2(); });
  if (!tag) return;
  const std::string links = quoted(linksAsText(line));
  if (*tag == schema::tags::guidelines || *tag == schema::tags::resources) {
    const Maybe<std::string> shown = line.Characters().Text();
    for (const schema::Detail& detail : schema::details) {
      if (detail.tag != *tag || !shown) continue;
      if (!(task.Cells(detail.row).ResultStr(visio::unitsNone) == *shown)) continue;
      put(task, detail.keptHyperlinks, links);
      return;
    }
    return;
  }
  const std::string row = "User." + *tag + "_Hyper";
  if (task.CellExists(row, 0) == true) put(task, row, links);
}

void updateShapesBefore13(const Document& document) {
  forEachShape(document, [&](const Shape& task) {
    if (!askAgain([&] { return IsTask(task); })) return;
    // A row that is there may keep links.
    for (const schema::NamedRow& row : schema::keptHyperlinkRows) {
      if (lacksRow(task, row) && addRow(task, row)) put(task, row, quoted(""));
    }
    for (const Shape& member : everyMember(task)) {
      if (!(member.Data1() == marks::detail) || !(member.Hyperlinks().Count() > 0)) continue;
      put(member, "EndArrow", "10");
      storeLineHyperlinks(member, task);
    }
  });
}

void updateShapesBefore16(const Document& document) {
  forEachShape(document, [&](const Shape& shape) {
    if (askAgain([&] { return IsTask(shape); })) put(shape, "EventDrop", quoted(""));
    if (shape.Data1() == marks::logo && lacksRow(shape, schema::shapeCells::alreadyAdded))
      addRow(shape, schema::shapeCells::alreadyAdded);
  });
}

}  // namespace quorvel::addin
