#include "host/sheet/sheet.h"

#include <algorithm>

#include "base/basic_text.h"
#include "base/text.h"
#include "host/cells/cell_table.h"

namespace quorvel::host {
namespace {

/// Rows of these sections are sorted by their index, in whatever order they are made.
bool orderedByIndex(RowKey key) { return !key.isNamed(); }

}  // namespace

std::string formulaText(const Cell& cell) {
  if (cell.noFormula) return {};
  if (cell.formula) return cell.formula->text();
  switch (cell.value.kind()) {
    case ValueKind::Text:
      return quoted(cell.value.textView());
    case ValueKind::Number: {
      const Unit unit = cell.value.unit();
      const double shown = fromInternal(cell.value.internal(), unit);
      const std::string_view suffix = shownSuffix(unit);
      if (suffix.empty()) return shortestNumber(shown);
      // Conversion leaves noise in the last places.
      char digits[40];
      std::snprintf(digits, sizeof digits, "%.14g", shown);
      return shortestNumber(val(digits)) + " " + std::string(suffix);
    }
    case ValueKind::Date:
      // What a date is shown as would be read as a division.
      return "DATETIME(" + shortestNumber(cell.value.internal()) + ")";
    default:
      return cell.value.asText();
  }
}

const Cell* Row::find(Column column) const {
  const auto place = std::lower_bound(cells.begin(), cells.end(), column,
                                      [](const auto& entry, Column wanted) { return entry.first < wanted; });
  return place != cells.end() && place->first == column ? &place->second : nullptr;
}

Cell& Row::at(Column column) {
  auto place = std::lower_bound(cells.begin(), cells.end(), column,
                                [](const auto& entry, Column wanted) { return entry.first < wanted; });
  if (place == cells.end() || place->first != column) place = cells.insert(place, {column, Cell{}});
  return place->second;
}

const Row* Section::find(RowKey key) const {
  constexpr std::size_t longSection = 16;
  if (rows.size() < longSection) {
    for (const Row& row : rows) {
      if (row.key == key) return &row;
    }
    return nullptr;
  }
  // Long sections are mostly walked, several cells from each row: the row wanted is the last one found or the next.
  thread_local std::size_t lastFound = 0;
  for (std::size_t place = lastFound; place < rows.size() && place <= lastFound + 1; ++place) {
    if (rows[place].key == key) return &rows[lastFound = place];
  }
  for (std::size_t place = 0; place < rows.size(); ++place) {
    if (rows[place].key == key) return &rows[lastFound = place];
  }
  return nullptr;
}

Row* Section::find(RowKey key) { return const_cast<Row*>(std::as_const(*this).find(key)); }

const Section* Sheet::find(SectionNumber number) const {
  for (const Section& section : sections) {
    if (section.number == number) return &section;
  }
  return nullptr;
}

Section* Sheet::find(SectionNumber number) { return const_cast<Section*>(std::as_const(*this).find(number)); }

Section& Sheet::section(SectionNumber number) {
  const auto place =
      std::lower_bound(sections.begin(), sections.end(), number,
                       [](const Section& section, SectionNumber wanted) { return section.number < wanted; });
  if (place != sections.end() && place->number == number) return *place;
  Section made;
  made.number = number;
  return *sections.insert(place, std::move(made));
}

const Row* Sheet::find(SectionNumber number, RowKey key) const {
  const Section* section = find(number);
  return section ? section->find(key) : nullptr;
}

const Cell* Sheet::findLocal(const CellKey& key) const {
  const Row* row = find(key.section, key.row);
  return row && !row->deleted ? row->find(key.column) : nullptr;
}

Cell* Sheet::findLocal(const CellKey& key) { return const_cast<Cell*>(std::as_const(*this).findLocal(key)); }

Cell& Sheet::local(const CellKey& key) {
  Section& home = section(key.section);
  Row* row = home.find(key.row);
  if (!row) {
    auto place = home.rows.end();
    if (orderedByIndex(key.row)) {
      place = std::find_if(home.rows.begin(), home.rows.end(), [&](const Row& other) {
        return !other.key.isNamed() && other.key.index() > key.row.index();
      });
    }
    Row made;
    made.key = key.row;
    made.name = key.row.name();
    row = &*home.rows.insert(place, std::move(made));
  }
  return row->at(key.column);
}

Sheet withoutComputed(const Sheet& sheet) {
  Sheet kept = sheet;
  kept.holdsComputed = false;
  std::erase_if(kept.sections, [](Section& section) {
    const bool hadRows = !section.rows.empty();
    std::erase_if(section.rows, [](Row& row) {
      const std::size_t taken = std::erase_if(row.cells, [](const auto& one) { return one.second.isComputed; });
      return taken > 0 && row.cells.empty() && !row.extras && !row.deleted;
    });
    return hadRows && section.rows.empty() && !section.extras && !section.deleted;
  });
  return kept;
}

}  // namespace quorvel::host
