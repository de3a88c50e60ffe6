#include "hyperlinks/upgrade_links.h"

#include <algorithm>
#include <array>
#include <string>

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

void upgrade(const Hyperlink& link) {
  const Maybe<std::string> address = askAgain([&] { return link.Address(); });
  const Maybe<std::string> subAddress = askAgain([&] { return link.SubAddress(); });
  if (!address || !subAddress) return;
  const auto setFrame = [&](const std::string& record) { askAgain([&] { return link.SetFrame(record); }); };
  const std::string folder = folderOf(*address), name = fileNameOf(*address);
  if (address->empty() || isDrawing(*address)) {
    setFrame(linkRecord(linkKinds::task, pathKinds::relative, folder, name));
    askAgain([&] { return link.SetSubAddress(getPageTaskNamWithSpace(*subAddress)); });
  } else if (equalIgnoringCase(right(*address, 3), "exe")) {
    setFrame(linkRecord(linkKinds::program, pathKinds::absolute, folder, name));
  } else if (startsWithIgnoringCase(*address, "mailto:")) {
    setFrame(std::string(linkKinds::email));
  } else if (startsWithIgnoringCase(*address, "http://") || startsWithIgnoringCase(*address, "https://")) {
    setFrame(std::string(linkKinds::webPage));
  } else if (!subAddress->empty()) {
    // The bookmark is only removed from its column once it is in the address.
    if (askAgain([&] { return link.SetAddress(*address + "#" + *subAddress); }))
      askAgain([&] { return link.SetSubAddress(""); });
    setFrame(linkRecord(linkKinds::document, pathKinds::absolute, folder, name));
  } else {
    setFrame(linkRecord(linkKinds::document, pathKinds::absolute, folder, withoutBookmark(name)));
  }
}

}  // namespace

void updateHyperLinkTask(const Shape& shape) {
  for (const Hyperlink& link : everyHyperlink(shape)) upgrade(link);
}

void setSubAddress(const Shape& shape, std::string_view cellName) {
  const bool isConnector = cellName == schema::connectorCells::shownId.cell();
  if (!isConnector && cellName != schema::taskCells::linked.cell()) return;
  const Cell stored = shape.Cells(schema::linkedCells::storedTaskId);
  stored.FormulaForce(quoted(isConnector ? schema::connectorCells::noTarget : std::string_view()));
  const std::vector<Hyperlink> links = everyHyperlink(shape);
  if (links.empty() || !(askAgain([&] { return links.front().Address(); }) == "")) return;
  const Maybe<std::string> page = askAgain([&] { return links.front().SubAddress(); });
  if (!page) return;
  // Later versions wrote the Task too. It is what the link was last seen to lead to; another ID that is shown is typed.
  if (page->find('/') != std::string::npos) {
    stored.FormulaForce(quoted(linkTarget(*page).taskId));
    return;
  }
  const Shape owner = isConnector ? shape : shape.Parent();
  const Maybe<std::string> shown = owner.Cells(cellName).ResultStr(visio::unitsNone);
  if (!shown) return;
  std::string target = *page;
  forEachShape(shape.Document(), [&](const Shape& task) {
    if (!IsTask(task) || task.Cells(schema::taskCells::id).ResultStr(visio::unitsNone) != *shown) return;
    target = subAddressOf(target, *shown);
    askAgain([&] { return links.front().SetSubAddress(target); });
    stored.FormulaForce(quoted(*shown));
  });
}

}  // namespace quorvel::addin
