// Prints what a dropped Task costs in resident memory, with and without the undo log of its drop.
#include <malloc.h>
#include <unistd.h>

#include <fstream>

#include "map_with_tasks.h"
#include "measuring.h"

namespace {

/// Pages that the process holds in memory, in bytes; free memory of the allocator is returned first.
double residentBytes() {
  malloc_trim(0);
  std::ifstream statm("/proc/self/statm");
  long total = 0, resident = 0;
  statm >> total >> resident;
  return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

}  // namespace

int main(int argc, char** argv) {
  const int tasks = quorvel::taskCounts(argc, argv, 1, {10'000}, "memory_of_tasks [TASKS]").front();
  quorvel::MapWithTasks map(1);  // makes the master and the vocabularies
  const double before = residentBytes();
  map.drop(tasks);
  const double withSteps = residentBytes();
  map.session.engine().undo().discard(quorvel::host::DocumentId{map.map.ref().id});
  const double after = residentBytes();
  std::printf("Tasks dropped:          %d\n", tasks);
  std::printf("resident before:        %.1f MiB\n", before / 1048576);
  std::printf("resident after:         %.1f MiB\n", withSteps / 1048576);
  std::printf("a Task with its step:   %.0f bytes\n", (withSteps - before) / tasks);
  std::printf("a Task alone:           %.0f bytes\n", (after - before) / tasks);
  return 0;
}
