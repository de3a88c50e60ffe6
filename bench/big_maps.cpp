// Times complete actions on maps of growing size: making, saving, opening, single edits, drawing. Prints two lines for
// each size, which show what grows with the map and what does not. Each line is a process of its own, so that its peak
// of memory is its own too.
#include <sys/wait.h>
#include <unistd.h>

#include <string>

#include "map_with_tasks.h"
#include "measuring.h"
#include "render/build/build_scene.h"
#include "render/svg/writer.h"

namespace {

using namespace quorvel;

void make(int tasks, const std::string& file) {
  MapWithTasks map(1);
  const double made = milliseconds([&] { map.drop(tasks - 1); });
  Shape dropped;
  const double edit =
      milliseconds([&] { map.page.Shapes().Item(4).Cells("Prop.Task_Description").SetFormula("\"Edited\""); });
  const double drop = milliseconds([&] { dropped = map.drop(1); });
  const double undo = milliseconds([&] { map.session.app().Undo(); });
  const double peak = peakMemory();
  const double save = milliseconds([&] { map.map.SaveAs(file); });
  std::printf(
      "%7d Tasks: make %8.0f  edit %6.3f  drop %6.3f  undo %6.3f  save %7.0f ms; peak %5.0f MiB, with save %5.0f\n",
      tasks, made, edit, drop, undo, save, peak, peakMemory());
}

void openAndDraw(int tasks, const std::string& file) {
  SessionOptions options;
  options.installFolder = std::string(QUORVEL_SOURCE_FOLDER) + "/data";
  options.connectAddin = false;
  Session reader(options);
  Document opened;
  const double open = milliseconds([&] { opened = reader.app().Documents().Open(file); });
  const double peak = peakMemory();
  std::size_t bytes = 0;
  const double draw = milliseconds([&] {
    bytes = render::writeSvg(render::buildScene(reader.engine().store(), host::PageId{opened.Pages().Item(1).ref().id}))
                .size();
  });
  std::printf("%7d Tasks: open %8.0f  draw %7.0f ms; peak %5.0f MiB, with drawing %5.0f; %.1f MB of SVG\n", tasks, open,
              draw, peak, peakMemory(), static_cast<double>(bytes) / 1e6);
}

template <class Act>
void inItsOwnProcess(Act act) {
  const pid_t child = ::fork();
  if (child == 0) {
    act();
    std::fflush(stdout);
    std::_Exit(0);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
}

}  // namespace

int main(int argc, char** argv) {
  const char* const usage = "big_maps FOLDER TASKS...\nThe maps are left in FOLDER as map-of-TASKS.vsdx.";
  for (const int tasks : taskCounts(argc, argv, 2, {}, usage)) {
    const std::string file = std::string(argv[1]) + "/map-of-" + std::to_string(tasks) + ".vsdx";
    inItsOwnProcess([&] { make(tasks, file); });
    inItsOwnProcess([&] { openAndDraw(tasks, file); });
  }
  return 0;
}
