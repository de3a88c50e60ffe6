#include "display/field_hyperlinks.h"

#include "base/ask_again.h"
#include "base/basic_text.h"
#include "base/text.h"
#include "schema/details.h"
#include "sheets/shape_classes.h"
#include "vocab/parse.h"

namespace quorvel::addin {

Maybe<std::string> hyperlinksAsText(const Shape& line) {
  const Hyperlinks links = askAgain([&] { return line.Hyperlinks(); });
  const Maybe<int> count = askAgain([&] { return links.Count(); });
  if (!count) return {};
  std::string text;
  for (int i = 0; i < *count; ++i) {
    const Hyperlink link = askAgain([&] { return links.Item(i); });
    const auto address = askAgain([&] { return link.Address(); });
    const auto description = askAgain([&] { return link.Description(); });
    const auto subAddress = askAgain([&] { return link.SubAddress(); });
    const auto isDefault = askAgain([&] { return link.IsDefaultLink(); });
    const auto frame = askAgain([&] { return link.Frame(); });
    if (!address || !description || !subAddress || !isDefault || !frame) return {};
    text += ";" + *address + "," + *description + "," + *subAddress + "," + (*isDefault ? "-1" : "0") + "," + *frame;
  }
  return text;
}

void restoreHyperlinks(const Shape& line, std::string_view text) {
  const std::vector<std::string> entries = parse(text, ";");
  for (std::size_t i = 0; i + 1 < entries.size(); ++i) {
    const Hyperlinks links = askAgain([&] { return line.Hyperlinks(); });
    const Hyperlink link = askAgain([&] { return links.Add(); });
    const std::vector<std::string_view> parts = splitAt(entries[i], ',');
    const auto part = [&](std::size_t n) { return n < parts.size() ? std::string(parts[n]) : std::string(); };
    const auto has = [&](std::size_t n) { return n < parts.size(); };
    if (has(0)) askAgain([&] { return link.SetAddress(part(0)); });
    if (has(1)) askAgain([&] { return link.SetDescription(part(1)); });
    if (has(2)) askAgain([&] { return link.SetSubAddress(part(2)); });
    if (has(3)) askAgain([&] { return link.SetIsDefaultLink(val(part(3)) != 0); });
    if (has(4)) askAgain([&] { return link.SetFrame(part(4)); });
  }
}

std::string keptHyperlinks(const Shape& task, int position) {
  return askAgain([&] { return task.Cells(schema::detailAt(position).keptHyperlinks).ResultStr(visio::unitsNone); })
      .or_({});
}

void saveFieldHyperlinks(const Shape& subShape, ListRows& rows) {
  const std::string row = askAgain([&] { return subShape.Data3(); }).or_({});
  if (row.starts_with(marks::icon) || !(askAgain([&] { return subShape.Data1(); }) == marks::detail)) return;
  const Maybe<int> position = schema::positionOfRow(row);
  if (!position) return;
  const Maybe<std::string> links = hyperlinksAsText(subShape);
  if (!links) return;
  const bool isListRow = *position <= schema::lastListRow;
  if (isListRow) rows.labels[static_cast<std::size_t>(*position) - 1] = *links;
  if (isListRow && !links->empty()) return;
  const std::string_view cell = schema::detailAt(*position).keptHyperlinks;
  if (cell.empty()) return;
  askAgain([&] { return subShape.ContainingShape().Cells(cell).FormulaForce(quoted(*links)); });
}

}  // namespace quorvel::addin
