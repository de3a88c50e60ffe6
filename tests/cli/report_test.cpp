// The subcommand that writes reports.
#include <gtest/gtest.h>

#include <algorithm>

#include "cli/run_program.h"

namespace quorvel::cli {
namespace {

const std::string installFolder = QUORVEL_SOURCE_FOLDER "/data";
const std::string sample = "'" QUORVEL_SOURCE_FOLDER "/data/Samples/Order handling.vsdx'";

class Report : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { setenv("QUORVEL_HOME", installFolder.c_str(), 1); }
  WorkFolder folder;
};

TEST_F(Report, WritesOneTableInSeveralFormats) {
  const Outcome list = folder.run("report " + sample + " --list");
  EXPECT_EQ(list.exitCode, 0);
  EXPECT_EQ(list.error, "");
  for (const char* title : {"Task list", "Tasks by role", "Role matrix", "Times by role and frequency"})
    EXPECT_NE(list.out.find(title), std::string::npos) << list.out;
  const Outcome outcome =
      folder.run("report " + sample + " --definition 'role MATRIX' -o a.html -o a.CSV --output a.xlsx");
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(outcome.out, "a.html\na.CSV\na.xlsx\n");
  EXPECT_TRUE(contentsOf(folder.file("a.html")).starts_with("<!DOCTYPE html>"));
  EXPECT_TRUE(contentsOf(folder.file("a.xlsx")).starts_with("PK"));
}

TEST_F(Report, ADrawingWithoutDefinitionsUsesTheInstalledOnes) {
  folder.write("old.vdx",
               "<VisioDocument xmlns='http://schemas.microsoft.com/visio/2003/core'><Pages><Page ID='0' NameU='P'/>"
               "</Pages></VisioDocument>");
  const Outcome outcome = folder.run("report old.vdx --definition 'Task list' -o a.csv");
  EXPECT_EQ(outcome.exitCode, 0);
  EXPECT_EQ(outcome.error, "old.vdx has no report definitions; the installed ones are used.\n");
  EXPECT_EQ(std::ranges::count(contentsOf(folder.file("a.csv")), '\n'), 1) << "no Task, so the titles alone";
}

TEST_F(Report, RefusesWithOneSentenceAndWritesNothing) {
  folder.write("taken.csv", "keep me");
  folder.write("bad.xml", "<report title='B'><scope shapes='tasks' pages='all'/></report>");
  const std::set<std::string> before = folder.files();
  const struct {
    std::string arguments, error;
  } cases[] = {
      {"--definition 'Task list' -o taken.csv", "taken.csv exists already"},
      {"--definition 'Task list' -o new.csv -o taken.csv", "taken.csv exists already"},
      {"--definition 'Task list' -o new.pdf", "end its name with .html, .csv or .xlsx"},
      {"--definition 'Task list' -o missing/new.csv", "missing/new.csv cannot be written"},
      {"--definition 'Task list' --page Nowhere -o new.csv", "no page \"Nowhere\""},
      {"--definition Unknown -o new.csv", "There is no report \"Unknown\"; there are: "},
      {"--definition bad.xml -o new.csv", "bad.xml can't be used: <scope> has an unknown attribute \"pages\""}};
  for (const auto& each : cases) {
    const Outcome outcome = folder.run("report " + sample + " " + each.arguments);
    EXPECT_EQ(outcome.exitCode, 3) << each.arguments;
    EXPECT_NE(outcome.error.find(each.error), std::string::npos) << outcome.error;
    EXPECT_EQ(std::ranges::count(outcome.error, '\n'), 1) << outcome.error;
    EXPECT_EQ(folder.files(), before) << each.arguments;
  }
  EXPECT_EQ(contentsOf(folder.file("taken.csv")), "keep me");
  EXPECT_EQ(folder.run("report " + sample + " --definition 'Task list' --force -o taken.csv").exitCode, 0);
  for (const char* arguments : {"", " --list -o a.csv", " --definition 'Task list'"})
    EXPECT_EQ(folder.run("report " + sample + arguments).exitCode, 2) << arguments;
}

}  // namespace
}  // namespace quorvel::cli
