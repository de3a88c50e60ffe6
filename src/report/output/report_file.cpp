#include "report/output/report_file.h"

#include "base/text.h"
#include "formats/package/atomic_file.h"
#include "report/output/csv.h"
#include "report/output/html.h"
#include "report/output/workbook.h"

namespace quorvel::report {
namespace {

bool endsWith(std::string_view name, std::string_view ending) {
  return name.size() > ending.size() && equalIgnoringCase(name.substr(name.size() - ending.size()), ending);
}

bool isWebPage(std::string_view name) { return endsWith(name, ".html") || endsWith(name, ".htm"); }

}  // namespace

bool isReportFile(std::string_view name) {
  return isWebPage(name) || endsWith(name, ".csv") || endsWith(name, ".xlsx");
}

std::string notAReportFile(const std::string& fileName) {
  return fileName + " has no ending of a report; end its name with .html, .csv or .xlsx.";
}

std::string writeReport(const Table& table, const std::string& fileName) {
  if (!isReportFile(fileName)) return notAReportFile(fileName);
  std::string bytes;
  if (endsWith(fileName, ".xlsx")) {
    std::string problem;
    bytes = workbookOf(table, problem);
    if (!problem.empty()) return fileName + " " + problem + ".";
  } else {
    bytes = isWebPage(fileName) ? htmlOf(table) : csvOf(table);
  }
  const std::string problem = formats::replaceFile(fileName, bytes, formats::Flush::WhenConvenient);
  return problem.empty() ? std::string() : fileName + " " + problem + ".";
}

}  // namespace quorvel::report
