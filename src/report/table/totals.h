// Totals of the columns of a report, and the rows that show them.
#pragma once

#include "report/table/table.h"

namespace quorvel::report {

/// Puts a row with totals behind the rows of each group, and one behind all. Rows of a group follow each other.
void addTotals(Table& table, bool ofGroups, bool ofAll);

}  // namespace quorvel::report
