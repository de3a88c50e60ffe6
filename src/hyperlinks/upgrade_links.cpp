#include "hyperlinks/upgrade_links.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "base/ask_again.h"
#include "base/basic_text.h"
#include "base/text.h"
#include "hyperlinks/link_paths.h"
#include "hyperlinks/link_record.h"
#include "links/link_target.h"
#include "schema/cells.h"
#include "sheets/page_walk.h"
#include "sheets/rows.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

/// Letter case counts: a drawing with an ending in capitals is a document.
bool isDrawing(std::string_view address) {
  constexpr std::array<std::string_view, 4> endings{"vsd", ".vsdx", ".vsdm", ".vdx"};
  return std::ranges::any_of(endings, [&](std::string_view ending) { return address.ends_with(ending); });
}

/// The name without the bookmark that follows the ending of an office document.
std::string withoutBookmark(const std::string& name) {
  const std::string folded = foldCase(name);
  constexpr std::array<std::string_view, 3> endings{".doc#", ".xls#", ".ppt#"};
  for (const std::string_view ending : endings) {
    const long place = inStr(folded, ending);
    if (place > 0) return left(name, place + static_cast<long>(ending.size()) - 2);
  }
  return name;
}

/// The columns of a link that depend on its version.
struct Link {
  std::string address, subAddress, record;
};

/// A link that was copied from a newer drawing has its record: what it says of the path is not in the address.
bool hasRecord(const std::string& record) {
  constexpr std::array kinds{linkKinds::task, linkKinds::document, linkKinds::program, linkKinds::webPage,
                             linkKinds::email};
  return std::ranges::find(kinds, getTypeOfHyperLink("hyperLinkType", record)) != kinds.end();
}

Link upgraded(Link link) {
  if (hasRecord(link.record)) return link;
  const std::string folder = folderOf(link.address), name = fileNameOf(link.address);
  if (link.address.empty() || isDrawing(link.address)) {
    link.record = linkRecord(linkKinds::task, pathKinds::relative, folder, name);
    link.subAddress = getPageTaskNamWithSpace(link.subAddress);
  } else if (equalIgnoringCase(right(link.address, 3), "exe")) {
    link.record = linkRecord(linkKinds::program, pathKinds::absolute, folder, name);
  } else if (startsWithIgnoringCase(link.address, "mailto:")) {
    link.record = linkKinds::email;
  } else if (startsWithIgnoringCase(link.address, "http://") || startsWithIgnoringCase(link.address, "https://")) {
    link.record = linkKinds::webPage;
  } else if (!link.subAddress.empty()) {
    link.address += "#" + std::exchange(link.subAddress, {});
    link.record = linkRecord(linkKinds::document, pathKinds::absolute, folder, name);
  } else {
    link.record = linkRecord(linkKinds::document, pathKinds::absolute, folder, withoutBookmark(name));
  }
  return link;
}

void upgrade(const Hyperlink& link) {
  const Maybe<std::string> address = askAgain([&] { return link.Address(); });
  const Maybe<std::string> subAddress = askAgain([&] { return link.SubAddress(); });
  const Maybe<std::string> record = askAgain([&] { return link.Frame(); });
  if (!address || !subAddress || !record) return;
  const Link now = upgraded({*address, *subAddress, *record});
  if (now.record != *record) askAgain([&] { return link.SetFrame(now.record); });
  // A bookmark is only removed from its column once it is in the address.
  if (now.address != *address && !askAgain([&] { return link.SetAddress(now.address); })) return;
  if (now.subAddress != *subAddress) askAgain([&] { return link.SetSubAddress(now.subAddress); });
}

}  // namespace

void updateHyperLinkTask(const Shape& shape) {
  for (const Hyperlink& link : everyHyperlink(shape)) upgrade(link);
}

std::string keptLinksWithRecords(const std::string& text) {
  if (!text.starts_with(';')) return text;
  std::string all;
  for (const std::string_view entry : splitAt(std::string_view(text).substr(1), ';')) {
    const std::vector<std::string_view> parts = splitAt(entry, ',');
    // A text with records, or one whose parts cannot be told apart.
    if (parts.size() != 4) return text;
    const Link link = upgraded({std::string(parts[0]), std::string(parts[2]), {}});
    all += ";" + link.address + "," + std::string(parts[1]) + "," + link.subAddress + "," + std::string(parts[3]) +
           "," + link.record;
  }
  return all;
}

void setSubAddress(const Shape& shape, std::string_view cellName) {
  const bool isConnector = cellName == schema::connectorCells::shownId.cell();
  if (!isConnector && cellName != schema::taskCells::linked.cell()) return;
  const Cell stored = shape.Cells(schema::linkedCells::storedTaskId);
  const auto store = [&](const std::string& id) { askAgain([&] { return stored.FormulaForce(quoted(id)); }); };
  store(isConnector ? std::string(schema::connectorCells::noTarget) : std::string());
  const std::vector<Hyperlink> links = everyHyperlink(shape);
  if (links.empty()) return;
  const Maybe<std::string> address = askAgain([&] { return links.front().Address(); });
  const Maybe<std::string> target = askAgain([&] { return links.front().SubAddress(); });
  if (!address || !target) return;
  // Later versions wrote the Task too, also of another drawing. It is what the link was last seen to lead to; another
  // ID that is shown was typed.
  if (target->find('/') != std::string::npos) {
    store(linkTarget(*target).taskId);
    return;
  }
  if (!address->empty()) return;
  const Shape owner = isConnector ? shape : shape.Parent();
  const Maybe<std::string> shown = askAgain([&] { return owner.Cells(cellName).ResultStr(visio::unitsNone); });
  if (!shown) return;
  std::string completed = *target;
  forEachShape(shape.Document(), [&](const Shape& task) {
    if (!askAgain([&] { return IsTask(task); })) return;
    if (!(askAgain([&] { return task.Cells(schema::taskCells::id).ResultStr(visio::unitsNone); }) == *shown)) return;
    completed = subAddressOf(completed, *shown);
    askAgain([&] { return links.front().SetSubAddress(completed); });
    store(*shown);
  });
}

}  // namespace quorvel::addin
