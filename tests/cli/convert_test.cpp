// The subcommand that writes a drawing in another format.
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "cli/run_program.h"

namespace quorvel::cli {
namespace {

const std::string installFolder = QUORVEL_SOURCE_FOLDER "/data";

class Convert : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { setenv("QUORVEL_HOME", installFolder.c_str(), 1); }
  /// What the drawing holds, without the names of the file.
  nlohmann::json info(const std::string& file) {
    auto told = nlohmann::json::parse(folder.run("info --json " + file).out);
    told.erase("file");
    return told;
  }
  WorkFolder folder;
};

TEST_F(Convert, AMapIsTheSameInBothFormats) {
  ASSERT_EQ(folder.run("sample map.vsdx").exitCode, 0);
  EXPECT_EQ(folder.run("convert map.vsdx old.vdx").out, "old.vdx\n");
  EXPECT_EQ(folder.run("convert old.vdx back.vsdx").out, "back.vsdx\n");
  EXPECT_TRUE(contentsOf(folder.file("old.vdx")).starts_with("<?xml"));
  EXPECT_EQ(info("old.vdx"), info("map.vsdx"));
  EXPECT_EQ(info("back.vsdx"), info("map.vsdx"));
}

TEST_F(Convert, RefusesWithOneSentenceAndWritesNothing) {
  ASSERT_EQ(folder.run("new map.vsdx").exitCode, 0);
  folder.write("taken.vdx", "keep me");
  const std::set<std::string> before = folder.files();
  for (const std::string arguments :
       {"convert map.vsdx map.pdf", "convert map.vsdx map.vsd", "convert map.vsdx taken.vdx",
        "convert taken.vdx new.vsdx", "convert missing.vdx new.vsdx"}) {
    const Outcome outcome = folder.run(arguments);
    EXPECT_EQ(outcome.exitCode, 3) << arguments;
    EXPECT_EQ(std::ranges::count(outcome.error, '\n'), 1) << outcome.error;
    EXPECT_EQ(folder.files(), before) << arguments;
  }
  EXPECT_EQ(contentsOf(folder.file("taken.vdx")), "keep me");
  EXPECT_EQ(folder.run("convert --force map.vsdx taken.vdx").exitCode, 0);
}

}  // namespace
}  // namespace quorvel::cli
