// Which shapes came, went, moved or were redrawn since the journal was last read: whoever follows where things lie on
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
    PageId page;                        ///< where it stands or stood
    bool came = false;                  ///< it was made or came back, or went
    bool stood = false;                 ///< it stood at the top of the page before, in the box below
    std::array<double, 4> boxBefore{};  ///< left, bottom, right and top on the page, in inches
    bool placed = false;                ///< its place, size or turn changed
    bool still = false;                 ///< nothing of it moved on the page, though cells of its place changed
    bool ended = false;                 ///< an end of a 1-D shape changed
    /// BeginX, BeginY, EndX and EndY before the first change, in inches; meaningful when `ended`.
    std::array<double, 4> endsBefore{};
  };

  /// A shape that came.
  void noteArrival(const Sheet& sheet);
  /// A shape that is about to go.
  void noteLeaving(const Store& store, const Sheet& sheet);
  /// A shape that is about to change its group. It stays where it is on the page.
  void noteRegrouping(const Store& store, const Sheet& sheet);
  /// Call before the cell changes.
  void noteCell(const Store& store, const Sheet& sheet, const CellKey& key);
  void noteSection(const Sheet& sheet, SectionNumber section);

  /// While one stands, shapes are grouped or ungrouped: their places are told anew, and nothing moves on the page.
  class Standstill {
   public:
    explicit Standstill(PlacementJournal& journal) : journal_(&journal) { ++journal_->standstills_; }
    ~Standstill() { end(); }
    Standstill(const Standstill&) = delete;
    Standstill& operator=(const Standstill&) = delete;
    void end() {
      if (journal_) --std::exchange(journal_, nullptr)->standstills_;
    }

   private:
    PlacementJournal* journal_;
  };

  /// In the order of the first change. The journal is empty afterwards.
  std::vector<Entry> take();
  /// True when so much changed that entries were let go: what is known of pages is worth nothing then.
  bool takeOverflow();
  bool isEmpty() const { return entries_.empty() && !overflow_; }

 private:
  Entry* entryOf(const Sheet& sheet);
  static void keepBox(const Store& store, const Sheet& sheet, Entry& entry);

  std::vector<Entry> entries_;
  std::unordered_map<SheetId, std::size_t> places_;
  bool overflow_ = false;
  int standstills_ = 0;
};

}  // namespace quorvel::host
