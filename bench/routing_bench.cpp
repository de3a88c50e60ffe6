// What moving a shape costs on pages of many connectors: only those that hang on it or lie in its way are drawn anew.
#include <benchmark/benchmark.h>

#include <cmath>
#include <string>
#include <vector>

#include "host/automation/in_memory_host.h"
#include "host/cells/cell_name.h"
#include "host/cells/cell_table.h"

namespace quorvel {
namespace {

/// Boxes in rows, each with a dynamic connector to the next one right and the next one up.
class Net {
 public:
  explicit Net(int connectors) {
    const int side = static_cast<int>(std::ceil(std::sqrt(connectors / 2.0)));
    const host::MasterId master = addMaster();
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
    running.engine().undo.forget(host::DocumentId{document.ref().id});
  }

  const Shape& middle() const { return middle_; }
  int made() const { return made_; }
  void forgetSteps() { running.engine().undo.forget(host::DocumentId{document.ref().id}); }

 private:
  host::MasterId addMaster() {
    host::Store& store = running.engine().store;
    const host::MasterId made = store.addMaster(host::DocumentId{document.ref().id}, "Dynamic connector");
    const host::SheetId id = store.addShape(store.master(made)->contents, {}, host::SheetKind::Shape);
    host::Sheet& sheet = *store.sheet(id);
    const char* const cells[][2] = {{"BeginX", "0 in"},
                                    {"BeginY", "0 in"},
                                    {"EndX", "1 in"},
                                    {"EndY", "0 in"},
                                    {"PinX", "GUARD((BeginX+EndX)/2)"},
                                    {"PinY", "GUARD((BeginY+EndY)/2)"},
                                    {"Width", "GUARD(EndX-BeginX)"},
                                    {"Height", "GUARD(EndY-BeginY)"},
                                    {"LocPinX", "GUARD(Width*0.5)"},
                                    {"LocPinY", "GUARD(Height*0.5)"},
                                    {"GlueType", "2"},
                                    {"ObjType", "2"}};
    for (const auto& [name, formula] : cells) {
      host::Cell& cell = sheet.local(*host::parseCellName(name));
      cell.formula = store.formulas().get(formula);
      if (cell.formula->constant()) cell.value = *cell.formula->constant();
    }
    host::Section& geometry = sheet.section(host::SectionNumber::Geometry);
    for (std::uint32_t i = 0; i < 3; ++i) {
      host::Row row;
      row.key = host::RowKey::index(i);
      row.type = static_cast<std::uint8_t>(i == 0 ? 0 : i == 1 ? 138 : 139);
      for (host::Column column = 0; column < 2 && i > 0; ++column) {
        host::Cell cell;
        cell.value = host::Value::number(column == 0 && i == 2 ? 1 : 0, host::Unit::Inches);
        row.cells.emplace_back(column, cell);
      }
      geometry.rows.push_back(row);
    }
    running.engine().graph.addSheet(id);
    return made;
  }

  host::InMemoryHost running;
  Document document = running.app().Documents().Add("");
  Page page = document.Pages().Item(1);
  std::vector<Shape> boxes_;
  Shape middle_;
  int made_ = 0;
};

/// A box with four connectors goes to and fro over the ways of its neighbours.
void moveAShape(benchmark::State& state) {
  Net net(static_cast<int>(state.range(0)));
  const double y = net.middle().Cells("PinY").Result(visio::unitsInches).or_(0);
  bool up = false;
  for (auto _ : state) {
    up = !up;
    net.middle().Cells("PinY").SetResult(visio::unitsInches, up ? y + 0.3 : y);
    state.PauseTiming();
    net.forgetSteps();
    state.ResumeTiming();
  }
  state.counters["connectors"] = net.made();
}

BENCHMARK(moveAShape)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace quorvel
