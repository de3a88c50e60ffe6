#include "host/sheet/own_content.h"

#include <algorithm>

#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

/// The sheet and those that it inherits from, nearest first.
std::vector<const Sheet*> lineageOf(const Store& store, SheetId id) {
  std::vector<const Sheet*> lineage;
  for (const Sheet* sheet = store.sheet(id); sheet && lineage.size() < 64; sheet = store.sheet(sheet->prototype))
    lineage.push_back(sheet);
  return lineage;
}

std::vector<Column> columnsOf(const std::vector<const Sheet*>& lineage, SectionNumber section, RowKey row) {
  std::vector<Column> columns;
  for (const Sheet* sheet : lineage) {
    const Row* held = sheet->find(section, row);
    if (!held) continue;
    for (const auto& entry : held->cells) columns.push_back(entry.first);
  }
  std::sort(columns.begin(), columns.end());
  columns.erase(std::unique(columns.begin(), columns.end()), columns.end());
  return columns;
}

Maybe<Cell> ownCell(const Store& store, SheetId sheet, const CellKey& key) {
  const FoundCell found = findCell(store, sheet, key);
  if (!found) return {};
  if (found.formulaSheet == sheet) return *found.value;
  Cell cell;
  cell.value = found.value->value;
  cell.noFormula = found.formula && found.formula->noFormula;
  if (found.formula && found.formula->formula) cell.formula = store.formulas().get(formulaFor(store, sheet, found));
  return cell;
}

template <class T>
std::shared_ptr<const T> first(const std::vector<const Sheet*>& lineage, std::shared_ptr<const T> Sheet::*member) {
  for (const Sheet* sheet : lineage) {
    if (sheet->*member) return sheet->*member;
  }
  return nullptr;
}

/// What the fields of an inherited text showed last is the master's.
std::shared_ptr<const TextBody> withoutShown(const TextBody& inherited) {
  TextBody body = inherited;
  for (TextPiece& piece : body) {
    if (piece.kind == TextPiece::Field) piece.text.clear();
  }
  return std::make_shared<const TextBody>(std::move(body));
}

}  // namespace

OwnContent ownContentOf(const Store& store, SheetId id) {
  const std::vector<const Sheet*> lineage = lineageOf(store, id);
  OwnContent content;
  for (const SectionNumber number : sectionsOf(store, id)) {
    Section section;
    section.number = number;
    const Section* held = store.sheet(id)->find(number);
    if (held) section.extras = held->extras;
    for (const RowView& view : rowsOf(store, id, number)) {
      Row row;
      row.key = view.key;
      row.name = view.name;
      row.type = view.type;
      if (const Row* own = held ? held->find(view.key) : nullptr) row.extras = own->extras;
      for (const Column column : columnsOf(lineage, number, view.key)) {
        if (Maybe<Cell> cell = ownCell(store, id, {number, view.key, column})) row.cells.emplace_back(column, *cell);
      }
      section.rows.push_back(std::move(row));
    }
    if (!section.rows.empty() || section.extras) content.sections.push_back(std::move(section));
  }
  content.text = first(lineage, &Sheet::text);
  if (content.text && !store.sheet(id)->text) content.text = withoutShown(*content.text);
  content.foreign = first(lineage, &Sheet::foreign);
  content.lineStyle = lineStyleOf(store, id);
  content.fillStyle = fillStyleOf(store, id);
  content.textStyle = textStyleOf(store, id);
  return content;
}

}  // namespace quorvel::host
