// Writes a report to a file: a web page, comma-separated values or a workbook, by the ending of the file's name.
#pragma once

#include <string>
#include <string_view>

#include "report/table/table.h"

namespace quorvel::report {

/// True for names that end with .html, .htm, .csv or .xlsx, in any case.
bool isReportFile(std::string_view fileName);
/// One sentence for a name that is none.
std::string notAReportFile(const std::string& fileName);

/// Replaces the file as a whole. Empty when it went well, else one sentence.
std::string writeReport(const Table& table, const std::string& fileName);

}  // namespace quorvel::report
