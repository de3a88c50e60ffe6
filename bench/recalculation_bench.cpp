// How long recalculation after one write takes: along a chain of cells across shapes, and to all readers of one cell.
#include <benchmark/benchmark.h>

#include <string>

#include "host/automation/in_memory_host.h"
#include "host/cells/cell_name.h"

namespace quorvel {
namespace {

constexpr int cellsOfAShape = 100;

/// A drawing with `cells` cells User.c0 … User.c99 on shapes of a hundred; `formula` returns the text of each.
class ManyCells {
 public:
  template <class FormulaOf>
  ManyCells(int cells, FormulaOf formulaOf) {
    const host::PageId home{page.ref().id};
    host::Store& store = running.engine().edit().making();
    for (int shape = 0; shape * cellsOfAShape < cells; ++shape) {
      const host::SheetId id = store.addShape(home, {}, host::SheetKind::Shape);
      for (int c = 0; c < cellsOfAShape; ++c) {
        host::Cell& cell = store.sheet(id)->local(*host::parseCellName("User.c" + std::to_string(c)));
        cell.formula = store.formulas().get(formulaOf(shape, c));
      }
      running.engine().edit().watchFormulas(id);
    }
  }

  Cell firstCell() { return page.Shapes().Item(1).Cells("User.c0"); }

  /// Writes another number each time, and removes the step so that the log stays small.
  void write(benchmark::State& state) {
    const Cell cell = firstCell();
    const std::size_t before = running.engine().evaluations();
    double value = 0;
    for (auto _ : state) {
      cell.SetResult(0, ++value);
      state.PauseTiming();
      running.engine().undo().discard(host::DocumentId{document.ref().id});
      state.ResumeTiming();
    }
    state.counters["cells"] =
        static_cast<double>(running.engine().evaluations() - before) / static_cast<double>(state.iterations());
  }

  host::InMemoryHost running;
  Document document = running.app().Documents().Add("");
  Page page = document.Pages().Item(1);
};

void chain(benchmark::State& state) {
  ManyCells cells(static_cast<int>(state.range(0)), [](int shape, int c) -> std::string {
    if (c > 0) return "User.c" + std::to_string(c - 1) + "+1";
    return shape > 0 ? "Sheet." + std::to_string(shape) + "!User.c99+1" : "0";
  });
  cells.write(state);
}

void fan(benchmark::State& state) {
  ManyCells cells(static_cast<int>(state.range(0)), [](int shape, int c) -> std::string {
    if (shape == 0 && c == 0) return "0";
    return shape == 0 ? "User.c0*2" : "Sheet.1!User.c0*2";
  });
  cells.write(state);
}

/// The same write with readers that do not change.
void fanThatStopsAtOnce(benchmark::State& state) {
  ManyCells cells(static_cast<int>(state.range(0)), [](int shape, int c) -> std::string {
    if (shape == 0 && c == 0) return "0";
    if (shape == 0 && c == 1) return "IF(User.c0<0,1,0)";
    return shape == 0 ? "User.c1*2" : "Sheet.1!User.c1*2";
  });
  cells.write(state);
}

BENCHMARK(chain)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(fan)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(fanThatStopsAtOnce)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quorvel
