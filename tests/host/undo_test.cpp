// Steps that can be taken back: one for each command, with everything that handlers did inside it.
#include <gtest/gtest.h>

#include "host/host_fixture.h"
#include "host/store_dump.h"

namespace quorvel {
namespace {

class Undo : public HostTest {
 protected:
  std::size_t steps() { return engine().undo.undoCount(host::DocumentId{document.ref().id}); }
  std::string dump() { return StoreDump::of(engine().store, host::DocumentId{document.ref().id}); }
};

TEST_F(Undo, ACommandIsOneStepWithWhatHandlersDid) {
  const host::MasterId master =
      addMaster("Box", [this](host::Sheet& group, host::Sheet&) { set(group, "User.n", "0"); });
  const Cell total = user(page.PageSheet(), "total", "0");
  Recorder recorder(running);
  recorder.onShapeAdded = [&](const Shape& shape) {
    if (!(shape.Master().Name() == "Box")) return;
    shape.AddNamedRow(visio::sectionUser, "mark", 0);
    shape.Cells("User.n").SetFormula("5");
    shape.DrawRectangle(0, 0, 1, 1).SetName("cover");
    total.SetResult(0, total.Result(0).or_(0) + 1);
  };
  const std::string before = dump();
  const std::size_t stepsBefore = steps();
  const Shape dropped = drop(master);
  EXPECT_EQ(steps(), stepsBefore + 1);
  const std::string after = dump();
  recorder.take();

  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(firstDifference(before, dump()), "");
  EXPECT_FALSE(dropped.Name());
  EXPECT_EQ(total.Result(0), 0.0);
  ASSERT_TRUE(app.Redo());
  EXPECT_EQ(firstDifference(after, dump()), "");
  EXPECT_EQ(dropped.Cells("User.n").Result(0), 5.0);
  EXPECT_FALSE(app.Redo());
  EXPECT_TRUE(recorder.take().empty()) << "undo and redo are silent";

  // Values follow again after coming back.
  dropped.AddNamedRow(visio::sectionUser, "twice", 0);
  ASSERT_TRUE(dropped.Cells("User.twice").SetFormula("User.n*2"));
  ASSERT_TRUE(app.Undo());
  ASSERT_TRUE(app.Redo());
  ASSERT_TRUE(dropped.Cells("User.n").SetFormula("8"));
  EXPECT_EQ(dropped.Cells("User.twice").Result(0), 16.0);
  EXPECT_FALSE(app.Redo()) << "a new step ends what could be redone";
}

TEST_F(Undo, ScopesNestAndTheOutermostIsTheStep) {
  const Cell x = user(page.PageSheet(), "x", "0"), y = user(page.PageSheet(), "y", "0");
  const std::size_t before = steps();
  const Maybe<int> outer = app.BeginUndoScope("outer");
  ASSERT_TRUE(outer);
  x.SetFormula("1");
  const Maybe<int> inner = app.BeginUndoScope("inner");
  y.SetFormula("1");
  EXPECT_FALSE(app.Undo());
  EXPECT_FALSE(app.Redo());
  EXPECT_FALSE(app.EndUndoScope(*outer, true)) << "not the innermost";
  EXPECT_FALSE(app.EndUndoScope(*inner + 1000, true));
  EXPECT_FALSE(document.Close()) << "inside a scope";
  // Leaving the inner scope without keeping it takes back what was done in it, and nothing else.
  ASSERT_TRUE(app.EndUndoScope(*inner, false));
  EXPECT_EQ(x.Result(0), 1.0);
  EXPECT_EQ(y.Result(0), 0.0);
  y.SetFormula("2");
  ASSERT_TRUE(app.EndUndoScope(*outer, true));
  EXPECT_EQ(steps(), before + 1);
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(x.Result(0), 0.0);
  EXPECT_EQ(y.Result(0), 0.0);
}

TEST_F(Undo, ARolledBackScopeLeavesNoStepAndNothingSelected) {
  const host::MasterId master = addMaster("Box", [](host::Sheet&, host::Sheet&) {});
  const std::string before = dump();
  const std::size_t stepsBefore = steps();
  const int scope = app.BeginUndoScope("try").or_(0);
  drop(master);
  drop(master).Delete();
  document.Pages().Add();
  ASSERT_TRUE(app.EndUndoScope(scope, false));
  EXPECT_EQ(firstDifference(before, dump()), "");
  EXPECT_EQ(steps(), stepsBefore);
  EXPECT_EQ(app.ActiveWindow().Selection().Count(), 0);
  EXPECT_TRUE(app.ActivePage().Name());
}

TEST_F(Undo, EachDocumentHasItsOwnSteps) {
  const Cell here = user(page.PageSheet(), "x", "0");
  const Document other = app.Documents().Add("");
  const Cell there = user(other.Pages().Item(1).PageSheet(), "x", "0");
  there.SetFormula("1");
  here.SetFormula("1");  // a step of its document, though the other one is active
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(there.Result(0), 0.0);
  EXPECT_EQ(here.Result(0), 1.0);
}

TEST_F(Undo, AMasterThatADropBroughtGoesWithIt) {
  const Document source = app.Documents().Add("");
  const host::DocumentId sourceId{source.ref().id};
  host::Store& store = engine().store;
  const host::SheetId style = store.addStyle(sourceId, 5, "Loud");
  const host::MasterId master = store.addMaster(sourceId, "Box");
  const host::SheetId shape = store.addShape(store.master(master)->contents, {}, host::SheetKind::Shape);
  set(*store.sheet(shape), "User.a", "7");
  store.sheet(shape)->lineStyle = style;
  const std::string before = dump();
  const Shape dropped = drop(master);
  const std::string after = dump();
  EXPECT_EQ(document.Masters().Count(), 1);
  EXPECT_EQ(dropped.Cells("User.a").Result(0), 7.0);
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(document.Masters().Count(), 0);
  EXPECT_EQ(firstDifference(before, dump()), "");
  ASSERT_TRUE(app.Redo());
  EXPECT_EQ(firstDifference(after, dump()), "");
  EXPECT_EQ(dropped.Cells("User.a").Result(0), 7.0);
  EXPECT_EQ(drop(master).Master().Name(), "Box");
  EXPECT_EQ(document.Masters().Count(), 1);
}

TEST_F(Undo, RowsThatHidTheMastersComeBackAsNewOnes) {
  const host::MasterId master = addMaster("Box", [this](host::Sheet& group, host::Sheet&) {
    set(group, "User.a", "7");
    set(group, "User.b", "8");
    set(group, "User.a.Prompt", "\"old\"");
  });
  const Shape shape = drop(master);
  const std::string before = dump();
  ASSERT_TRUE(shape.DeleteRow(visio::sectionUser, 0));
  ASSERT_TRUE(shape.AddNamedRow(visio::sectionUser, "a", 0));
  EXPECT_EQ(shape.Cells("User.a").Result(0), 0.0) << "the master's value does not show through";
  EXPECT_EQ(shape.Cells("User.a.Prompt").ResultStr(0), "");
  EXPECT_EQ(shape.Cells("User.b").Result(0), 8.0);

  ASSERT_TRUE(shape.DeleteSection(visio::sectionUser));
  EXPECT_FALSE(shape.CellExists("User.b", 0) == true);
  ASSERT_TRUE(shape.AddNamedRow(visio::sectionUser, "b", 0));
  ASSERT_TRUE(shape.AddNamedRow(visio::sectionUser, "c", 0));
  ASSERT_TRUE(shape.Cells("User.c").SetFormula("User.b+1"));
  EXPECT_EQ(shape.Cells("User.c").Result(0), 1.0);
  EXPECT_FALSE(shape.CellExists("User.a", 0) == true) << "stays deleted";
  EXPECT_EQ(shape.RowCount(visio::sectionUser), 2);
  for (int i = 0; i < 6; ++i) ASSERT_TRUE(app.Undo());
  EXPECT_EQ(firstDifference(before, dump()), "");
}

}  // namespace
}  // namespace quorvel
