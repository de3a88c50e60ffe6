// The rows of the cell table, by topic; cell_table.cpp makes them one table.
#pragma once

#include <span>
#include <string_view>

#include "host/cells/cell_key.h"
#include "host/cells/cell_units.h"

namespace quorvel::host {

/// One cell of a row: place, name as files write it, what a bare number means, and its value when no sheet holds it.
struct RowCell {
  Column column;
  std::string_view name;
  CellUnits units = CellUnits::Number;
  double defaultNumber = 0;
};

/// Cells that share section, row number and style sheet. A row whose cells come from two style sheets has two entries.
struct CellRow {
  SectionNumber section;
  std::uint32_t row;
  StyleSource style;
  std::span<const RowCell> cells;
};

std::span<const CellRow> objectCellRows();
std::span<const CellRow> sectionCellRows();

/// Tab stops are columns of their row, three for each stop.
inline constexpr int tabStopLimit = 60;
inline constexpr int columnsPerTabStop = 3;

}  // namespace quorvel::host
