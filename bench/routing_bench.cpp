// What moving a shape costs on pages of many connectors: only those that are glued to it or that it covers are redrawn.
#include <benchmark/benchmark.h>

#include <cmath>
#include <string>
#include <vector>

#include "host/automation/in_memory_host.h"
#include "host/connector_master.h"

namespace quorvel {
namespace {

/// Boxes in rows, each with a dynamic connector to the next one right and the next one up.
class Net {
 public:
  explicit Net(int connectors) {
    const int side = static_cast<int>(std::ceil(std::sqrt(connectors / 2.0)));
    const host::MasterId master = host::addConnectorMaster(running.engine(), host::DocumentId{document.ref().id});
    for (int i = 0; i < side * side; ++i) {
      const double x = 2 + 3 * (i % side), y = 2 + 2 * (i / side);
      boxes_.push_back(page.DrawRectangle(x - 0.75, y - 0.5, x + 0.75, y + 0.5));
    }
    const Master dropped(&running, {ObjectKind::Master, master.value, 0});
    const auto connect = [&](int from, int to) {
      if (made_ >= connectors) return;
      ++made_;
      const Shape& start = boxes_[std::size_t(from)];
      const auto inches = [&](const char* cell) { return start.Cells(cell).Result(visio::unitsInches).or_(0); };
      const Shape line = page.Drop(dropped, inches("PinX"), inches("PinY"));
      line.Cells("BeginX").GlueTo(boxes_[std::size_t(from)].Cells("PinX"));
      line.Cells("EndX").GlueTo(boxes_[std::size_t(to)].Cells("PinX"));
    };
    for (int i = 0; i < side * side; ++i) {
      if (i % side + 1 < side) connect(i, i + 1);
      if (i / side + 1 < side) connect(i, i + side);
    }
    middle_ = boxes_[std::size_t(side / 2 * side + side / 2)];
    running.engine().undo().discard(host::DocumentId{document.ref().id});
  }

  const Shape& middle() const { return middle_; }
  int made() const { return made_; }
  void discardSteps() { running.engine().undo().discard(host::DocumentId{document.ref().id}); }

 private:
  host::InMemoryHost running;
  Document document = running.app().Documents().Add("");
  Page page = document.Pages().Item(1);
  std::vector<Shape> boxes_;
  Shape middle_;
  int made_ = 0;
};

/// A box with four connectors moves back and forth over the lines of its neighbours.
void moveAShape(benchmark::State& state) {
  Net net(static_cast<int>(state.range(0)));
  const double y = net.middle().Cells("PinY").Result(visio::unitsInches).or_(0);
  bool up = false;
  for (auto _ : state) {
    up = !up;
    net.middle().Cells("PinY").SetResult(visio::unitsInches, up ? y + 0.3 : y);
    state.PauseTiming();
    net.discardSteps();
    state.ResumeTiming();
  }
  state.counters["connectors"] = net.made();
}

BENCHMARK(moveAShape)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace quorvel
