// What measurements share: times, memory, and the numbers on a command line.
#pragma once

#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

namespace quorvel {

/// Wall time.
template <class Act>
double milliseconds(Act act) {
  const auto start = std::chrono::steady_clock::now();
  act();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

/// CPU time of the process.
template <class Act>
double cpuMilliseconds(Act act) {
  const std::clock_t start = std::clock();
  act();
  return 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

/// The largest resident size of this process so far, MiB.
inline double peakMemory() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024;
}

/// How many Tasks the command line names, from argument `first` on; `otherwise` when it names none. Ends the
/// process with the usage for anything else.
inline std::vector<int> taskCounts(int argc, char** argv, int first, std::vector<int> otherwise, const char* usage) {
  std::vector<int> counts;
  for (int i = first; i < argc; ++i) counts.push_back(std::atoi(argv[i]));
  if (counts.empty()) counts = std::move(otherwise);
  bool good = !counts.empty();
  for (const int count : counts) good = good && count > 0;
  if (good) return counts;
  std::fprintf(stderr, "usage: %s\n", usage);
  std::exit(2);
}

}  // namespace quorvel
