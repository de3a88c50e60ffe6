// Prints what a dropped Task costs in resident memory, with and without the undo log that can take its drop back.
#include <malloc.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "map_with_tasks.h"

namespace {

/// Pages that the process holds in memory, in bytes; what the allocator keeps free is given back first.
double residentBytes() {
  malloc_trim(0);
  std::ifstream statm("/proc/self/statm");
  long total = 0, resident = 0;
  statm >> total >> resident;
  return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

}  // namespace

int main(int argc, char** argv) {
  const int tasks = argc > 1 ? std::atoi(argv[1]) : 10'000;
  if (tasks < 1) {
    std::fprintf(stderr, "usage: memory_of_tasks [NUMBER OF TASKS]\n");
    return 2;
  }
  quorvel::MapWithTasks map(1);  // the master and the vocabularies stand
  const double before = residentBytes();
  map.drop(tasks);
  const double withSteps = residentBytes();
  map.session.engine().undo.forget(quorvel::host::DocumentId{map.map.ref().id});
  const double after = residentBytes();
  std::printf("Tasks dropped:          %d\n", tasks);
  std::printf("resident before:        %.1f MiB\n", before / 1048576);
  std::printf("resident after:         %.1f MiB\n", withSteps / 1048576);
  std::printf("a Task with its step:   %.0f bytes\n", (withSteps - before) / tasks);
  std::printf("a Task alone:           %.0f bytes\n", (after - before) / tasks);
  return 0;
}
