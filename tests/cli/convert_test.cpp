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
    auto info = nlohmann::json::parse(folder.run("info --json " + file).out);
    info.erase("file");
    return info;
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

TEST_F(Convert, SaysInOneLineWhatItLeavesOut) {
  const std::string drawing =
      "<VisioDocument xmlns='http://schemas.microsoft.com/visio/2003/core'>"
      "<DocumentProperties><Title>A</Title>PREVIEW</DocumentProperties>"
      "<Pages><Page ID='0'/></Pages>MACROS</VisioDocument>";
  const auto with = [&](std::string preview, std::string macros) {
    std::string text = drawing;
    text.replace(text.find("PREVIEW"), 7, preview);
    return text.replace(text.find("MACROS"), 6, macros);
  };
  const std::string preview = "<PreviewPicture Size='3'>AAAA</PreviewPicture>",
                    macros = "<VBProjectData>AAAA</VBProjectData>";
  const struct {
    std::string in, expected;
  } cases[] = {{with("", ""), ""},
               {with("", macros), "new.vsdx leaves out the macros of old.vdx.\n"},
               {with(preview, macros), "new.vsdx leaves out the preview picture and the macros of old.vdx.\n"},
               {with(preview, macros + "<EmailRoutingData/>"),
                "new.vsdx leaves out the preview picture, the routing slip and the macros of old.vdx.\n"}};
  for (const auto& one : cases) {
    folder.write("old.vdx", one.in);
    const Outcome outcome = folder.run("convert --force old.vdx new.vsdx");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.out, "new.vsdx\n");
    EXPECT_EQ(outcome.error, one.expected);
  }
  EXPECT_EQ(folder.run("convert --force old.vdx same.vdx").error, "") << "nothing is lost in its own format";
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
