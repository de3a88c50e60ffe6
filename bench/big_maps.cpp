// Times whole acts on maps of growing size: making, saving, opening, single edits, drawing. Prints a line for each
// size, so that what grows with the map and what doesn't can be read off.
#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "map_with_tasks.h"
#include "render/build/build_scene.h"
#include "render/svg/writer.h"

namespace {

using Clock = std::chrono::steady_clock;

template <class Act>
double milliseconds(Act act) {
  const auto start = Clock::now();
  act();
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// The largest resident size so far, MiB.
double peakMemory() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024;
}

void measure(int tasks, const std::string& folder) {
  using namespace quorvel;
  const std::string file = folder + "/map-of-" + std::to_string(tasks) + ".vsdx";
  MapWithTasks map(1);
  const double make = milliseconds([&] { map.drop(tasks - 1); });
  Shape dropped;
  const double edit =
      milliseconds([&] { map.page.Shapes().Item(4).Cells("Prop.Task_Description").SetFormula("\"Edited\""); });
  const double drop = milliseconds([&] { dropped = map.drop(1); });
  const double undo = milliseconds([&] { map.session.app().Undo(); });
  const double save = milliseconds([&] { map.map.SaveAs(file); });
  const double madePeak = peakMemory();

  SessionOptions withoutAddin;
  withoutAddin.installFolder = map.session.installFolder();
  withoutAddin.connectAddin = false;
  Session reader(withoutAddin);
  Document opened;
  const double open = milliseconds([&] { opened = reader.app().Documents().Open(file); });
  std::size_t bytes = 0;
  const double draw = milliseconds([&] {
    bytes = render::writeSvg(render::buildScene(reader.engine().store, host::PageId{opened.Pages().Item(1).ref().id}))
                .size();
  });
  std::printf(
      "%7d Tasks: make %8.0f  edit %6.3f  drop %6.3f  undo %6.3f  save %7.0f  open %7.0f  draw %7.0f ms; peak %5.0f "
      "MiB; %.1f MB of SVG\n",
      tasks, make, edit, drop, undo, save, open, draw, madePeak, static_cast<double>(bytes) / 1e6);
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: big_maps FOLDER TASKS...\nThe maps are left in FOLDER.\n");
    return 2;
  }
  for (int i = 2; i < argc; ++i) measure(std::atoi(argv[i]), argv[1]);
  return 0;
}
