#include "display/field_hyperlinks.h"

#include "base/ask_again.h"
#include "base/basic_text.h"
#include "base/text.h"
#include "schema/details.h"
#include "sheets/shape_classes.h"
#include "vocab/parse.h"

namespace quorvel::addin {
namespace {

/// The parts of a link's text: the first five are always there, the other two for a link that has either.
namespace part {
enum Index : std::size_t { address, description, subAddress, isDefault, frame, zoom, newWindow, count };
}

constexpr const char* yes = "-1";
constexpr const char* no = "0";

/// A "," inside a link makes parts too; those are no zoom.
bool hasZoomAndWindow(const std::vector<std::string_view>& parts) {
  return parts.size() == part::count && (parts[part::zoom].empty() || parts[part::zoom].starts_with("zoom=")) &&
         (parts[part::newWindow] == yes || parts[part::newWindow] == no);
}

}  // namespace

Maybe<std::string> hyperlinksAsText(const Shape& line, LinkParts parts) {
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
    const auto zoom = askAgain([&] { return link.ExtraInfo(); });
    const auto newWindow = askAgain([&] { return link.NewWindow(); });
    if (!address || !description || !subAddress || !isDefault || !frame || !zoom || !newWindow) return {};
    text += ";" + *address + "," + *description + "," + *subAddress + "," + (*isDefault ? yes : no);
    if (parts == LinkParts::WithoutFrame) continue;
    text += "," + *frame;
    if (!zoom->empty() || *newWindow) text += "," + *zoom + "," + (*newWindow ? yes : no);
  }
  return text;
}

void restoreHyperlinks(const Shape& line, std::string_view text) {
  const std::vector<std::string> entries = parse(text, ";");
  for (std::size_t i = 0; i + 1 < entries.size(); ++i) {
    const Hyperlinks links = askAgain([&] { return line.Hyperlinks(); });
    const Hyperlink link = askAgain([&] { return links.Add(); });
    const std::vector<std::string_view> parts = splitAt(entries[i], ',');
    const auto textAt = [&](std::size_t n) { return n < parts.size() ? std::string(parts[n]) : std::string(); };
    const auto has = [&](std::size_t n) { return n < parts.size(); };
    if (has(part::address)) askAgain([&] { return link.SetAddress(textAt(part::address)); });
    if (has(part::description)) askAgain([&] { return link.SetDescription(textAt(part::description)); });
    if (has(part::subAddress)) askAgain([&] { return link.SetSubAddress(textAt(part::subAddress)); });
    if (has(part::isDefault)) askAgain([&] { return link.SetIsDefaultLink(val(textAt(part::isDefault)) != 0); });
    if (has(part::frame)) askAgain([&] { return link.SetFrame(textAt(part::frame)); });
    if (!hasZoomAndWindow(parts)) continue;
    askAgain([&] { return link.SetExtraInfo(textAt(part::zoom)); });
    askAgain([&] { return link.SetNewWindow(parts[part::newWindow] == yes); });
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
