// A report as a web page: one file with its styles inside, fit to be printed.
#pragma once

#include <string>

#include "report/table/table.h"

namespace quorvel::report {

/// Each group has a heading instead of columns of its own.
std::string htmlOf(const Table& table);

}  // namespace quorvel::report
