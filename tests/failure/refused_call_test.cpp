// The first map while the host refuses one call of the add-in's, whichever it is: the story ends, the drawing stays
// one that can be saved and opened, and everything after its making can be taken back.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <limits>

#include "addin/dsr_visio_connect.h"
#include "failure/refusing_backend.h"
#include "formats/formats.h"
#include "headless/headless_platform.h"
#include "host/automation/in_memory_host.h"
#include "host/store_dump.h"

namespace quorvel {
namespace {

const std::string installFolder = std::string(QUORVEL_SOURCE_FOLDER) + "/data";

host::EngineOptions withFiles() {
  host::EngineOptions options;
  options.formats = formats::allFormats();
  return options;
}

/// Runs the story with the call number `refused` refused; gives how many calls the add-in made.
std::size_t runStory(std::size_t refused) {
  host::InMemoryHost running(withFiles());
  RefusingBackend refusing(running, refused);
  HeadlessPlatform platform(installFolder, testing::TempDir() + "quorvel-refused");
  platform.onForm = [](Form& form) {
    if (Control* ok = form.find("BtnOK")) ok->click();
  };
  addin::dsrVisioConnect connect(platform);
  connect.AddinInstance_OnConnection(Application(&refusing, refusing.application()));

  // What the user does reaches the host itself.
  const Application user = running.app();
  const Document stencil = user.Documents().Open(installFolder + "/Quorvel.vssx");
  const Document map = user.Documents().Add(installFolder + "/Quorvel.vstx");
  EXPECT_TRUE(stencil && map);
  const Page page = map.Pages().Item(1);
  const host::DocumentId id{map.ref().id};
  const auto dump = [&] { return StoreDump::of(running.engine().store, id); };
  const std::string start = dump();
  double x = 2;
  for (const char* master : {"Task", "Task Link", "Process Connector"}) {
    page.Drop(stencil.Masters().Item(master), x, 6);
    x += 3;
  }
  EXPECT_FALSE(running.engine().undo.isOpen());
  const std::string end = dump();
  const std::size_t calls = refusing.calls();

  // The tests may run beside each other.
  const std::string file = testing::TempDir() + "quorvel-refused-" + std::to_string(getpid()) + ".vsdx";
  EXPECT_TRUE(map.SaveAs(file)) << running.refusals().back().reason;
  {
    host::InMemoryHost again(withFiles());
    const Document opened = again.app().Documents().Open(file);
    EXPECT_TRUE(opened) << (again.refusals().empty() ? "" : again.refusals().back().reason);
    EXPECT_EQ(opened.Pages().Item(1).Shapes().Count().or_(-1), page.Shapes().Count().or_(-2));
  }

  std::filesystem::remove(file);

  int undone = 0;
  while (user.Undo()) ++undone;
  EXPECT_EQ(firstDifference(start, dump()), "");
  while (undone-- > 0) EXPECT_TRUE(user.Redo());
  EXPECT_EQ(firstDifference(end, dump()), "");
  return calls;
}

/// Each call from `first` on that is `stride` behind the one before, up to `last` or the story's own end.
void refuseEach(std::size_t first, std::size_t last, std::size_t stride) {
  const std::size_t calls = runStory(0);
  ASSERT_GT(calls, 1000u);
  for (std::size_t n = first; n <= std::min(last, calls); n += stride) {
    SCOPED_TRACE("call " + std::to_string(n) + " of " + std::to_string(calls) + " refused");
    runStory(n);
    if (testing::Test::HasFailure()) break;
  }
}

// A new drawing and the first drops make about two thousand calls. Each of the first four hundred is refused, and
// beyond them every seventh, which meets every kind of call many times.
TEST(RefusedCall, TheFirstMapSurvivesEachOfTheFirst) { refuseEach(1, 400, 1); }
TEST(RefusedCall, TheFirstMapSurvivesTheLaterOnes) { refuseEach(401, std::numeric_limits<std::size_t>::max(), 7); }

}  // namespace
}  // namespace quorvel
