// `quorvel report`: runs a report definition of a drawing and writes the table, or lists the definitions.
#include <iostream>

#include "cli/commands.h"
#include "cli/exit_codes.h"
#include "cli/open_drawing.h"
#include "cli/text_table.h"
#include "report/definition/available_definitions.h"
#include "report/output/report_file.h"
#include "report/table/make_table.h"

namespace quorvel::cli {
namespace {

std::string listOf(const report::AvailableDefinitions& available) {
  std::vector<std::vector<std::string>> rows;
  for (const report::AvailableDefinition& each : available.definitions)
    rows.push_back({std::to_string(each.number), each.definition.title,
                    each.problem.empty() ? each.definition.description : each.problem});
  return tableText({{"Number"}, {"Title"}, {"Description", 60}}, rows, 0);
}

void sayWhichAreUsed(const report::AvailableDefinitions& available, const std::string& file) {
  if (!available.areInstalled) return;
  std::cerr << file << " has no report definitions; "
            << (available.definitions.empty() ? "none are installed." : "the installed ones are used.") << '\n';
}

}  // namespace

int runReport(const ReportOptions& options) {
  for (const std::string& output : options.outputs) {
    if (!report::isReportFile(output)) return fail(report::notAReportFile(output));
    if (const std::string error = refuseToOverwrite(output, options.force); !error.empty()) return fail(error);
  }
  const OpenedDrawing drawing = openDrawing(options.file);
  if (!drawing.error.empty()) return fail(drawing.error);
  const report::AvailableDefinitions available =
      report::definitionsFor(drawing.store, drawing.document, findInstallFolder());
  if (options.list) {
    sayWhichAreUsed(available, options.file);
    std::cout << listOf(available);
    endProcess(exitDone);
  }
  const report::AvailableDefinition chosen = report::definitionNamed(available, options.definition);
  if (!chosen.problem.empty()) return fail(chosen.problem);
  const report::MadeTable made = report::makeTable(drawing.store, drawing.document, chosen.definition, {options.page});
  if (!made.problem.empty()) return fail(made.problem);
  sayWhichAreUsed(available, options.file);
  for (const std::string& output : options.outputs) {
    if (const std::string error = report::writeReport(made.table, output); !error.empty()) return fail(error);
    std::cout << output << '\n';
  }
  endProcess(exitDone);
}

}  // namespace quorvel::cli
