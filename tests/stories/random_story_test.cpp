// Ten thousand random steps on one drawing: they can all be undone and redone, and every state of it is read back
// from a file. QUORVEL_SEED=n runs another story; a failure prints its seed.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "formats/formats.h"
#include "formats/store_text.h"
#include "host/store_dump.h"
#include "session/session.h"
#include "stories/random_edits.h"

namespace quorvel {
namespace {

unsigned seedOfStory() {
  const char* given = std::getenv("QUORVEL_SEED");
  return given ? static_cast<unsigned>(std::atol(given)) : 20'240'601;
}

std::string bytesOf(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

class RandomStory : public testing::Test {
 protected:
  static SessionOptions options() {
    SessionOptions options;
    options.installFolder = std::string(QUORVEL_SOURCE_FOLDER) + "/data";
    options.configurationFolder = testing::TempDir() + "quorvel-stories";
    options.connectAddin = false;
    return options;
  }

  Session session{options()};
  Application app = session.app();
  Document stencil = app.Documents().Open(session.stencilPath());
  Document parts = app.Documents().Add("");
  Document drawing;
  const std::string file = testing::TempDir() + "quorvel-random-story-" + std::to_string(getpid()) + ".vsdx";
  const std::string again = testing::TempDir() + "quorvel-random-again-" + std::to_string(getpid()) + ".vsdx";

  /// The drawing is read from a file, so that it has data that only files have.
  void SetUp() override {
    const Document fresh = app.Documents().Add("");
    ASSERT_TRUE(fresh.SaveAs(file));
    ASSERT_TRUE(fresh.Close());
    drawing = app.Documents().Open(file);
    ASSERT_TRUE(drawing);
  }
  void TearDown() override {
    std::filesystem::remove(file);
    std::filesystem::remove(again);
  }

  /// A group whose member's cells follow it and the page, as in masters with formulas.
  Master box() {
    host::Store& store = session.engine().edit().making();
    const host::MasterId master = store.addMaster(host::DocumentId{parts.ref().id}, "Box");
    const host::PageId contents = store.master(master)->contents;
    const host::SheetId group = store.addShape(contents, {}, host::SheetKind::Group);
    const host::SheetId member = store.addShape(contents, group, host::SheetKind::Shape);
    const auto set = [&](host::SheetId sheet, const char* name, const std::string& formula, double inches = 0) {
      host::Cell& cell = store.sheet(sheet)->local(*host::parseCellName(name));
      cell.formula = store.formulas().get(formula);
      const bool isLength = host::definitionOf(*host::parseCellName(name))->units == host::CellUnits::Length;
      const host::Value given = host::Value::number(inches, isLength ? host::Unit::Inches : host::Unit::None);
      cell.value = cell.formula->constant() ? *cell.formula->constant() : given;
    };
    for (const host::SheetId sheet : {group, member}) {
      set(sheet, "Width", "2 in");
      set(sheet, "Height", "1 in");
      set(sheet, "PinX", "1 in");
      set(sheet, "PinY", "0.5 in");
    }
    const std::string ofGroup = "Sheet." + std::to_string(store.sheet(group)->shapeId) + "!";
    set(group, "User.a", "1");
    set(group, "User.b", "User.a+1", 2);
    set(group, "Prop.c", "ThePage!User.a");
    set(group, "Connections.X1", "Width*0.5", 1);
    set(group, "Actions.Menu", "\"Show\"");
    set(member, "User.a", ofGroup + "User.b*2", 4);
    set(member, "User.d", "IF(" + ofGroup + "Prop.c>1,\"many\",\"few\")");
    for (const host::SheetId sheet : {store.page(contents)->sheet, group, member})
      session.engine().edit().watchFormulas(sheet);
    return Master(&session.host(), {ObjectKind::Master, master.value, 0});
  }

  host::DocumentId id() const { return host::DocumentId{drawing.ref().id}; }
  std::string dump() { return StoreDump::of(session.engine().store(), id()); }

  /// What a file loses or changes; empty when all is the same.
  std::string lostInAFile() {
    const host::DocumentFormat& format = *formats::formatFor(file);
    if (const std::string wrong = format.save(session.engine().store(), id(), file); !wrong.empty()) return wrong;
    host::Store other;
    const host::OpenResult opened = format.open(other, file);
    if (!opened.document) return opened.error;
    const std::vector<std::string> before = formats::testing::StoreText(session.engine().store(), true).of(id());
    const std::vector<std::string> after = formats::testing::StoreText(other, true).of(opened.document);
    const auto [ours, theirs] = std::ranges::mismatch(before, after);
    if (ours != before.end() || theirs != after.end())
      return "\"" + (ours != before.end() ? *ours : "(end)") + "\" came back as \"" +
             (theirs != after.end() ? *theirs : "(end)") + "\"";
    if (const std::string wrong = format.save(other, opened.document, again); !wrong.empty()) return wrong;
    return bytesOf(file) == bytesOf(again) ? "" : "the file is another when it is saved again";
  }
};

TEST_F(RandomStory, IsUndoneToItsStartRedoneToItsEndAndKeptByFiles) {
  const unsigned seed = seedOfStory();
  SCOPED_TRACE("QUORVEL_SEED=" + std::to_string(seed));
  std::vector<Master> masters{box(), box()};
  for (const char* name : {"Task", "Task Link"}) masters.push_back(stencil.Masters().Item(name));
  for (const Master& master : masters) ASSERT_TRUE(master.Name());
  const std::string start = dump();
  const std::string startText = lostInAFile();
  ASSERT_EQ(startText, "");
  const std::string startBytes = bytesOf(file);

  session.engine().undo().setLimits({.steps = 1'000'000, .bytes = std::size_t{1} << 40});
  RandomEdits edits(app, drawing, masters, seed);
  for (int round = 1; round <= 100; ++round) {
    for (int i = 0; i < 100; ++i) edits.step();
    ASSERT_FALSE(session.engine().undo().isOpen());
    const std::string here = dump();
    int undone = 0;
    while (undone < 15 && app.Undo()) ++undone;
    for (int i = 0; i < undone; ++i) ASSERT_TRUE(app.Redo());
    ASSERT_EQ(firstDifference(here, dump()), "") << "after " << undone << " steps back and forth in round " << round;
    if (round % 10 == 0) {
      ASSERT_EQ(lostInAFile(), "") << "in round " << round;
    }
  }

  const std::string end = dump();
  const std::string endBytes = bytesOf(file);
  int undone = 0;
  while (app.Undo()) ++undone;
  EXPECT_GT(undone, 1000);
  ASSERT_EQ(firstDifference(start, dump()), "");
  ASSERT_EQ(lostInAFile(), "");
  EXPECT_TRUE(bytesOf(file) == startBytes) << "the start, saved";
  for (int i = 0; i < undone; ++i) ASSERT_TRUE(app.Redo());
  ASSERT_EQ(firstDifference(end, dump()), "");
  ASSERT_EQ(lostInAFile(), "");
  EXPECT_TRUE(bytesOf(file) == endBytes) << "the end, saved";
}

}  // namespace
}  // namespace quorvel
