// Unsaved work survives the process: the copies that are written aside, and what finds them later.
#include <unistd.h>

#include <fstream>

#include "stories/map_fixture.h"

namespace quorvel {
namespace {

namespace fs = std::filesystem;

struct SaveEvents : ApplicationEvents {
  int count = 0;
  void BeforeDocumentSave(Document) override { ++count; }
  void BeforeDocumentSaveAs(Document) override { ++count; }
  void DocumentSaved(Document) override { ++count; }
  void DocumentSavedAs(Document) override { ++count; }
};

class Recovery : public MapTest {
 protected:
  void SetUp() override {
    MapTest::SetUp();
    fs::remove_all(folder);
    fs::remove_all(mapFile);
  }
  std::vector<fs::path> copies() const {
    std::vector<fs::path> found;
    if (!fs::exists(folder)) return found;
    for (const auto& each : fs::directory_iterator(folder))
      if (each.path().extension() != ".recovery") found.push_back(each.path());
    return found;
  }

  const std::string folder = testing::TempDir() + "quorvel-recovery-" + std::to_string(::getpid());
  const std::string mapFile = testing::TempDir() + "guarded-" + std::to_string(::getpid()) + ".vsdx";
};

TEST_F(Recovery, ACopyFollowsUnsavedWorkAndGoesWithTheSave) {
  RecoveryCopies guard(session.engine(), folder, std::chrono::seconds(0));
  const Page page = newMap();
  ASSERT_TRUE(map.SaveAs(mapFile)) << lastRefusal();
  guard.update();
  EXPECT_TRUE(map.Saved() == true);
  EXPECT_TRUE(copies().empty()) << "nothing is unsaved";

  const Shape task = dropTask(page);
  EXPECT_TRUE(map.Saved() == false);
  guard.update();
  ASSERT_EQ(copies().size(), 1u) << guard.lastError;
  EXPECT_TRUE(text(map.DocumentSheet(), "User.AddinIsFound") == "1");
  {
    SaveEvents events;
    session.host().advise(events);
    task.Cells("Prop.Task_Description").FormulaForce("\"Ask the customer\"");
    guard.update();
    session.host().unadvise(events);
    EXPECT_EQ(events.count, 0) << "a copy is no save";
  }
  EXPECT_TRUE(map.Saved() == false);

  Session later(options());
  const Document copy = later.app().Documents().Open(copies().front().string());
  ASSERT_TRUE(copy);
  EXPECT_EQ(text(copy.DocumentSheet(), "User.AddinIsFound"), "0");
  EXPECT_EQ(text(copy.Pages().Item(1).Shapes().Item(task.Name().or_("")), "Prop.Task_Description"), "Ask the customer");
  EXPECT_TRUE(copiesLeftBehind(folder).empty()) << "its owner runs still";

  ASSERT_TRUE(map.Save()) << lastRefusal();
  guard.update();
  EXPECT_TRUE(copies().empty());
  ASSERT_TRUE(app.Undo()) << lastRefusal();
  EXPECT_TRUE(map.Saved() == false);
  guard.update();
  EXPECT_EQ(copies().size(), 1u);
  ASSERT_TRUE(map.Close());
  guard.update();
  EXPECT_TRUE(copies().empty()) << "who closes it without saving does not want it";
}

TEST_F(Recovery, WhatACrashLeavesIsFoundWithItsOrigin) {
  fs::path copy;
  {
    RecoveryCopies guard(session.engine(), folder, std::chrono::seconds(0));
    const Page page = newMap();
    ASSERT_TRUE(map.SaveAs(mapFile));
    dropTask(page);
    guard.update();
    ASSERT_EQ(copies().size(), 1u);
    const fs::path own = copies().front();
    copy = fs::path(folder) / "left.vsdx";
    fs::copy(own, copy);
    std::ifstream companion(own.string() + ".recovery");
    std::ofstream left(copy.string() + ".recovery");
    for (std::string line; std::getline(companion, line);)
      left << (line.starts_with("Started=") ? "Started=1" : line) << '\n';
  }
  const auto found = copiesLeftBehind(folder);
  ASSERT_EQ(found.size(), 1u) << "those of a process that ended in order are gone";
  EXPECT_EQ(found[0].copy, copy.string());
  EXPECT_EQ(found[0].original, mapFile);
  discardCopy(found[0].copy);
  EXPECT_TRUE(copiesLeftBehind(folder).empty());
  EXPECT_TRUE(copies().empty());
}

TEST_F(Recovery, AFolderThatCannotBeWrittenStopsNoWork) {
  std::ofstream(folder) << "a file stands where the folder should";
  RecoveryCopies guard(session.engine(), folder, std::chrono::seconds(0));
  const Page page = newMap();
  EXPECT_TRUE(dropTask(page));
  EXPECT_NE(guard.lastError, "");
  fs::remove(folder);
}

}  // namespace
}  // namespace quorvel
