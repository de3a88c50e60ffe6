// Times drawing all details of all Tasks of a page anew, as the options command does, on pages of growing size. Prints
// a line for each size: what one Task costs must not depend on how many there are.
#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "commands/task_display.h"
#include "commands/task_display_options.h"
#include "map_with_tasks.h"

namespace {

/// CPU time.
template <class Act>
double milliseconds(Act act) {
  const std::clock_t start = std::clock();
  act();
  return 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

double peakMemory() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024;
}

/// Role, frequency, time, three guidelines, two resources, one supporting role.
void fill(const quorvel::Shape& task) {
  const std::pair<const char*, const char*> entries[] = {
      {"Prop.Responsible_Role", "\"Sales Representative\""},
      {"Prop.Frequency_Of_Occurrence", "\"Daily\""},
      {"Prop.Task_Completion_Time", "15"},
      {"Prop.Guidelines", "\"Record orders on the day they arrive;Ask for a delivery address;Credit policy\""},
      {"Prop.Resources", "\"Order form;Customer register\""},
      {"Prop.SupportingRole_1", "\"Clerk\""},
  };
  for (const auto& [cell, formula] : entries) task.Cells(cell).SetFormula(formula);
}

void measure(int tasks) {
  using namespace quorvel;
  MapWithTasks map(tasks);
  std::vector<Shape> all;
  for (const Shape& shape : map.page.Shapes().all()) {
    if (shape.Master()) all.push_back(shape);
  }
  const double entries = milliseconds([&] {
    for (const Shape& shape : all) fill(shape);
  });
  const double redraw = milliseconds([&] {
    addin::applyTaskDisplayOptions(map.session.addin(), {1, 1, 1, 1, 1, 1, 1, 1, 1}, "Page");
  });
  const double off = milliseconds([&] { addin::applyTaskDisplay(map.session.addin(), "Page"); });
  std::printf("%6d Tasks, ms for each: entries %6.2f  redraw %6.2f  off %6.3f; peak %5.0f MiB\n", tasks,
              entries / tasks, redraw / tasks, off / tasks, peakMemory());
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: details_bench TASKS...\n");
    return 2;
  }
  for (int i = 1; i < argc; ++i) measure(std::atoi(argv[i]));
  return 0;
}
