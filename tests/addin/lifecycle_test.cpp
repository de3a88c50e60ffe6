// Connecting and disconnecting, and the questions to a host that refuses most of them.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "connect/host_queries.h"
#include "data/install_folder.h"
#include "headless/headless_platform.h"

namespace quorvel::addin {
namespace {

/// Answers the application's version and refuses everything else.
class BareHost : public Backend {
 public:
  std::string version = "12.0";
  std::vector<ApplicationEvents*> listeners;

  Maybe<Variant> get(const ObjectRef&, Member member, Arguments) override {
    if (member == Member::Application_Version) return Variant(version);
    return {};
  }
  bool put(const ObjectRef&, Member, Arguments, const Argument&) override { return false; }
  Maybe<Variant> call(const ObjectRef&, Member, Arguments) override { return {}; }
  ObjectRef application() const override { return {ObjectKind::Application, 1, 0}; }
  void advise(ApplicationEvents& listener) override { listeners.push_back(&listener); }
  void unadvise(ApplicationEvents& listener) override { std::erase(listeners, &listener); }
  std::vector<Refusal> refusals() const override { return {}; }
  std::size_t refusalCount() const override { return 0; }
};

class FolderWatcher : public HeadlessPlatform {
 public:
  using HeadlessPlatform::HeadlessPlatform;
  std::vector<std::string> foldersSet;
  bool setCurrentFolder(std::string_view folder) override {
    foldersSet.emplace_back(folder);
    return HeadlessPlatform::setCurrentFolder(folder);
  }
};

TEST(Lifecycle, ConnectingAsksThePlatformForItsFolderAndLeavesTheProcessAlone) {
  BareHost host;
  FolderWatcher platform("/install", "/nowhere");
  const auto before = std::filesystem::current_path();
  {
    dsrVisioConnect connect(platform);
    connect.AddinInstance_OnConnection(Application(&host, host.application()));
    EXPECT_EQ(platform.foldersSet, std::vector<std::string>{"c:\\"});  // there is no profile that says otherwise
    EXPECT_EQ(std::filesystem::current_path(), before);
    connect.AddinInstance_OnConnection(connect.gvsoApp);
    EXPECT_EQ(host.listeners.size(), 1u);
    connect.AddinInstance_OnDisconnection();
    EXPECT_TRUE(host.listeners.empty());
    EXPECT_FALSE(connect.gvsoApp);
    connect.AddinInstance_OnConnection(Application(&host, host.application()));
  }
  EXPECT_TRUE(host.listeners.empty());
}

TEST(Lifecycle, EventsOfAHostThatRefusesEverythingPass) {
  BareHost host;
  HeadlessPlatform platform("/install", "/nowhere");
  dsrVisioConnect connect(platform);
  connect.AddinInstance_OnConnection(Application(&host, host.application()));
  const ObjectRef something{ObjectKind::Shape, 7, 0};
  connect.DocumentCreated(Document(&host, something));
  connect.PageAdded(Page(&host, something));
  connect.ShapeAdded(Shape(&host, something));
  connect.CellChanged(Cell(&host, something));
  connect.SelectionChanged(Window(&host, something));
  connect.MouseMove(0, 0, 1, 1);
  EXPECT_FALSE(isMap(connect.gvsoApp.ActiveDocument()));
  EXPECT_FALSE(selectedShapeOfMaster(connect.gvsoApp.ActiveWindow().Selection().all(), ""));
  EXPECT_TRUE(platform.asked.empty());
}

TEST(Lifecycle, HostReleases) {
  BareHost host;
  HeadlessPlatform platform("/install", "/nowhere");
  dsrVisioConnect connect(platform);
  EXPECT_EQ(getVisioVersion(connect), "");
  connect.AddinInstance_OnConnection(Application(&host, host.application()));
  const struct {
    const char *version, *release;
  } cases[] = {{"10.0", "2002"}, {"11.0.4", "2003"}, {"12.0", "2007"}, {"13.0", ""}, {"1", ""}};
  for (const auto& c : cases) {
    host.version = c.version;
    EXPECT_EQ(getVisioVersion(connect), c.release) << c.version;
  }
}

TEST(InstallFolder, TakesEitherSlash) {
  for (const char* folder : {"/opt/q", "/opt/q/"}) {
    HeadlessPlatform platform(folder, "/nowhere");
    for (const char* file : {"Images/a b.jpg", "\\Images\\a b.jpg"}) {
      EXPECT_EQ(installedFile(platform, file), "/opt/q/Images/a b.jpg");
    }
  }
}

}  // namespace
}  // namespace quorvel::addin
