// What a sheet shows: its own cells over its master's over its styles'.
#pragma once

#include <string>
#include <vector>

#include "host/sheet/store.h"

namespace quorvel::host {

/// Where a cell's value and formula come from. Both null: no sheet holds the cell and it has its default.
struct FoundCell {
  const Cell* value = nullptr;
  const Cell* formula = nullptr;  ///< the cell that holds the formula; may be on another sheet
  SheetId formulaSheet;           ///< the sheet of `formula`, whose shape numbers its references use
  explicit operator bool() const { return value != nullptr; }
};

FoundCell findCell(const Store& store, SheetId sheet, const CellKey& key);
/// The value, or the cell's default when no sheet holds it.
Value cellValue(const Store& store, SheetId sheet, const CellKey& key);
double cellNumber(const Store& store, SheetId sheet, const CellKey& key);
std::string cellText(const Store& store, SheetId sheet, const CellKey& key);

/// The formula of the cell, own or inherited; null when it has none.
FormulaPtr formulaOf(const Store& store, SheetId sheet, const CellKey& key);
/// True for a cell with a GUARD formula.
bool isGuarded(const Store& store, SheetId sheet, const CellKey& key);

/// True when the sheet has the cell: one of the object section where the kind of sheet has it (BeginX of a 1-D shape,
/// PageWidth of a page) or a file gave it one, one of a row when the row exists, here or inherited. `localOnly`: only
/// what the sheet itself holds with a formula of its own; for a row that is one such cell, or that only this sheet has
/// the row.
bool cellExists(const Store& store, SheetId sheet, const CellKey& key, bool localOnly);
/// True when a formula may name the cell. Those of the object section give their default where no sheet has them.
bool cellMayBeRead(const Store& store, SheetId sheet, const CellKey& key);

/// The cell as the sheet's rows have it: where rows have names, a number means the row at that place, as in
/// "Actions.Menu[2]". The same key when there is no such row.
CellKey keyOnSheet(const Store& store, SheetId sheet, const CellKey& key);
/// The same for a cell name that people may have read: local names of rows count where no row has the name itself.
CellKey keyByLocalName(const Store& store, SheetId sheet, const CellKey& key);

/// One effective row of a section: inherited rows first, in the master's order, then the sheet's own.
struct RowView {
  RowKey key;
  Atom name, localName;
  std::uint8_t type = 0;
  bool local = false;
  friend bool operator==(const RowView&, const RowView&) = default;
};
std::vector<RowView> rowsOf(const Store& store, SheetId sheet, SectionNumber section);
/// One of them, without a look at the others.
Maybe<RowView> rowWithKey(const Store& store, SheetId sheet, SectionNumber section, RowKey key);
bool rowExists(const Store& store, SheetId sheet, SectionNumber section, RowKey row, bool localOnly);
/// Effective sections in order; Geometry sections that are deleted here are left out.
std::vector<SectionNumber> sectionsOf(const Store& store, SheetId sheet);

/// Effective text, foreign data and styles.
const TextBody* textOf(const Store& store, SheetId sheet);
const ForeignData* foreignOf(const Store& store, SheetId sheet);
SheetId lineStyleOf(const Store& store, SheetId sheet);
SheetId fillStyleOf(const Store& store, SheetId sheet);
SheetId textStyleOf(const Store& store, SheetId sheet);

/// The member of `context`'s instance that inherits from the master's sheet `prototype` (at any depth of inheritance);
/// null when it has none.
SheetId counterpartOf(const Store& store, SheetId context, SheetId prototype);
/// The sheet that "Sheet.<shapeId>" means in a formula that is written on `definition` and is evaluated for `context`.
SheetId resolveShapeId(const Store& store, SheetId definition, SheetId context, int shapeId);
/// The sheet that "Name!" or "Name.5!" means there: the shape with the whole name, universal names first; then the one
/// of that number, if it is called so.
SheetId resolveShapeName(const Store& store, SheetId definition, SheetId context, const Reference& reference);
/// Shapes of the page by name, members of groups among them.
SheetId shapeOnPage(const Store& store, const Page& page, std::string_view name, int number);
/// The formula as `context` reads it: with the numbers of its own instance's members. Empty for a cell without formula.
std::string formulaFor(const Store& store, SheetId context, const FoundCell& cell);

}  // namespace quorvel::host
