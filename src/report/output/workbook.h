// A report as a workbook (.xlsx) of one sheet.
#pragma once

#include <string>

#include "report/table/table.h"

namespace quorvel::report {

/// The bytes of the file. Numbers are numbers and totals are SUBTOTAL formulas, which follow the filter that the header
/// has; texts never become formulas. Groups are columns, and their rows are outlined. `problem` is a clause that
/// follows the file's name, or empty.
std::string workbookOf(const Table& table, std::string& problem);

}  // namespace quorvel::report
