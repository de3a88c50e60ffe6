// Rows and sections of a sheet: adding, deleting, renaming, retyping.
#pragma once

#include <string_view>

#include "host/engine/engine.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {

/// What an added row became: its 0-based place among the effective rows, or the refusal.
struct RowOutcome {
  Outcome outcome = Outcome::done();
  int row = -1;
  RowKey key;
};

/// Refused when the sheet itself holds a row of the name; a row that is only inherited becomes the sheet's own. One
/// that the sheet had hidden comes back empty.
RowOutcome addNamedRow(Engine& engine, SheetId sheet, int section, std::string_view name);
/// `place` is 0-based, -2 appends. In Geometry sections tag 137 makes the component row and so the section.
RowOutcome addRow(Engine& engine, SheetId sheet, int section, int place, int tag);
/// `place` counts effective rows from 0; an inherited row is hidden. Raises no event for its cells. A Geometry section
/// goes with its component row, place 0.
Outcome deleteRow(Engine& engine, SheetId sheet, int section, int place);
Outcome deleteSection(Engine& engine, SheetId sheet, int section);
/// Both names as long as they are one; else that of the kind. Cells go by the universal one.
Outcome renameRow(Engine& engine, SheetId sheet, SectionNumber section, RowKey row, std::string_view name,
                  NameKind kind);
Outcome setRowType(Engine& engine, SheetId sheet, int section, int place, int tag);

/// The row at the 0-based place (for Geometry, row 0 is the component row and vertices follow); nothing outside.
Maybe<RowView> rowAt(const Store& store, SheetId sheet, SectionNumber section, int place);
int placeOf(const Store& store, SheetId sheet, SectionNumber section, RowKey row);  ///< -1: no such row

}  // namespace quorvel::host
