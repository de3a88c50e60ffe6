// A report as comma-separated values.
#pragma once

#include <string>

#include "report/table/table.h"

namespace quorvel::report {

/// As RFC 4180 has it, in UTF-8 with a byte order mark, by which spreadsheet programs know the encoding. The values of
/// groups are in columns of their own. A text that a spreadsheet program would take for a formula has an apostrophe
/// before it; numbers stay numbers.
std::string csvOf(const Table& table);

}  // namespace quorvel::report
