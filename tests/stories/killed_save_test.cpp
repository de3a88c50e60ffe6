// A process that is killed while it saves leaves the old file or the new one, each complete.
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "formats/formats.h"
#include "host/document_format.h"
#include "host/store_dump.h"
#include "stories/map_fixture.h"

namespace quorvel {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Microseconds = std::chrono::microseconds;

class KilledSave : public MapTest {
 protected:
  const std::string folder = testing::TempDir() + "quorvel-killed-" + std::to_string(::getpid()) + "/";
  const std::string file = folder + "map.vsdx";
  void SetUp() override {
    MapTest::SetUp();
    fs::create_directories(folder);
  }
  void TearDown() override {
    MapTest::TearDown();
    fs::remove_all(folder);
  }

  static std::string bytesOf(const std::string& name) {
    std::ifstream in(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  /// The drawing of the file as text; why it cannot be opened otherwise.
  static std::string drawingIn(const std::string& name) {
    host::Store store;
    const host::OpenResult opened = host::openFile(formats::allFormats(), store, name);
    return opened.error.empty() ? StoreDump::of(store, opened.document) : opened.error;
  }
  /// True while a save is writing next to the file.
  bool isWriting() const {
    for (const auto& each : fs::directory_iterator(folder))
      if (each.path().extension() == ".tmp") return true;
    return false;
  }
  void removeRemains() const {
    for (const auto& each : fs::directory_iterator(folder))
      if (each.path().extension() == ".tmp") fs::remove(each.path());
  }

  static bool hasEnded(pid_t child) {
    siginfo_t info{};
    return ::waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOHANG | WNOWAIT) != 0 || info.si_pid != 0;
  }

  /// A child that saves the map.
  pid_t startSave() {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(map.Save() ? 0 : 1);
    return child;
  }
};

TEST_F(KilledSave, LeavesTheOldFileOrTheNewOne) {
  const char* number = std::getenv("QUORVEL_KILLS");
  const int kills = number ? std::atoi(number) : 24;
  const Page page = newMap("A Orders");
  std::vector<Shape> tasks;
  for (int i = 0; i < 12; ++i) tasks.push_back(dropTask(page, 1 + i % 4 * 2.5, 1 + i / 4 * 2));
  ASSERT_TRUE(map.SaveAs(file)) << lastRefusal();
  const std::string oldBytes = bytesOf(file);
  for (const Shape& task : tasks) task.Cells("Prop.Guidelines").FormulaForce("\"Sign;Ask;Weigh\"");
  const auto start = Clock::now();
  ::waitpid(startSave(), nullptr, 0);
  const auto duration = std::chrono::duration_cast<Microseconds>(Clock::now() - start);
  ASSERT_NE(bytesOf(file), oldBytes);
  const std::string newDrawing = drawingIn(file);

  int killed = 0, old = 0;
  for (int n = 0; n < kills; ++n) {
    std::ofstream(file, std::ios::binary) << oldBytes;
    const pid_t child = startSave();
    if (n % 2 == 0) {
      // From the start to a little after the usual end.
      ::usleep(static_cast<useconds_t>(duration.count() * n * 5 / (kills * 4)));
    } else {
      // While the file is written and renamed, which is a small part of the time.
      while (!isWriting() && !hasEnded(child)) {
      }
      ::usleep(static_cast<useconds_t>(duration.count() * n / (kills * 4)));
    }
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    killed += WIFSIGNALED(status);
    if (bytesOf(file) == oldBytes) {
      ++old;
    } else {
      EXPECT_EQ(firstDifference(drawingIn(file), newDrawing), "") << "kill " << n;
    }
    removeRemains();
  }
  EXPECT_GT(killed, 0);
  EXPECT_GT(old, 0);
  if (number) std::cout << kills << " saves, " << killed << " killed, " << old << " with the old file\n";
}

}  // namespace
}  // namespace quorvel
