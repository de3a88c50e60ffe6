// Whether a row passes the filter of a report.
#pragma once

#include <functional>

#include "report/definition/definition.h"
#include "report/table/table.h"

namespace quorvel::report {

using ReadCell = std::function<TableCell(const ReportValue&)>;

/// Texts are compared without regard to case, and by order as compareNaturally does. A value without a number passes
/// no comparison of numbers but "not-equal".
bool passes(const Condition& condition, const ReadCell& read);

}  // namespace quorvel::report
