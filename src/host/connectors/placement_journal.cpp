#include "host/connectors/placement_journal.h"

#include <algorithm>
#include <utility>

#include "host/cells/cell_table.h"
#include "host/connectors/connector_ends.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

/// The journal of an engine without commands is never read; it must not grow without limit.
constexpr std::size_t mostEntries = 1 << 18;

}  // namespace

PlacementJournal::Entry* PlacementJournal::entryOf(const Sheet& sheet) {
  if (!sheet.isShape()) return nullptr;
  const auto [place, made] = places_.try_emplace(sheet.id, entries_.size());
  if (!made) {
    Entry& known = entries_[place->second];
    known.unmoved = known.unmoved && regroupings_ > 0;
    return &known;
  }
  if (entries_.size() >= mostEntries) {
    entries_.clear();
    places_.clear();
    overflow_ = true;
    places_.emplace(sheet.id, 0);
  }
  Entry entry;
  entry.sheet = sheet.id;
  entry.page = sheet.page;
  entry.unmoved = regroupings_ > 0;
  entries_.push_back(entry);
  return &entries_.back();
}

void PlacementJournal::keepBox(const Store& store, const Sheet& sheet, Entry& entry) {
  if (entry.wasOnTop || entry.appeared || entry.placed || sheet.parent) return;
  entry.wasOnTop = true;
  const Box box = boxOnPage(store, sheet.id);
  entry.boxBefore = {box.left, box.bottom, box.right, box.top};
}

void PlacementJournal::noteArrival(const Sheet& sheet) {
  if (Entry* entry = entryOf(sheet)) entry->appeared = true;
}

void PlacementJournal::noteLeaving(const Store& store, const Sheet& sheet) {
  Entry* entry = entryOf(sheet);
  if (!entry) return;
  keepBox(store, sheet, *entry);
  entry->appeared = true;
}

void PlacementJournal::noteRegrouping(const Store& store, const Sheet& sheet) {
  if (Entry* entry = entryOf(sheet)) keepBox(store, sheet, *entry);
}

void PlacementJournal::noteCell(const Store& store, const Sheet& sheet, const CellKey& key) {
  if (isGeometry(key.section)) return noteSection(sheet, key.section);
  if (key.section != SectionNumber::Object) return;
  static const std::array<CellKey, 4> ends = {objectCell("BeginX"), objectCell("BeginY"), objectCell("EndX"),
                                              objectCell("EndY")};
  static const std::array<CellKey, 12> places = {
      objectCell("PinX"),    objectCell("PinY"),    objectCell("Width"),           objectCell("Height"),
      objectCell("LocPinX"), objectCell("LocPinY"), objectCell("Angle"),           objectCell("FlipX"),
      objectCell("FlipY"),   objectCell("ObjType"), objectCell("ShapePermeableX"), objectCell("ShapePermeableY")};
  if (key.row == ends[0].row && std::find(ends.begin(), ends.end(), key) != ends.end()) {
    Entry* entry = entryOf(sheet);
    if (!entry || entry->ended) return;
    entry->ended = true;
    for (std::size_t i = 0; i < ends.size(); ++i) entry->endsBefore[i] = cellNumber(store, sheet.id, ends[i]);
  } else if (std::find(places.begin(), places.end(), key) != places.end()) {
    Entry* entry = entryOf(sheet);
    if (!entry || entry->placed) return;
    keepBox(store, sheet, *entry);
    entry->placed = true;
  }
}

void PlacementJournal::noteSection(const Sheet& sheet, SectionNumber section) {
  if (isGeometry(section)) entryOf(sheet);
}

std::vector<PlacementJournal::Entry> PlacementJournal::take() {
  places_.clear();
  return std::exchange(entries_, {});
}

bool PlacementJournal::takeOverflow() { return std::exchange(overflow_, false); }

}  // namespace quorvel::host
