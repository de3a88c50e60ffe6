// Which names rows had before, so that a handle to a row or to one of its cells follows the row when it is renamed.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "host/cells/cell_key.h"
#include "host/sheet/ids.h"

namespace quorvel::host {

class RowRenames {
 public:
  void note(SheetId sheet, SectionNumber section, RowKey from, RowKey to) {
    std::vector<Name>& given = given_[sheet][CellKey{section, from, 0}];
    // A handle has one byte for this. Rows that are renamed more often than that are no longer followed.
    if (given.size() < mostTurns) given.push_back({to, turnOf(sheet, section, to)});
  }

  /// How often a row of this sheet has lost the name. A handle keeps the number, which identifies the row that it was
  /// made for from a later row of the same name.
  std::uint8_t turnOf(SheetId sheet, SectionNumber section, RowKey row) const {
    const std::vector<Name>* given = find(sheet, section, row);
    return given ? static_cast<std::uint8_t>(given->size()) : std::uint8_t{0};
  }

  /// The present name of the row that had the name `row` at that turn.
  RowKey follow(SheetId sheet, SectionNumber section, RowKey row, std::uint8_t turn) const {
    for (int renames = 0; renames < mostRenames; ++renames) {
      const std::vector<Name>* given = find(sheet, section, row);
      if (!given || turn >= given->size()) return row;
      const Name next = (*given)[turn];
      row = next.row;
      turn = next.turn;
    }
    return row;
  }

 private:
  struct Name {
    RowKey row;
    std::uint8_t turn;
  };
  static constexpr std::size_t mostTurns = 255;
  static constexpr int mostRenames = 100'000;

  const std::vector<Name>* find(SheetId sheet, SectionNumber section, RowKey row) const {
    const auto ofSheet = given_.find(sheet);
    if (ofSheet == given_.end()) return nullptr;
    const auto found = ofSheet->second.find(CellKey{section, row, 0});
    return found == ofSheet->second.end() ? nullptr : &found->second;
  }

  std::unordered_map<SheetId, std::unordered_map<CellKey, std::vector<Name>>> given_;
};

}  // namespace quorvel::host
