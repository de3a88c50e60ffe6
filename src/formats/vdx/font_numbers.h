// Fonts in the single-file format go by number, everywhere else by name.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "host/cells/cell_key.h"
#include "host/sheet/sheet.h"

namespace quorvel::formats::vdx {

class FontNumbers {
 public:
  /// The first name of a number and the first number of a name hold.
  void add(int number, const std::string& name);
  /// Null for a number that no font has.
  const std::string* nameOf(int number) const;
  /// Gives a new font the next number.
  int numberOf(const std::string& name);
  const std::map<int, std::string>& all() const { return names_; }

 private:
  std::map<int, std::string> names_;
  std::map<std::string, int, std::less<>> numbers_;  ///< by name in small letters
};

bool holdsFont(const host::CellKey& key);
/// The cell with the font's name for its number, and back. A value that is no font stays.
void nameFont(host::Cell& cell, const FontNumbers& fonts);
void numberFont(host::Cell& cell, FontNumbers& fonts);

}  // namespace quorvel::formats::vdx
