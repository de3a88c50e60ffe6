#include "hyperlinks/write_links.h"

#include "base/ask_again.h"
#include "hyperlinks/link_paths.h"
#include "hyperlinks/link_record.h"
#include "links/link_target.h"

namespace quorvel::addin {
namespace {

using namespace linkColumns;

std::string recordOf(const LinkRow& row) {
  return linkRecord(row[kind], row[relOrAbs], row[absolutePath], row[documentName]);
}

/// What becomes of the address of a link to the drawing itself.
enum class OwnAddress { Untouched, Empty };

void write(const Hyperlink& link, const LinkRow& row, bool isOtherDocument, OwnAddress ownAddress) {
  const auto put = [&](auto set) { return askAgain(set); };
  put([&] { return link.SetDescription(row[description]); });
  const bool isDocument = row[kind] == linkKinds::document, isTask = row[kind] == linkKinds::task;
  if (isDocument) {
    put([&] { return link.SetAddress(row[page].empty() ? row[location] : row[location] + "#" + row[page]); });
  } else {
    if (isOtherDocument) {
      put([&] { return link.SetAddress(row[location]); });
    } else if (ownAddress == OwnAddress::Empty) {
      put([&] { return link.SetAddress(""); });
    }
    // Written once: of a page alone, on its way to page and Task, the shape would think that its target is gone.
    const bool namesTask = isTask && !row[page].empty() && !row[task].empty();
    put([&] { return link.SetSubAddress(namesTask ? subAddressOf(row[page], row[task]) : row[page]); });
  }
  if (isTask) put([&] { return link.SetExtraInfo(row[page].empty() ? std::string() : row[zoom]); });
  put([&] { return link.SetNewWindow(row[newWindow] == "True"); });
  put([&] { return link.SetFrame(recordOf(row)); });
}

int countOf(const Shape& shape) {
  return askAgain([&] { return shape.Hyperlinks().Count(); }).or_(0);
}

Hyperlink linkAt(const Shape& shape, int index) {
  return askAgain([&] { return shape.Hyperlinks().Item(index); });
}

/// The host appends in this section, whatever place is asked for: a new link never moves one that is there.
Hyperlink addedLink(const Shape& shape, int place) {
  if (!askAgain([&] { return shape.AddRow(visio::sectionHyperlink, place, 0); })) return {};
  return linkAt(shape, countOf(shape) - 1);
}

void replaceLinks(const Document& document, const Shape& shape, std::span<const LinkRow> rows) {
  if (countOf(shape) > 0 && !askAgain([&] { return shape.DeleteSection(visio::sectionHyperlink); })) return;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const Hyperlink link = addedLink(shape, static_cast<int>(i));
    if (link) write(link, rows[i], notCurrentDOc(document, rows[i][absolutePath]), OwnAddress::Untouched);
  }
}

void addLinks(const Document& document, const Shape& shape, std::span<const LinkRow> rows) {
  for (const LinkRow& row : rows) {
    const bool isNew = row[state] == linkStates::added;
    if (!isNew && (row[state] != linkStates::edited || checkSaved(shape, row) == true)) continue;
    const Hyperlink link = addedLink(shape, countOf(shape) - 1);
    const bool isOther = notCurrentDOc(document, row[absolutePath] + row[documentName]);
    if (link) write(link, row, isOther, isNew ? OwnAddress::Untouched : OwnAddress::Empty);
  }
}

}  // namespace

Maybe<bool> checkSaved(const Shape& shape, const LinkRow& row) {
  const std::string target = row[page].empty() || row[task].empty() ? row[page] : subAddressOf(row[page], row[task]);
  const int count = countOf(shape);
  for (int k = 0; k <= count; ++k) {
    const Hyperlink link = linkAt(shape, k);
    if (!link) return {};
    const Maybe<std::string> address = link.Address();
    const bool matches = link.SubAddress() == target && link.Frame() == recordOf(row) &&
                         link.Description() == row[description] && address && !address->empty() &&
                         address->substr(0, address->size() - 1) == row[location];
    if (!matches) askAgain([&] { return link.Delete(); });
  }
  return {};
}

void AddHyperLink_fnc(const Document& document, std::span<const Shape> selection, std::span<LinkRow> rows) {
  if (selection.size() == 1) {
    replaceLinks(document, selection.front(), rows);
  } else {
    for (const Shape& shape : selection) addLinks(document, shape, rows);
  }
  for (LinkRow& row : rows) row[state] = linkStates::written;
}

}  // namespace quorvel::addin
