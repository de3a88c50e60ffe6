// Runs a story again and again while the host refuses another one of the add-in's calls each time: the story ends, the
// drawing can still be saved and opened, and everything that was done can be undone and redone.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <limits>
#include <string>

#include "connect/dsr_visio_connect.h"
#include "failure/refusing_backend.h"
#include "formats/formats.h"
#include "headless/headless_platform.h"
#include "host/automation/in_memory_host.h"
#include "host/store_dump.h"

namespace quorvel {

class StorySweep {
 public:
  /// What a story works with. What the user does goes to the host itself; only the add-in's calls may be refused.
  struct Stage {
    Application user;
    Document stencil;
    Page page;
    addin::dsrVisioConnect& connect;
    host::InMemoryHost& running;
  };
  using Act = std::function<void(Stage&)>;

  /// `prepare` runs with every call answered, `act` with one refused; without `prepare` the refusals begin as the
  /// add-in connects, before the drawing is made. `onForm` answers the dialogs.
  StorySweep(Act prepare, Act act, std::function<void(Form&)> onForm)
      : prepare_(std::move(prepare)), act_(std::move(act)), onForm_(std::move(onForm)) {}

  /// Refuses each call from `first` on that is `stride` behind the one before, up to `last` or the story's own end. The
  /// story without a refusal makes more than `atLeast` calls.
  void refuseEach(std::size_t first, std::size_t last, std::size_t stride, std::size_t atLeast) const {
    const std::size_t calls = run(0);
    ASSERT_GT(calls, atLeast);
    // The sanitizers make each run several times as long; which calls are refused matters less to them.
    const std::size_t step = stride * (QUORVEL_SANITIZED ? 6 : 1);
    for (std::size_t n = first; n <= std::min(last, calls); n += step) {
      SCOPED_TRACE("call " + std::to_string(n) + " of " + std::to_string(calls) + " refused");
      run(n);
      if (testing::Test::HasFailure()) break;
    }
  }
  static constexpr std::size_t toTheEnd = std::numeric_limits<std::size_t>::max();

 private:
  static host::EngineOptions withFiles() {
    host::EngineOptions options;
    options.formats = formats::allFormats();
    return options;
  }

  static std::string withoutLines(std::string text, std::string_view part) {
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos;) {
      const std::size_t start = text.rfind('\n', at) + 1;
      text.erase(start, text.find('\n', at) + 1 - start);
      at = start;
    }
    return text;
  }

  static void clearSelection(const Application& user, const Document& map) {
    for (const Window& window : user.Windows().all()) {
      if (!(window.Document() == map)) continue;
      for (const Shape& shape : window.Page().Shapes().all()) window.Select(shape, visio::select);
      window.DeselectAll();
    }
  }

  /// Runs the story with the call number `refused` refused; gives how many calls the add-in made.
  std::size_t run(std::size_t refused) const {
    const std::string installFolder = QUORVEL_SOURCE_FOLDER "/data";
    host::InMemoryHost running(withFiles());
    RefusingBackend refusing(running);
    HeadlessPlatform platform(installFolder, testing::TempDir() + "quorvel-refused");
    platform.onForm = onForm_;
    platform.onMessage = [](const MessageBox& box) {
      return box.buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::Yes;
    };
    if (!prepare_) refusing.refuseFromNowOn(refused);
    addin::dsrVisioConnect connect(platform);
    connect.AddinInstance_OnConnection(Application(&refusing, refusing.application()));

    const Application user = running.app();
    const Document stencil = user.Documents().Open(installFolder + "/Quorvel.vssx");
    const Document map = user.Documents().Add(installFolder + "/Quorvel.vstx");
    EXPECT_TRUE(stencil && map);
    Stage stage{user, stencil, map.Pages().Item(1), connect, running};
    const host::DocumentId id{map.ref().id};
    // A save leaves marks in the document that formulas show, and is no step.
    const auto dump = [&] {
      return withoutLines(withoutLines(StoreDump::of(running.engine().store(), id), "User.DocumentSaved ="),
                          "User.AddinIsFound");
    };
    const std::string start = dump();
    if (prepare_) {
      prepare_(stage);
      refusing.refuseFromNowOn(refused);
    }
    act_(stage);
    clearSelection(user, map);
    EXPECT_FALSE(running.engine().undo().isOpen());
    const std::size_t calls = refusing.calls();
    refusing.refuseFromNowOn(0);
    // The mark of a selected shape is in no step. One that a refusal has left is removed by the next selection change.
    clearSelection(user, map);
    const std::string end = dump();

    // The tests may run at the same time.
    const std::string file = testing::TempDir() + "quorvel-refused-" + std::to_string(getpid()) + ".vsdx";
    EXPECT_TRUE(map.SaveAs(file)) << running.refusals().back().reason;
    {
      host::InMemoryHost again(withFiles());
      const Document opened = again.app().Documents().Open(file);
      EXPECT_TRUE(opened) << (again.refusals().empty() ? "" : again.refusals().back().reason);
      EXPECT_EQ(opened.Pages().Item(1).Shapes().Count().or_(-1), stage.page.Shapes().Count().or_(-2));
    }
    std::filesystem::remove(file);

    int undone = 0;
    while (user.Undo()) ++undone;
    EXPECT_EQ(firstDifference(start, dump()), "");
    while (undone-- > 0) EXPECT_TRUE(user.Redo());
    EXPECT_EQ(firstDifference(end, dump()), "");
    return calls;
  }

  Act prepare_, act_;
  std::function<void(Form&)> onForm_;
};

}  // namespace quorvel
