// Prints the seconds of CPU time that dropping Tasks takes, for beside_python.py.
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "map_with_tasks.h"

int main(int argc, char** argv) {
  const int tasks = argc > 1 ? std::atoi(argv[1]) : 10'000;
  if (tasks < 1) {
    std::fprintf(stderr, "usage: drop_tasks [NUMBER OF TASKS]\n");
    return 2;
  }
  quorvel::MapWithTasks map(1);  // the master and the vocabularies stand
  const std::clock_t start = std::clock();
  map.drop(tasks);
  std::printf("%.3f\n", static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
  return 0;
}
