#include "formats/vdx/whole_rows.h"

#include <algorithm>

#include "formats/common/carried.h"
#include "formats/vdx/vocabulary.h"
#include "host/sheet/inheritance.h"

namespace quorvel::formats::vdx {
namespace {

using host::CellDefinition;
using host::CellKey;
using host::Row;
using host::RowKey;
using host::SectionNumber;

constexpr std::string_view textBlock = "TextBlock";

/// Cells that files of the later releases do not list, and those that the first did not have.
constexpr std::string_view seldom[] = {"Locale", "Perpendicular"};
constexpr std::string_view later[] = {"Highlight",
                                      "DoubleStrikethrough",
                                      "RTLText",
                                      "UseVertical",
                                      "AsianFont",
                                      "ComplexScriptFont",
                                      "LocalizeFont",
                                      "ComplexScriptSize",
                                      "LangID",
                                      "BulletFont",
                                      "BulletFontSize",
                                      "LocalizeBulletFont",
                                      "TextPosAfterBullet",
                                      "Flags"};

std::vector<const CellDefinition*> listOf(SectionNumber section, bool first) {
  std::vector<const CellDefinition*> cells;
  const bool isObject = section == SectionNumber::Object;
  for (const CellDefinition& one : host::cellDefinitions()) {
    if (one.section != section || (isObject && elementOfObjectRow(one.row) != textBlock)) continue;
    if (vocabularyOf(CellKey{section, RowKey::index(isObject ? one.row : 0), one.column}) != Vocabulary::Core) continue;
    if (std::ranges::find(seldom, one.name) != std::end(seldom)) continue;
    if (!first || std::ranges::find(later, one.name) == std::end(later)) cells.push_back(&one);
  }
  return cells;
}

}  // namespace

const std::vector<const CellDefinition*>& wholeRow(SectionNumber section, bool first) {
  struct Lists {
    explicit Lists(bool isFirst)
        : textBlocks(listOf(SectionNumber::Object, isFirst)),
          characters(listOf(SectionNumber::Character, isFirst)),
          paragraphs(listOf(SectionNumber::Paragraph, isFirst)) {}
    const std::vector<const CellDefinition*> none, textBlocks, characters, paragraphs;
  };
  static const Lists ofFirst(true), ofOthers(false);
  const Lists& lists = first ? ofFirst : ofOthers;
  return section == SectionNumber::Object      ? lists.textBlocks
         : section == SectionNumber::Character ? lists.characters
         : section == SectionNumber::Paragraph ? lists.paragraphs
                                               : lists.none;
}

bool isTextBlock(const Row& row) { return elementOfObjectRow(row.key.index()) == textBlock; }

Row whole(const host::Store& store, const host::Sheet& sheet, SectionNumber section, const Row& row, bool first) {
  Row full = row;
  const CarriedRow* const carry = carried<CarriedRow>(row.extras);
  for (const CellDefinition* const definition : wholeRow(section, first)) {
    const CellKey key{section, row.key, definition->column};
    const CarriedCell* const text = carry ? carry->find(key.column) : nullptr;
    if (row.find(key.column) || (text && !text->older.empty())) continue;
    host::Cell& cell = full.at(key.column);
    cell.value = host::cellValue(store, sheet.id, key);
    // What a theme decides, older programs do not know.
    if (definition->units != host::CellUnits::Text && cell.value.isText() && cell.value.textView() == "Themed")
      cell.value = host::Value::number(definition->defaultNumber);
    cell.inheritsFormula = true;
  }
  return full;
}

void dropRepeated(const host::Store& store, host::Sheet& sheet, bool first) {
  const auto drop = [&](SectionNumber section, Row& row) {
    const CarriedRow* const carry = carried<CarriedRow>(row.extras);
    std::vector<std::pair<host::Column, host::Cell>> taken;
    for (const CellDefinition* const definition : wholeRow(section, first)) {
      const host::Column column = definition->column;
      const host::Cell* const cell = row.find(column);
      if (!cell || !cell->inheritsFormula || (carry && carry->find(column))) continue;
      taken.emplace_back(column, *cell);
    }
    if (taken.empty()) return;
    std::erase_if(row.cells, [&](const auto& one) {
      return std::ranges::find(taken, one.first, &std::pair<host::Column, host::Cell>::first) != taken.end();
    });
    for (const auto& [column, cell] : taken) {
      const host::Value inherited = host::cellValue(store, sheet.id, {section, row.key, column});
      const bool same = inherited == cell.value ||
                        (inherited.asNumber() && cell.value.asNumber() && !inherited.isText() && !cell.value.isText() &&
                         inherited.asNumber().or_(0) == cell.value.asNumber().or_(1));
      if (!same) row.at(column) = cell;
    }
  };
  for (host::Section& section : sheet.sections) {
    for (Row& row : section.rows) {
      if (section.number != SectionNumber::Object || isTextBlock(row)) drop(section.number, row);
    }
  }
}

}  // namespace quorvel::formats::vdx
