// Copies of unsaved work: how they are written, and found after the process has ended.
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <functional>
#include <set>

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
  void TearDown() override {
    fs::remove_all(folder);
    fs::remove_all(mapFile);
  }
  /// All copies in the folder, of all processes, in the order of their names.
  std::vector<fs::path> copies() const {
    std::set<fs::path> found;
    if (!fs::exists(folder)) return {};
    for (const auto& each : fs::directory_iterator(folder))
      if (each.path().extension() != ".recovery") found.insert(each.path());
    return {found.begin(), found.end()};
  }
  std::size_t leftBehind() const { return copiesLeftBehind(folder).size(); }

  const std::string folder = testing::TempDir() + "quorvel-recovery-" + std::to_string(::getpid());
  const std::string mapFile = testing::TempDir() + "guarded-" + std::to_string(::getpid()) + ".vsdx";
};

TEST_F(Recovery, ACopyIsUpdatedWithUnsavedWorkAndRemovedByTheSave) {
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
  EXPECT_EQ(text(copy.Pages().Item(1).Shapes().Item(task.Name().or_("")), "Prop.Task_Description"), "Ask the customer");
  {
    SessionOptions withoutAddin = options();
    withoutAddin.connectAddin = false;
    Session plain(withoutAddin);
    const Document file = plain.app().Documents().Open(copies().front().string());
    EXPECT_EQ(text(file.DocumentSheet(), "User.AddinIsFound"), "0");
  }
  EXPECT_TRUE(copiesLeftBehind(folder).empty()) << "its owner runs still";

  ASSERT_TRUE(map.Save()) << lastRefusal();
  EXPECT_TRUE(copies().empty()) << "at once: a copy that remains after the save would be older than the file";
  ASSERT_TRUE(app.Undo()) << lastRefusal();
  EXPECT_TRUE(map.Saved() == false);
  guard.update();
  EXPECT_EQ(copies().size(), 1u);
  ASSERT_TRUE(map.Close());
  EXPECT_TRUE(fs::is_empty(folder)) << "closed without saving, it is not needed";
}

TEST_F(Recovery, WhatIsUnsavedAtTheEndIsFoundWithItsOrigin) {
  const mode_t before = ::umask(0);
  {
    RecoveryCopies guard(session.engine(), folder, std::chrono::seconds(0));
    const Page page = newMap();
    ASSERT_TRUE(map.SaveAs(mapFile));
    dropTask(page);
    guard.update();
    ASSERT_EQ(copies().size(), 1u);
    EXPECT_EQ(leftBehind(), 0u);
    EXPECT_NE(discardCopy(copies().front().string()).find("still open"), std::string::npos);
  }
  ::umask(before);
  for (const auto& each : fs::recursive_directory_iterator(folder)) {
    struct stat status;
    ASSERT_EQ(::stat(each.path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u) << each.path();
  }
  EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);

  auto found = copiesLeftBehind(folder);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].copy, copies().front().string());
  EXPECT_EQ(found[0].original, mapFile);
  EXPECT_EQ(found[0].name, fs::path(mapFile).filename());
  fs::remove(found[0].copy + ".recovery");
  found = copiesLeftBehind(folder);
  ASSERT_EQ(found.size(), 1u) << "also without its companion";
  EXPECT_EQ(found[0].original, "");
  EXPECT_EQ(found[0].name, fs::path(mapFile).filename());
  EXPECT_EQ(discardCopy(found[0].copy), "");
  EXPECT_EQ(discardCopy(found[0].copy), "") << "it is removed already";
  EXPECT_TRUE(fs::is_empty(folder));
}

/// Two that have the same document, number and folder, one after the other and at the same time.
TEST_F(Recovery, NoProcessTakesTheCopiesOfAnother) {
  const Page page = newMap();
  dropTask(page);
  Session other(options());
  ASSERT_TRUE(other.app().Documents().Add(other.templatePath()).Pages().Item(1).SetName("Other"));
  {
    RecoveryCopies first(session.engine(), folder, std::chrono::seconds(0));
    first.update();
  }
  ASSERT_EQ(leftBehind(), 1u);
  const std::string old = copies().front().string();
  {
    RecoveryCopies second(session.engine(), folder, std::chrono::seconds(0)),
        third(other.engine(), folder, std::chrono::seconds(0));
    second.update();
    third.update();
    EXPECT_EQ(copies().size(), 3u) << second.lastError << third.lastError;
    ASSERT_EQ(leftBehind(), 1u);
    EXPECT_EQ(copiesLeftBehind(folder)[0].copy, old);
    ASSERT_TRUE(map.SaveAs(mapFile)) << lastRefusal();
    EXPECT_EQ(copies().size(), 2u);
  }
  EXPECT_EQ(leftBehind(), 2u) << "the old one, and what the other application did not save";
}

/// Runs in a child of this process and ends it at once, as a crash does.
pid_t inChild(const std::function<void()>& act) {
  const pid_t child = ::fork();
  if (child == 0) {
    act();
    ::_exit(0);
  }
  return child;
}

TEST_F(Recovery, AForkDoesNotChangeItsParentsCopies) {
  const Page page = newMap();
  const Shape task = dropTask(page);
  auto guard = std::make_unique<RecoveryCopies>(session.engine(), folder, std::chrono::seconds(0));
  guard->update();
  ASSERT_EQ(copies().size(), 1u);
  const std::string ours = copies().front().string();
  ::waitpid(inChild([&] { guard.reset(); }), nullptr, 0);
  ::waitpid(inChild([&] { map.Close(); }), nullptr, 0);
  EXPECT_EQ(copies().size(), 1u) << "a child that ends normally";
  EXPECT_EQ(leftBehind(), 0u) << "the parent still holds it";

  // A child that continues writes copies of its own; they belong to it as long as it runs.
  int ready[2], done[2];
  ASSERT_EQ(::pipe(ready) + ::pipe(done), 0);
  char byte = 0;
  const pid_t child = inChild([&] {
    task.Cells("Prop.Task_Description").FormulaForce("\"Written by the child\"");
    guard->update();
    (void)!::write(ready[1], "x", 1);
    (void)!::read(done[0], &byte, 1);
  });
  ASSERT_EQ(::read(ready[0], &byte, 1), 1);
  EXPECT_EQ(copies().size(), 2u);
  EXPECT_EQ(leftBehind(), 0u);
  guard.reset();
  ASSERT_EQ(leftBehind(), 1u) << "the parent has ended, though its child runs";
  EXPECT_EQ(copiesLeftBehind(folder)[0].copy, ours);
  ASSERT_EQ(::write(done[1], "x", 1), 1);
  ::waitpid(child, nullptr, 0);
  EXPECT_EQ(leftBehind(), 2u);
  for (const int file : {ready[0], ready[1], done[0], done[1]}) ::close(file);
}

TEST_F(Recovery, LongNamesOfAnyLettersHaveCopies) {
  std::string name;
  while (name.size() < 238) name += "ä";
  const std::string longFile = testing::TempDir() + name + "x.vdx";
  newMap();
  ASSERT_TRUE(map.SaveAs(longFile)) << lastRefusal();
  dropTask(map.Pages().Item(1));
  RecoveryCopies guard(session.engine(), folder, std::chrono::seconds(0));
  guard.update();
  fs::remove(longFile);
  ASSERT_EQ(copies().size(), 1u) << guard.lastError;
  const std::string copy = copies().front().filename().string();
  EXPECT_TRUE(copy.starts_with("ää")) << copy;
  EXPECT_EQ(copy.find_first_not_of("ä"), copy.find(" recovery-")) << "cut between two letters: " << copy;
}

/// Other files are not removed and not listed as copies, even with a companion.
TEST_F(Recovery, OnlyCopiesAreDiscarded) {
  {
    RecoveryCopies guard(session.engine(), folder, std::chrono::seconds(0));
    dropTask(newMap());
    guard.update();
  }
  const fs::path copy = copies().at(0);
  const fs::path drawing = fs::path(folder) / "drawing.vsdx";
  std::ofstream(drawing) << "precious";
  std::ofstream(drawing.string() + ".recovery") << "[Recovery]\nName=drawing.vsdx\nOriginal=/etc/passwd\n";
  const fs::path trap = fs::path(folder) / ("trap recovery-" + std::string(32, '0') + ".vsdx");
  fs::create_symlink(drawing, trap);
  const fs::path started = fs::path(folder) / ("started recovery-" + std::string(32, '1') + ".vsdx");
  std::ofstream{started};
  ASSERT_EQ(leftBehind(), 1u);
  EXPECT_EQ(copiesLeftBehind(folder)[0].copy, copy.string());
  for (const fs::path& other : {drawing, trap, fs::path(folder), fs::path(copy.string() + ".recovery")}) {
    EXPECT_NE(discardCopy(other.string()), "") << other;
    EXPECT_TRUE(fs::exists(fs::symlink_status(other))) << other;
  }
  EXPECT_EQ(fs::file_size(drawing), 8u);

  fs::remove(copy.string() + ".recovery");
  fs::create_symlink(drawing, copy.string() + ".recovery");
  EXPECT_EQ(copiesLeftBehind(folder).at(0).original, "") << "no link is followed";
  EXPECT_EQ(discardCopy(copy.string()), "");
  EXPECT_EQ(fs::file_size(drawing), 8u);
  EXPECT_FALSE(fs::exists(copy));
}

TEST_F(Recovery, AFolderThatCannotBeWrittenDoesNotStopTheWork) {
  std::ofstream(folder) << "a file has the folder's name";
  RecoveryCopies guard(session.engine(), folder, std::chrono::seconds(0));
  const Page page = newMap();
  EXPECT_TRUE(dropTask(page));
  EXPECT_NE(guard.lastError, "");
  fs::remove(folder);
}

}  // namespace
}  // namespace quorvel
