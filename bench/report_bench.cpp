// Times the reports that are installed on a map of many Tasks that all have roles and times: report_bench [TASKS].
#include <filesystem>

#include "map_with_tasks.h"
#include "measuring.h"
#include "report/definition/available_definitions.h"
#include "report/output/report_file.h"
#include "report/table/make_table.h"

int main(int argc, char** argv) {
  using namespace quorvel;
  const int tasks = taskCounts(argc, argv, 1, {10000}, "report_bench [TASKS]").front();
  MapWithTasks map(1);
  const auto fill = [&](const Shape& task, int number) {
    const auto put = [&](const char* cell, const std::string& formula) { task.Cells(cell).SetFormula(formula); };
    put("Prop.Responsible_Role", "\"Role " + std::to_string(number % 20) + "\"");
    put("Prop.SupportingRole_1", "\"Role " + std::to_string(number % 7) + "\"");
    put("Prop.Task_Completion_Time", std::to_string(1 + number % 90) + " em.");
  };
  for (int i = 1; i < tasks; ++i) fill(map.drop(1), i);
  const host::Store& store = map.session.engine().store();
  const host::DocumentId document{map.map.ref().id};
  const std::string folder = std::filesystem::temp_directory_path().string() + "/quorvel-report-bench";
  std::filesystem::create_directories(folder);
  for (const report::AvailableDefinition& each :
       report::definitionsFor(store, document, map.session.installFolder()).definitions) {
    report::MadeTable made;
    const double table = cpuMilliseconds([&] { made = report::makeTable(store, document, each.definition); });
    std::printf("%-32s %6zu rows: table %6.0f", each.definition.title.c_str(), made.table.rows.size(), table);
    for (const char* ending : {"html", "csv", "xlsx"}) {
      const double written = cpuMilliseconds([&] { report::writeReport(made.table, folder + "/report." + ending); });
      std::printf("  %s %6.0f", ending, written);
    }
    std::printf(" ms\n");
  }
  std::filesystem::remove_all(folder);
  return 0;
}
