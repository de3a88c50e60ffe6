// What a user's action costs on a small page and on a large one, with the add-in connected: it must not grow with the
// map.
#include <benchmark/benchmark.h>

#include "map_with_tasks.h"

namespace quorvel {
namespace {

constexpr int small = 10, large = 10'000;

void discardSteps(MapWithTasks& map) { map.session.engine().undo().discard(host::DocumentId{map.map.ref().id}); }

void editOneDescription(benchmark::State& state) {
  MapWithTasks map(static_cast<int>(state.range(0)));
  const Shape task = map.drop(1);
  discardSteps(map);
  const Cell description = task.Cells("Prop.Task_Description");
  int n = 0;
  for (auto _ : state) {
    description.FormulaForce("\"step " + std::to_string(++n) + "\"");
    if (n % 1000 == 0) discardSteps(map);
  }
}

void moveOneTask(benchmark::State& state) {
  MapWithTasks map(static_cast<int>(state.range(0)));
  const Shape task = map.drop(1);
  discardSteps(map);
  const Cell pin = task.Cells("PinX");
  int n = 0;
  for (auto _ : state) {
    pin.SetResult(visio::unitsInches, 1 + ++n % 100 / 10.0);
    if (n % 1000 == 0) discardSteps(map);
  }
}

/// A drop and its undo, so that the page keeps its size.
void dropOneTask(benchmark::State& state) {
  MapWithTasks map(static_cast<int>(state.range(0)));
  discardSteps(map);
  for (auto _ : state) {
    map.drop(1);
    state.PauseTiming();
    map.session.app().Undo();
    state.ResumeTiming();
  }
}

BENCHMARK(editOneDescription)->Arg(small)->Arg(large)->Unit(benchmark::kMicrosecond);
BENCHMARK(moveOneTask)->Arg(small)->Arg(large)->Unit(benchmark::kMicrosecond);
BENCHMARK(dropOneTask)->Arg(small)->Arg(large)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace quorvel
