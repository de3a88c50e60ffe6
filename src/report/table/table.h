// A report as a table of values, ready to be written in any format.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "base/maybe.h"
#include "report/definition/definition.h"

namespace quorvel::report {

struct TableCell {
  std::string text;      ///< what people read; empty for none
  Maybe<double> number;  ///< of numbers and durations, in the column's unit
};

struct TableColumn {
  std::string title;
  bool isNumeric = false;
  int decimals = 0;  ///< with which the numbers are shown
  TotalKind total = TotalKind::None;
  int width = 0;          ///< in characters; 0: as its texts need
  bool isAcross = false;  ///< one of the columns that stand for values
};

struct TableRow {
  enum class Kind {
    Data,
    GroupTotal,
    GrandTotal,
  };
  Kind kind = Kind::Data;
  std::size_t level = 0;         ///< of a group's total: how many groups are around it
  std::vector<TableCell> cells;  ///< one for each column
  std::size_t first = 0;         ///< of a total: the first of the rows before it that it is of
};

struct Table {
  std::string title, description;
  std::string drawing;               ///< the name of its file
  std::string page;                  ///< the only page that it is of; empty: all
  std::vector<TableColumn> columns;  ///< those of the groups come first
  std::size_t groupColumns = 0;
  std::vector<TableRow> rows;  ///< totals follow the rows that they are of
  std::size_t dataRows = 0;
};

/// What is put before a total's number where it is shown to people: "Count: "; nothing before a sum.
const char* labelOf(TotalKind total);

}  // namespace quorvel::report
