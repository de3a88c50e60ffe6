// What renumbering the Tasks of a page costs on maps of two sizes with the same number of linked Process Connectors: it
// must grow with the map and not with its square.
#include <benchmark/benchmark.h>

#include <map>
#include <memory>

#include "commands/renumber_tasks.h"
#include "dialogs/display_dialog.h"
#include "map_with_tasks.h"
#include "measuring.h"

namespace quorvel {
namespace {

constexpr int small = 1'000, large = 10'000, connectors = 2'000;

/// Made once for all benchmarks: the drops take longer than what is measured.
MapWithTasks& mapOf(int tasks) {
  static std::map<int, std::unique_ptr<MapWithTasks>> maps;
  std::unique_ptr<MapWithTasks>& made = maps[tasks];
  if (made) return *made;
  made = std::make_unique<MapWithTasks>(tasks);
  const Document stencil = made->session.app().Documents().Open(made->session.stencilPath());
  const Master master = stencil.Masters().Item("Process Connector");
  const Page page = made->map.Pages().Add();
  const std::vector<Shape> targets = made->page.Shapes().all();
  const std::string pageName = made->page.Name().or_({});
  for (int i = 0; i < connectors; ++i) {
    const Shape connector = page.Drop(master, 1 + i % 100 * 2, 1 + i / 100);
    const Shape target =
        targets[targets.size() - 1 - static_cast<std::size_t>(i) * 7 % static_cast<std::size_t>(tasks)];
    const std::string address = pageName + "/" + target.Name().or_({});
    const Hyperlink link = connector.AddHyperlink();
    link.SetSubAddress(address);
    link.SetDescription(address);
  }
  return *made;
}

/// Milliseconds of the fastest run, by the benchmark's name and the number of Tasks.
std::map<std::string, std::map<int, double>> fastest;

/// `first` 1 with other letters: no ID is in use. 2 with the same letters: each new ID is that of the next Task, and
/// all links end on the last one.
void renumber(benchmark::State& state, const char* name, const char* letters, long first) {
  const int tasks = static_cast<int>(state.range(0));
  MapWithTasks& map = mapOf(tasks);
  const addin::DisplayTarget target{map.page, {}, {}};
  for (auto _ : state) {
    state.PauseTiming();
    map.session.engine().undo().discard(host::DocumentId{map.map.ref().id});
    state.ResumeTiming();
    const double taken = cpuMilliseconds([&] {
      long number = first;
      addin::RenumberZNBShapes(map.session.addin(), target, letters, number, addin::displayScope::page);
    });
    state.PauseTiming();
    double& best = fastest[name].try_emplace(tasks, taken).first->second;
    best = std::min(best, taken);
    if (!map.session.app().Undo()) state.SkipWithError("nothing was renumbered");
    state.ResumeTiming();
  }
}

BENCHMARK_CAPTURE(renumber, other_ids, "other IDs", "Q", 1)
    ->Arg(small)
    ->Arg(large)
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(renumber, crossing_ids, "crossing IDs", "Z", 2)
    ->Arg(small)
    ->Arg(large)
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quorvel

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  for (const auto& [name, times] : quorvel::fastest) {
    if (times.size() == 2)
      std::printf("%s: %.0f ms and %.0f ms, ratio %.1f\n", name.c_str(), times.begin()->second, times.rbegin()->second,
                  times.rbegin()->second / times.begin()->second);
  }
}
