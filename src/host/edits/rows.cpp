#include "host/edits/rows.h"

#include <algorithm>

#include "host/cells/cell_name.h"
#include "host/cells/cell_table.h"
#include "host/geometry/row_tags.h"
#include "host/recalc/relations.h"

namespace quorvel::host {
namespace {

constexpr int tagComponent = numberOf(RowTag::Component);

bool isKnownSection(int section) {
  const auto number = static_cast<SectionNumber>(section);
  return section > 0 && section < 250 &&
         (isGeometry(number) || (number != SectionNumber::Object && !fileNameOf(number).empty()));
}

/// True when the sheet or one that it inherits from has a row for which `fits` holds, hidden ones included.
template <class Fits>
bool isHeld(const Store& store, SheetId id, SectionNumber number, Fits fits) {
  for (int depth = 0; id && depth < 64; ++depth) {
    const Sheet* sheet = store.sheet(id);
    const Section* section = sheet ? sheet->find(number) : nullptr;
    if (section &&
        std::any_of(section->rows.begin(), section->rows.end(), [&](const Row& row) { return fits(row.key); }))
      return true;
    id = sheet ? sheet->prototype : SheetId{};
  }
  return false;
}

RowOutcome refusedRow(std::string reason) { return {Outcome::refused(std::move(reason)), -1, {}}; }

/// All cells of a row, by column.
std::vector<CellAddress> cellsOf(SheetId sheet, SectionNumber section, RowKey row) {
  std::vector<CellAddress> cells;
  for (const CellDefinition& definition : cellDefinitions()) {
    if (definition.section == section) cells.push_back({sheet, {section, row, definition.column}});
  }
  return cells;
}

/// A new row raises the event of a write to its first cell, and a new hyperlink those of all its cells: what marks
/// links may look at any of them.
void notifyRowAdded(Engine& engine, SheetId sheet, SectionNumber section, RowKey row) {
  std::vector<CellAddress> cells;
  if (section == SectionNumber::Hyperlink) {
    cells = cellsOf(sheet, section, row);
  } else {
    cells.push_back({sheet, {section, row, 0}});
  }
  engine.recalculateAndNotify({}, cells);
  for (const CellAddress& cell : cells) engine.raise(&ApplicationEvents::CellChanged, cell);
}

std::size_t localPlace(const Sheet& sheet, SectionNumber section, RowKey row) {
  const auto& rows = sheet.find(section)->rows;
  return static_cast<std::size_t>(
      std::find_if(rows.begin(), rows.end(), [&](const Row& other) { return other.key == row; }) - rows.begin());
}

/// The place for a row that the sheet lacks: named ones at the end, others by their number.
std::size_t placeForRow(const Sheet& sheet, SectionNumber section, RowKey key) {
  const Section* held = sheet.find(section);
  if (!held) return 0;
  const auto& rows = held->rows;
  const auto behind = key.isNamed() ? rows.end() : std::find_if(rows.begin(), rows.end(), [&](const Row& other) {
    return !other.key.isNamed() && other.key.index() > key.index();
  });
  return static_cast<std::size_t>(behind - rows.begin());
}

/// A row in place of a hidden row of the master is a new one: it inherits nothing.
void coverInheritedCells(const Store& store, SheetId sheet, SectionNumber section, Row& row) {
  const SheetId prototype = store.sheet(sheet)->prototype;
  for (const CellDefinition& definition : cellDefinitions()) {
    const CellKey key{section, row.key, definition.column};
    if (definition.section != section || !findCell(store, prototype, key)) continue;
    Cell& cell = row.at(definition.column);
    cell.noFormula = true;
    if (definition.units == CellUnits::Text) cell.value = Value::text("");
    if (definition.units == CellUnits::Length) cell.value = Value::number(0, Unit::Inches);
  }
}

/// True for a row of the master that the sheet hides, alone or with its section; the row's own mark is removed.
bool unhide(Engine& engine, SheetId id, SectionNumber section, RowKey key) {
  const Sheet& sheet = *engine.store().sheet(id);
  const Section* held = sheet.find(section);
  if (held && held->deleted) return sheet.prototype && rowExists(engine.store(), sheet.prototype, section, key, false);
  const Row* local = sheet.find(section, key);
  if (!local || !local->deleted) return false;
  engine.edit().removeRow(id, section, localPlace(sheet, section, key));
  return true;
}

/// Rows without a name are found by their number; making room moves those behind one up.
void renumberFrom(Engine& engine, SheetId id, SectionNumber section, std::uint32_t first) {
  const Section* held = engine.store().sheet(id)->find(section);
  if (!held) return;
  for (std::size_t i = held->rows.size(); i-- > 0;) {
    const Row& row = held->rows[i];
    if (!row.key.isNamed() && row.key.index() >= first)
      engine.edit().setRowHead(id, section, i, RowKey::index(row.key.index() + 1), row.name, row.type);
  }
}

/// A row of the master of which the sheet keeps only values becomes the sheet's own, with the formulas that it has.
RowOutcome ownValuesOf(Engine& engine, SheetId id, SectionNumber section, RowKey key) {
  CommandScope scope(engine, engine.store().sheet(id)->document, "Row");
  for (const auto& [column, cell] : std::vector(engine.store().sheet(id)->find(section, key)->cells)) {
    const CellKey each{section, key, column};
    Cell own = cell;
    own.inheritsFormula = false;
    own.formula = engine.store().formulas().get(formulaFor(engine.store(), id, findCell(engine.store(), id, each)));
    engine.edit().setCell({id, each}, std::move(own));
  }
  notifyRowAdded(engine, id, section, key);
  scope.commit();
  return {Outcome::done(), placeOf(engine.store(), id, section, key), key};
}

}  // namespace

Maybe<RowView> rowAt(const Store& store, SheetId sheet, SectionNumber section, int place) {
  const std::vector<RowView> rows = rowsOf(store, sheet, section);
  if (place < 0) return {};
  if (isGeometry(section)) {
    if (place == 0) {
      if (!rowExists(store, sheet, section, RowKey::index(0), false)) return {};
      RowView component;
      component.key = RowKey::index(0);
      component.type = tagComponent;
      return component;
    }
    int vertex = 0;
    for (const RowView& row : rows) {
      if (row.key != RowKey::index(0) && ++vertex == place) return row;
    }
    return {};
  }
  if (place >= static_cast<int>(rows.size())) return {};
  return rows[static_cast<std::size_t>(place)];
}

int placeOf(const Store& store, SheetId sheet, SectionNumber section, RowKey key) {
  const bool geometry = isGeometry(section);
  if (geometry && key == RowKey::index(0)) return 0;
  int place = geometry ? 1 : 0;
  for (const RowView& row : rowsOf(store, sheet, section)) {
    if (geometry && row.key == RowKey::index(0)) continue;
    if (row.key == key) return place;
    ++place;
  }
  return -1;
}

RowOutcome addNamedRow(Engine& engine, SheetId id, int number, std::string_view name) {
  const Sheet* sheet = engine.store().sheet(id);
  if (!sheet) return refusedRow("the object is deleted");
  const auto section = static_cast<SectionNumber>(number);
  if (!isKnownSection(number) || !hasNamedRows(section)) return refusedRow("the section has no named rows");
  if (!isRowName(name)) return refusedRow("the name can't name a row");
  const Atom atom = intern(name);
  const RowKey key = RowKey::named(atom);
  const Row* local = sheet->find(section, key);
  if (local && !local->deleted) {
    if (cellExists(engine.store(), id, {section, key, 0}, true)) return refusedRow("the sheet has a row of this name");
    return ownValuesOf(engine, id, section, key);
  }
  CommandScope scope(engine, sheet->document, "Row");
  Row row;
  row.key = key;
  row.name = atom;
  if (unhide(engine, id, section, key)) coverInheritedCells(engine.store(), id, section, row);
  engine.edit().insertRow(id, section, placeForRow(*sheet, section, key), std::move(row));
  notifyRowAdded(engine, id, section, key);
  scope.commit();
  return {Outcome::done(), placeOf(engine.store(), id, section, key), key};
}

RowOutcome addRow(Engine& engine, SheetId id, int number, int place, int tag) {
  const Sheet* sheet = engine.store().sheet(id);
  if (!sheet) return refusedRow("the object is deleted");
  if (!isKnownSection(number)) return refusedRow("no such section");
  const auto section = static_cast<SectionNumber>(number);
  const std::vector<RowView> rows = rowsOf(engine.store(), id, section);
  // A hyperlink is always added behind the others, whatever place is asked for, also one before the first. Callers
  // find the new one as the last; in front of another it would move that one to its place.
  if (section == SectionNumber::Hyperlink) place = static_cast<int>(rows.size());
  const bool geometry = isGeometry(section);
  if (geometry && !sheet->isShape()) return refusedRow("only shapes have geometry");

  std::uint32_t first = geometry ? 1 : 0, next = first;
  for (const RowView& row : rows) {
    if (!row.key.isNamed()) next = std::max(next, row.key.index() + 1);
  }
  std::uint32_t index = next;
  if (geometry && tag == tagComponent) {
    if (sheet->find(section, RowKey::index(0))) return refusedRow("the section is there already");
    index = 0;
  } else if (geometry && !rowExists(engine.store(), id, section, RowKey::index(0), false)) {
    return refusedRow("the section is missing");
  } else if (place >= 0) {
    const Maybe<RowView> at = rowAt(engine.store(), id, section, place);
    if (at && !at->key.isNamed()) index = at->key.index();
    if (!at && place > static_cast<int>(rows.size()) + 1) return refusedRow("the place lies behind the last row");
  }

  CommandScope scope(engine, sheet->document, "Row");
  Row row;
  row.type = static_cast<std::uint8_t>(geometry ? tag : 0);
  const auto named = std::count_if(rows.begin(), rows.end(), [](const RowView& one) { return one.key.isNamed(); });
  const bool startsNamed = section == SectionNumber::Action || section == SectionNumber::Control;
  if (section == SectionNumber::Hyperlink || (hasNamedRows(section) && named > 0) ||
      (startsNamed && !isHeld(engine.store(), id, section, [](RowKey key) { return !key.isNamed(); }))) {
    // The host names these rows itself. Files give rows with a number the name of that number.
    for (int n = static_cast<int>(rows.size()) + 1;; ++n) {
      row.name = intern("Row_" + std::to_string(n));
      const RowKey wanted = RowKey::named(row.name), numbered = RowKey::index(static_cast<std::uint32_t>(n) - 1);
      const bool taken = rowExists(engine.store(), id, section, wanted, false) ||
                         isHeld(engine.store(), id, section, [&](RowKey key) { return key == numbered; });
      if (!taken) break;
    }
    row.key = RowKey::named(row.name);
  } else {
    if (index < next) renumberFrom(engine, id, section, index);
    row.key = RowKey::index(index);
  }
  const RowKey key = row.key;
  if (unhide(engine, id, section, key)) coverInheritedCells(engine.store(), id, section, row);
  std::size_t where = placeForRow(*sheet, section, key);
  const bool isInserted = key.isNamed() && place >= 0 && place < static_cast<int>(rows.size());
  if (isInserted && sheet->find(section, rows[static_cast<std::size_t>(place)].key))
    where = localPlace(*sheet, section, rows[static_cast<std::size_t>(place)].key);
  engine.edit().insertRow(id, section, where, std::move(row));
  notifyRowAdded(engine, id, section, key);
  scope.commit();
  return {Outcome::done(), placeOf(engine.store(), id, section, key), key};
}

Outcome deleteRow(Engine& engine, SheetId id, int number, int place) {
  const Sheet* sheet = engine.store().sheet(id);
  if (!sheet) return Outcome::refused("the object is deleted");
  if (!isKnownSection(number)) return Outcome::unknownName("no such section");
  const auto section = static_cast<SectionNumber>(number);
  const Maybe<RowView> row = rowAt(engine.store(), id, section, place);
  if (!row) return Outcome::unknownName("no such row");
  // Its component row is what makes a geometry.
  if (isGeometry(section) && place == 0) return deleteSection(engine, id, number);
  CommandScope scope(engine, sheet->document, "Delete row");
  const RowKey key = row->key;
  if (sheet->find(section, key)) engine.edit().removeRow(id, section, localPlace(*sheet, section, key));
  if (rowExists(engine.store(), id, section, key, false)) {
    Row hidden;
    hidden.key = key;
    hidden.name = row->name;
    hidden.deleted = true;
    const std::size_t where = placeForRow(*engine.store().sheet(id), section, key);
    engine.edit().insertRow(id, section, where, std::move(hidden));
  }
  engine.recalculateAndNotify({}, cellsOf(id, section, key));
  scope.commit();
  return Outcome::done();
}

Outcome deleteSection(Engine& engine, SheetId id, int number) {
  const Sheet* sheet = engine.store().sheet(id);
  if (!sheet) return Outcome::refused("the object is deleted");
  if (!isKnownSection(number)) return Outcome::unknownName("no such section");
  const auto section = static_cast<SectionNumber>(number);
  const std::vector<RowView> rows = rowsOf(engine.store(), id, section);
  if (rows.empty() && !sheet->find(section)) return Outcome::refused("the sheet has no such section");
  CommandScope scope(engine, sheet->document, "Delete section");
  std::optional<Section> content;
  if (sheet->prototype) {
    content.emplace();
    content->number = section;
    content->deleted = true;
  }
  engine.edit().replaceSection(id, section, std::move(content));
  std::vector<CellAddress> gone;
  for (const RowView& row : rows) {
    const auto cells = cellsOf(id, section, row.key);
    gone.insert(gone.end(), cells.begin(), cells.end());
  }
  engine.recalculateAndNotify({}, gone);
  scope.commit();
  return Outcome::done();
}

Outcome renameRow(Engine& engine, SheetId id, SectionNumber section, RowKey key, std::string_view name, NameKind kind) {
  const Sheet* sheet = engine.store().sheet(id);
  if (!sheet || !rowExists(engine.store(), id, section, key, false)) return Outcome::unknownName("no such row");
  if (!hasNamedRows(section)) return Outcome::refused("the section has no named rows");
  if (!isRowName(name)) return Outcome::refused("the name can't name a row");
  const Atom atom = intern(name);
  const Row* const local = sheet->find(section, key);
  if (kind == NameKind::Local && local && local->localName) {
    CommandScope scope(engine, sheet->document, "Rename row");
    engine.edit().setRowHead(id, section, localPlace(*sheet, section, key), key, local->name, local->type, atom);
    scope.commit();
    return Outcome::done();
  }
  const RowKey renamed = RowKey::named(atom);
  if (renamed != key && rowExists(engine.store(), id, section, renamed, false))
    return Outcome::refused("another row has this name");
  if (!sheet->find(section, key)) return Outcome::refused("the row belongs to the master");
  CommandScope scope(engine, sheet->document, "Rename row");
  const std::size_t place = localPlace(*sheet, section, key);
  // A universal name of its own leaves the one that people read.
  const bool parts = kind == NameKind::Universal && local->name && !local->localName;
  engine.edit().setRowHead(id, section, place, renamed, atom, local->type,
                           parts ? std::optional<Atom>(local->name) : std::nullopt);
  std::vector<CellAddress> changed = cellsOf(id, section, renamed);
  if (const CellKey old{section, key, 0}; decidesRelations(old)) changed.push_back({id, old});
  engine.recalculateAndNotify({}, changed);
  scope.commit();
  return Outcome::done();
}

Outcome setRowType(Engine& engine, SheetId id, int number, int place, int tag) {
  const auto section = static_cast<SectionNumber>(number);
  const Sheet* sheet = engine.store().sheet(id);
  if (!sheet || !isGeometry(section)) return Outcome::refused("only Geometry rows have a type");
  const Maybe<RowView> row = rowAt(engine.store(), id, section, place);
  if (!row || place == 0) return Outcome::unknownName("no such row");
  if (!isVertexTag(tag)) return Outcome::refused("no such kind of row");
  CommandScope scope(engine, sheet->document, "Row type");
  if (!sheet->find(section, row->key)) {
    Row own;
    own.key = row->key;
    own.type = static_cast<std::uint8_t>(tag);
    const std::size_t where = placeForRow(*sheet, section, own.key);
    engine.edit().insertRow(id, section, where, std::move(own));
  } else {
    const std::size_t at = localPlace(*sheet, section, row->key);
    engine.edit().setRowHead(id, section, at, row->key, row->name, static_cast<std::uint8_t>(tag));
  }
  scope.commit();
  return Outcome::done();
}

}  // namespace quorvel::host
