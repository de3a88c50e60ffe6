#include "report/output/csv.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "base/text.h"

namespace quorvel::report {
namespace {

bool isNumber(std::string_view text) {
  double number = 0;
  const auto [end, wrong] = std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
  return wrong == std::errc() && end == text.data() + text.size() && std::isfinite(number);
}

/// The full-width forms count as well: some programs read them as the narrow ones.
bool couldBeFormula(std::string_view text) {
  constexpr std::string_view starts[] = {"=", "+", "-", "@", "\t", "\r", "\n", "＝", "＋", "－", "＠"};
  // Blanks and a quotation mark before the sign do not make it safe in every program.
  const std::size_t first = std::min(text.find_first_not_of(" \""), text.size());
  const std::string_view from = text.substr(first);
  return std::ranges::any_of(starts, [&](std::string_view start) { return from.starts_with(start); }) &&
         !isNumber(text);
}

void addCell(std::string& csv, std::string_view text) {
  const bool guarded = couldBeFormula(text);
  // Where ";" is the separator of a country, and for tabs, the quotation marks keep the text in one cell.
  if (!guarded && text.find_first_of(",;\t\"\r\n") == std::string_view::npos) {
    csv += text;
    return;
  }
  csv += guarded ? "\"'" : "\"";
  csv += replaceAll(text, "\"", "\"\"");
  csv += '"';
}

}  // namespace

std::string csvOf(const Table& table) {
  std::string csv = "\xEF\xBB\xBF";
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    if (i > 0) csv += ',';
    addCell(csv, table.columns[i].title);
  }
  csv += "\r\n";
  for (const TableRow& row : table.rows) {
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
      if (i > 0) csv += ',';
      addCell(csv, row.cells[i].text);
    }
    csv += "\r\n";
  }
  return csv;
}

}  // namespace quorvel::report
