// Prints the seconds of CPU time that dropping Tasks takes, for beside_python.py.
#include "map_with_tasks.h"
#include "measuring.h"

int main(int argc, char** argv) {
  const int tasks = quorvel::taskCounts(argc, argv, 1, {10'000}, "drop_tasks [TASKS]").front();
  quorvel::MapWithTasks map(1);  // makes the master and the vocabularies
  std::printf("%.3f\n", quorvel::cpuMilliseconds([&] { map.drop(tasks); }) / 1000);
  return 0;
}
