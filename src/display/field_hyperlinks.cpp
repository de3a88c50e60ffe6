#include "display/field_hyperlinks.h"

#include "base/basic_text.h"
#include "base/text.h"
#include "display/detail_fields.h"
#include "shapes/shape_classes.h"
#include "vocab/parse.h"

namespace quorvel::addin {

std::string hyperlinksAsText(const Shape& line) {
  std::string text;
  for (const Hyperlink& link : line.Hyperlinks().all()) {
    text += ";" + link.Address().or_({}) + "," + link.Description().or_({}) + "," + link.SubAddress().or_({}) + "," +
            (link.IsDefaultLink() == true ? "-1" : "0") + "," + link.Frame().or_({});
  }
  return text;
}

void restoreHyperlinks(const Shape& line, std::string_view text) {
  const std::vector<std::string> entries = parse(text, ";");
  for (std::size_t i = 0; i + 1 < entries.size(); ++i) {
    const Hyperlink link = line.Hyperlinks().Add();
    const std::vector<std::string_view> parts = splitAt(entries[i], ',');
    const auto part = [&](std::size_t n) {
      return n < parts.size() ? Maybe<std::string>(std::string(parts[n])) : Maybe<std::string>();
    };
    link.SetAddress(part(0));
    link.SetDescription(part(1));
    link.SetSubAddress(part(2));
    if (const auto isDefault = part(3)) link.SetIsDefaultLink(val(*isDefault) != 0);
    link.SetFrame(part(4));
  }
}

void saveFieldHyperlinks(const Shape& subShape, ListRows& rows) {
  const std::string row = subShape.Data3().or_({});
  if (row.starts_with("Pic") || !(subShape.Data1() == marks::detail)) return;
  const Maybe<int> position = positionOfRow(row);
  if (!position) return;
  const Shape task = subShape.ContainingShape();
  const bool isListRow = *position <= lastListRow;
  const std::string links = subShape.Hyperlinks().Count() > 0 ? hyperlinksAsText(subShape) : std::string();
  if (isListRow) rows.labels[static_cast<std::size_t>(*position) - 1] = links;
  if (!isListRow || links.empty()) task.Cells(cellOfKeptHyperlinks(*position)).FormulaForce(quoted(links));
}

}  // namespace quorvel::addin
