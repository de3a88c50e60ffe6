#include "formats/vdx/font_numbers.h"

#include <algorithm>

#include "base/text.h"

namespace quorvel::formats::vdx {

using host::SectionNumber;
using host::Value;
using host::ValueKind;

void FontNumbers::add(int number, const std::string& name) {
  names_.try_emplace(number, name);
  numbers_.try_emplace(foldCase(name), number);
}

const std::string* FontNumbers::nameOf(int number) const {
  const auto found = names_.find(number);
  return found == names_.end() ? nullptr : &found->second;
}

int FontNumbers::numberOf(const std::string& name) {
  if (const auto found = numbers_.find(foldCase(name)); found != numbers_.end()) return found->second;
  // Number 0 is what cells say that name no font.
  const int number = names_.empty() ? 1 : std::max(names_.rbegin()->first + 1, 1);
  add(number, name);
  return number;
}

bool holdsFont(const host::CellKey& key) {
  if (key.section == SectionNumber::Character) return key.column == 0 || key.column == 18 || key.column == 19;
  return key.section == SectionNumber::Paragraph && key.column == 9;
}

void nameFont(host::Cell& cell, const FontNumbers& fonts) {
  if (cell.value.kind() != ValueKind::Number) return;
  const double number = cell.value.internal();
  if (!(number >= 0 && number <= 1'000'000) || number != static_cast<int>(number)) return;
  if (const std::string* const name = fonts.nameOf(static_cast<int>(number))) cell.value = Value::text(*name);
}

void numberFont(host::Cell& cell, FontNumbers& fonts) {
  // "Themed" is a word for what the theme decides.
  if (!cell.value.isText() || cell.value.textView().empty() || cell.value.textView() == "Themed") return;
  cell.value = Value::number(fonts.numberOf(std::string(cell.value.textView())));
}

}  // namespace quorvel::formats::vdx
