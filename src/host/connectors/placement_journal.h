// Which shapes were made, deleted, moved or redrawn since the journal was last read. Code that follows the places of
// pages reads it, so that the cost of following is that of the change.
#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/cells/cell_key.h"
#include "host/sheet/store.h"

namespace quorvel::host {

class PlacementJournal {
 public:
  struct Entry {
    SheetId sheet;
    PageId page;                        ///< where it is or was
    bool appeared = false;              ///< it was made, restored or deleted
    bool wasOnTop = false;              ///< it was in no group before, in the box below
    std::array<double, 4> boxBefore{};  ///< left, bottom, right and top on the page, in inches
    bool placed = false;                ///< its place, size or turn changed
    bool unmoved = false;               ///< nothing of it moved on the page, though cells of its place changed
    bool ended = false;                 ///< an end of a 1-D shape changed
    /// BeginX, BeginY, EndX and EndY before the first change, in inches; meaningful when `ended`.
    std::array<double, 4> endsBefore{};
  };

  /// A shape that was made or restored.
  void noteArrival(const Sheet& sheet);
  /// A shape that is about to be deleted.
  void noteLeaving(const Store& store, const Sheet& sheet);
  /// A shape that is about to change its group. It stays where it is on the page.
  void noteRegrouping(const Store& store, const Sheet& sheet);
  /// Call before the cell changes.
  void noteCell(const Store& store, const Sheet& sheet, const CellKey& key);
  void noteSection(const Sheet& sheet, SectionNumber section);

  /// While it lives, shapes are grouped or ungrouped: their coordinates are rewritten, and nothing moves on the page.
  class Regrouped {
   public:
    explicit Regrouped(PlacementJournal& journal) : journal_(&journal) { ++journal_->regroupings_; }
    ~Regrouped() { end(); }
    Regrouped(const Regrouped&) = delete;
    Regrouped& operator=(const Regrouped&) = delete;
    void end() {
      if (journal_) --std::exchange(journal_, nullptr)->regroupings_;
    }

   private:
    PlacementJournal* journal_;
  };

  /// In the order of the first change. The journal is empty afterwards.
  std::vector<Entry> take();
  /// True when so much changed that entries were dropped: what is known of pages must be discarded then.
  bool takeOverflow();
  bool isEmpty() const { return entries_.empty() && !overflow_; }

 private:
  Entry* entryOf(const Sheet& sheet);
  static void keepBox(const Store& store, const Sheet& sheet, Entry& entry);

  std::vector<Entry> entries_;
  std::unordered_map<SheetId, std::size_t> places_;
  bool overflow_ = false;
  int regroupings_ = 0;
};

}  // namespace quorvel::host
