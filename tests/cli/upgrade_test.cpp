// The subcommand that brings a folder of maps up to date.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "cli/run_program.h"
#include "stories/old_maps.h"

namespace quorvel::cli {
namespace {

const std::string installFolder = QUORVEL_SOURCE_FOLDER "/data";

class UpgradeCommand : public testing::Test {
 protected:
  static void SetUpTestSuite() { setenv("QUORVEL_HOME", installFolder.c_str(), 1); }
  void put(const std::string& made, const std::string& name) const {
    std::filesystem::create_directories(folder.file(name).parent_path());
    std::filesystem::copy_file(made, folder.file(name));
  }
  std::string version(const std::string& name) const {
    const auto report = nlohmann::json::parse(folder.run("upgrade --dry-run --json '" + name + "'").out);
    return report["drawings"][0]["fromVersion"];
  }
  WorkFolder folder;
  const OldMaps maps{testing::TempDir() + "quorvel-cli-upgrade-" + std::to_string(getpid()) + "/"};
};

TEST_F(UpgradeCommand, DoesAFolderAndCarriesOnAfterABadFile) {
  // As many as a test may take; another number by hand.
  const char* number = std::getenv("QUORVEL_DRAWINGS");
  const std::size_t count = number ? static_cast<std::size_t>(std::atoi(number)) : 24;
  std::vector<std::string> made;
  for (const std::string version : OldMaps::versions)
    made.push_back(maps.make(version, made.size() % 2 ? ".vdx" : ".vsdx"));
  const auto name = [&](std::size_t i) {
    return "maps/" + std::string(i % 2 ? "sub/" : "") + std::to_string(i) +
           std::filesystem::path(made[i % made.size()]).extension().string();
  };
  for (std::size_t i = 0; i < count; ++i) put(made[i % made.size()], name(i));
  folder.write("maps/10 bad.vsdx", "This is no drawing.");
  folder.write("maps/letter.txt", "Dear reader");
  put(maps.makeCurrent("2.16"), "maps/current.vsdx");
  put(QUORVEL_SOURCE_FOLDER "/tests/data/drawings/connectors.vsdx", "maps/drawing.vsdx");

  const Outcome outcome = folder.run("upgrade maps");
  EXPECT_EQ(outcome.exitCode, 3);
  EXPECT_EQ(std::ranges::count(outcome.error, '\n'), 1) << outcome.error;
  EXPECT_NE(outcome.error.find("10 bad.vsdx"), std::string::npos);
  EXPECT_TRUE(outcome.out.ends_with("\n" + std::to_string(count + 3) + " drawings: " + std::to_string(count) +
                                    " upgraded, 1 current, 1 is no map, 1 failed\n"))
      << outcome.out;
  EXPECT_NE(outcome.out.find("maps/current.vsdx: version 2.16 already\n"), std::string::npos);
  EXPECT_NE(outcome.out.find("maps/drawing.vsdx: no map\n"), std::string::npos);
  EXPECT_NE(outcome.out.find("maps/0.vsdx: version 1.2 to 2.16, changed 3 pages, 6 Tasks, 3 Task Links, 3 Process "
                             "Connectors; "),
            std::string::npos)
      << outcome.out;
  for (std::size_t i = 0; i < count; ++i) {
    const std::filesystem::path old = folder.file(name(i));
    EXPECT_EQ(contentsOf(old), contentsOf(made[i % made.size()])) << "unchanged: " << old;
    const std::string upgraded = old.stem().string() + "-upgraded" + old.extension().string();
    EXPECT_TRUE(std::filesystem::exists(old.parent_path() / upgraded)) << upgraded;
  }
  EXPECT_EQ(version("maps/0-upgraded.vsdx"), "2.16");
}

TEST_F(UpgradeCommand, WritesOnlyWhatItIsTold) {
  const std::string made = maps.make("2.1");
  put(made, "map.vsdx");
  const std::string before = contentsOf(made);

  auto report = nlohmann::json::parse(folder.run("upgrade --dry-run --json map.vsdx map.vsdx").out);
  EXPECT_EQ(report["drawings"].size(), 1u) << "named twice";
  const auto& drawing = report["drawings"][0];
  EXPECT_EQ(drawing["outcome"], "upgraded");
  EXPECT_EQ(drawing["fromVersion"], "2.1");
  EXPECT_EQ(drawing["toVersion"], "2.16");
  EXPECT_EQ(drawing["tasks"], 0) << "Tasks of this version are as they are now";
  EXPECT_EQ(drawing["taskLinks"], 3);
  EXPECT_EQ(drawing["processConnectors"], 3);
  EXPECT_EQ(drawing["recordsAdded"], 2);
  EXPECT_EQ(drawing["pages"].size(), 1u);
  EXPECT_EQ(drawing["written"], nullptr);
  EXPECT_EQ(folder.files(), std::set<std::string>{"map.vsdx"});

  EXPECT_EQ(folder.run("upgrade map.vsdx").exitCode, 0);
  const Outcome again = folder.run("upgrade map.vsdx");
  EXPECT_EQ(again.exitCode, 3);
  EXPECT_NE(again.error.find("map-upgraded.vsdx exists already"), std::string::npos) << again.error;
  EXPECT_EQ(folder.run("upgrade --force map.vsdx").exitCode, 0);
  EXPECT_EQ(contentsOf(folder.file("map.vsdx")), before);

  folder.write("map.vsdx.bak", "precious");
  EXPECT_EQ(folder.run("upgrade --in-place --backup map.vsdx").exitCode, 0);
  EXPECT_EQ(version("map.vsdx"), "2.16");
  EXPECT_EQ(contentsOf(folder.file("map.vsdx.bak")), "precious");
  EXPECT_EQ(contentsOf(folder.file("map.vsdx.bak2")), before);
  EXPECT_EQ(folder.run("upgrade --in-place map.vsdx").out,
            "map.vsdx: version 2.16 already\n1 drawing: 0 upgraded, 1 current, 0 are no maps, 0 failed\n");
  EXPECT_EQ(folder.run("upgrade --backup map.vsdx").exitCode, 2);
  EXPECT_EQ(folder.run("upgrade missing.vsdx").exitCode, 3);
}

}  // namespace
}  // namespace quorvel::cli
