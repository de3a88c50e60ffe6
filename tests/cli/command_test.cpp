// The command for its users: what it makes, what it prints, and its errors.
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "cli/run_program.h"

namespace quorvel::cli {
namespace {

const std::string installFolder = QUORVEL_SOURCE_FOLDER "/data";

class Command : public testing::Test {
 protected:
  static void SetUpTestSuite() { setenv("QUORVEL_HOME", installFolder.c_str(), 1); }
  WorkFolder folder;
};

TEST_F(Command, RefusesBadInputWithOneSentenceAndWritesNothing) {
  const std::string good = contentsOf(installFolder + "/Quorvel.vstx");
  folder.write("no zip.vsdx", "This is a letter, not a drawing.");
  folder.write("empty.vsdx", "");
  folder.write("truncated.vsdx", good.substr(0, good.size() / 2));
  folder.write("head only.vsdx", good.substr(0, 100));
  folder.write("letter.txt", "Dear customer");
  folder.write("old.vsd", "\xD0\xCF\x11\xE0");
  folder.write("letter.vdx", "<letter>Dear reader</letter>");
  // A zip that holds one empty file and no drawing.
  folder.write("no drawing.vsdx", std::string("PK\3\4\n\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\1\0\0\0a", 31) +
                                      std::string("PK\1\2\n\0\n\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\1\0\0\0\0\0"
                                                  "\0\0\0\0\0\0\0\0\0\0\0\0a",
                                                  47) +
                                      std::string("PK\5\6\0\0\0\0\1\0\1\0\57\0\0\0\37\0\0\0\0\0", 22));
  std::filesystem::create_directory(folder.file("folder.vsdx"));
  folder.write("good.vsdx", good);
  folder.write("taken.vsdx", "keep me");

  const std::set<std::string> before = folder.files();
  for (const std::string arguments : {
           "info 'no zip.vsdx'",
           "info empty.vsdx",
           "info truncated.vsdx",
           "info --json 'head only.vsdx'",
           "info 'no drawing.vsdx'",
           "info missing.vsdx",
           "info folder.vsdx",
           "info letter.txt",
           "info old.vsd",
           "info letter.vdx",
           "export truncated.vsdx -o out.svg",
           "export old.vsd -o out.svg",
           "export good.vsdx -o out.gif",
           "export good.vsdx -o nowhere/out.svg",
           "export good.vsdx -o out.png --dpi 1",
           "export good.vsdx -o out.svg --page 'No such page'",
           "new taken.vsdx",
           "new nowhere/map.vsdx",
           "new map.vsd",
           "new map",
           "sample taken.vsdx",
           "sample nowhere/map.vsdx",
       }) {
    SCOPED_TRACE(arguments);
    const Outcome outcome = folder.run(arguments);
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(std::ranges::count(outcome.error, '\n'), 1) << outcome.error;
    EXPECT_TRUE(outcome.error.ends_with(".\n")) << outcome.error;
    EXPECT_EQ(folder.files(), before);
  }
  EXPECT_EQ(contentsOf(folder.file("taken.vsdx")), "keep me");
}

TEST_F(Command, SaysHowItIsUsedOnABadCommandLine) {
  for (const std::string arguments : {"", "draw x.vsdx", "info", "export x.vsdx", "info --loud x.vsdx"}) {
    const Outcome outcome = folder.run(arguments);
    EXPECT_EQ(outcome.exitCode, 2) << arguments;
    EXPECT_NE(outcome.error, "") << arguments;
  }
  EXPECT_EQ(folder.run("--help").exitCode, 0);
  EXPECT_TRUE(folder.run("--version").out.starts_with("quorvel 2."));
}

TEST_F(Command, MakesAMapOfTheAddin) {
  ASSERT_EQ(folder.run("new map.vsdx").exitCode, 0);
  const auto info = nlohmann::json::parse(folder.run("info --json map.vsdx").out);
  EXPECT_EQ(info["isProcessMap"], true);
  EXPECT_EQ(info["template"], "Quorvel.vstx");
  ASSERT_EQ(info["pages"].size(), 1u);
  // Logo, legend and title box.
  EXPECT_EQ(info["pages"][0]["shapeCount"], 3);
  EXPECT_EQ(folder.run("new --force map.vsdx").exitCode, 0);
}

TEST_F(Command, PrintsTheSampleMapAsJson) {
  ASSERT_EQ(folder.run("sample map.vsdx").exitCode, 0);
  const std::string before = contentsOf(folder.file("map.vsdx"));
  const auto info = nlohmann::json::parse(folder.run("info --json map.vsdx").out);
  EXPECT_EQ(info["title"], "Order handling");
  ASSERT_GE(info["pages"].size(), 3u);
  std::size_t tasks = 0;
  for (const auto& page : info["pages"]) {
    tasks += page["tasks"].size();
    for (const auto& link : page["links"]) EXPECT_FALSE(link["from"].is_null() || link["to"].is_null()) << link;
  }
  EXPECT_GE(tasks, 12u);

  const auto& page = info["pages"][0];
  const auto& check = page["tasks"][1];
  EXPECT_EQ(check["id"], "OH02");
  EXPECT_EQ(check["description"], "Check the customer's credit");
  EXPECT_EQ(check["responsibleRole"], "Credit Controller");
  EXPECT_EQ(check["supportingRoles"], (nlohmann::json{"Finance Manager", "Accounts Clerk"}));
  EXPECT_EQ(check["time"], (nlohmann::json{{"value", 1.0}, {"unit", "Hours"}}));
  EXPECT_EQ(check["frequency"], "Daily");
  EXPECT_EQ(check["linkedTask"], "CR01");
  std::set<std::string> ways;
  for (const auto& link : page["links"])
    if (link["from"]["label"] == "OH02") ways.insert(link["description"].get<std::string>());
  EXPECT_EQ(ways, (std::set<std::string>{"Approved", "Refused"}));
  EXPECT_EQ(page["connectors"][0]["shownId"], "SH01");
  EXPECT_EQ(page["connectors"][0]["target"], "SH Shipping/SH01");
  EXPECT_TRUE(std::ranges::any_of(page["hyperlinks"], [](const auto& link) {
    return link["on"] == "OH02" && link["subAddress"] == "CR Credit check/CR01";
  }));
  EXPECT_EQ(contentsOf(folder.file("map.vsdx")), before) << "reading a map must not change it";
}

TEST_F(Command, ExportsEveryForegroundPageOrTheOneNamed) {
  ASSERT_EQ(folder.run("sample map.vsdx").exitCode, 0);
  ASSERT_EQ(folder.run("export map.vsdx -o map.svg").exitCode, 0);
  EXPECT_EQ(folder.files(),
            (std::set<std::string>{"map.vsdx", "map.svg", "map-2 CR Credit check.svg", "map-3 SH Shipping.svg"}));
  EXPECT_NE(contentsOf(folder.file("map.svg")).find("Approved"), std::string::npos);

  ASSERT_EQ(folder.run("export map.vsdx -o one.svg --page 'SH Shipping'").exitCode, 0);
  EXPECT_EQ(contentsOf(folder.file("one.svg")), contentsOf(folder.file("map-3 SH Shipping.svg")));

  ASSERT_EQ(folder.run("export '" + installFolder + "/Quorvel.vssx' -o masters.svg").exitCode, 0);
  EXPECT_NE(contentsOf(folder.file("masters.svg")).find("Process Connector"), std::string::npos);
}

}  // namespace
}  // namespace quorvel::cli
