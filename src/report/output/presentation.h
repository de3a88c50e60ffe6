// What web page and workbook have in common: how numbers are shown, and which titles are turned.
#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <string>

#include "report/table/table.h"

namespace quorvel::report {

/// How many decimals a number has in a row of that kind: a mean has two more often than what it is of.
inline int shownDecimals(const TableColumn& column, TableRow::Kind row) {
  if (row == TableRow::Kind::Data) return column.decimals;
  if (column.total == TotalKind::Count) return 0;
  return column.total == TotalKind::Mean ? std::max(column.decimals, 2) : column.decimals;
}

/// With so many columns across, their titles are written upwards.
inline bool areTitlesTurned(const Table& table) {
  return std::ranges::count_if(table.columns, &TableColumn::isAcross) > 12;
}

/// With all its decimals, zeros too.
inline std::string numberText(double number, int decimals) {
  std::array<char, 400> digits{};
  const auto [end, wrong] =
      std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed, decimals);
  return wrong == std::errc() ? std::string(digits.data(), end) : std::string();
}

}  // namespace quorvel::report
