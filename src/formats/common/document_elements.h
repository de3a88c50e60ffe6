// Elements of documents and pages that read the same in packages and in the single-file format of older releases.
#pragma once

#include <initializer_list>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/maybe.h"
#include "formats/common/read_state.h"
#include "formats/package/xml_reading.h"
#include "formats/package/xml_writing.h"
#include "host/sheet/store.h"

namespace quorvel::formats {

/// Takes in a DocumentSettings element; the style sheets are read before.
void readSettings(ReadState& state, CarriedDocument& carry, pugi::xml_node node);
void readColours(ReadState& state, CarriedDocument& carry, pugi::xml_node node);
/// Takes in the style sheets; `readSheet` reads the attributes and contents of one.
void readStyles(ReadState& state, pugi::xml_node node, void (*readSheet)(ReadState&, host::Sheet&, pugi::xml_node));
/// Makes a master for each entry of a Masters element, numbered as the file numbers them; what is no master, or has a
/// number that is used already, is added to `unread` unchanged.
std::vector<std::pair<host::MasterId, pugi::xml_node>> makeMasters(ReadState& state, pugi::xml_node list,
                                                                   std::string& unread);
/// Makes a page for an entry of a Pages element; `numbers` are those of the entries so far. Nothing for an entry that
/// is no page, or has a number that is used already; it is added to `unread` unchanged.
Maybe<host::PageId> makePage(ReadState& state, pugi::xml_node entry, std::unordered_set<int>& numbers,
                             std::string& unread);

/// Ties pages to the background pages of these file IDs, but closes no ring.
void resolveBackPages(ReadState& state, const std::vector<std::pair<host::PageId, int>>& wanted);

/// The DocumentSettings element: as it was read, with what has changed since.
std::string settingsXml(const host::Store& store, const host::Document& document);
void writeColours(XmlWriter& writer, const host::Document& document);

/// Attributes as they were read, but with what the engine says now; what the file left to its default stays out of it.
void writeEntryAttributes(XmlWriter& writer, const CarriedPage* carry,
                          std::initializer_list<std::pair<std::string_view, std::string_view>> current);
void writeConnects(XmlWriter& writer, const host::Page& page, const CarriedPage* carry);

}  // namespace quorvel::formats
