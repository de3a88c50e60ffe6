// Undo steps: one for each command, with everything that handlers did inside it.
#include <gtest/gtest.h>

#include "host/host_fixture.h"
#include "host/store_dump.h"

namespace quorvel {
namespace {

class Undo : public HostTest {
 protected:
  std::size_t steps() { return engine().undo().undoCount(host::DocumentId{document.ref().id}); }
  std::string dump() { return StoreDump::of(engine().store(), host::DocumentId{document.ref().id}); }
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
  EXPECT_EQ(recorder.take(), std::vector<std::string>{"SelectionChanged"}) << "it was selected; else both are silent";

  // Values are recalculated again after an undo.
  dropped.AddNamedRow(visio::sectionUser, "twice", 0);
  ASSERT_TRUE(dropped.Cells("User.twice").SetFormula("User.n*2"));
  ASSERT_TRUE(app.Undo());
  ASSERT_TRUE(app.Redo());
  ASSERT_TRUE(dropped.Cells("User.n").SetFormula("8"));
  EXPECT_EQ(dropped.Cells("User.twice").Result(0), 16.0);

  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(dropped.Cells("User.n").Result(0), 5.0);
  ASSERT_TRUE(total.SetResult(0, 9.0));
  EXPECT_FALSE(app.Redo()) << "a new step ends what could be redone";
  EXPECT_EQ(dropped.Cells("User.n").Result(0), 5.0);
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
  // Rolling back the inner scope undoes what was done in it, and nothing else.
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

TEST_F(Undo, AMasterThatADropAddedIsRemovedWithIt) {
  const Document source = app.Documents().Add("");
  const host::DocumentId sourceId{source.ref().id};
  host::Store& store = engine().edit().making();
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

TEST_F(Undo, AShapeThatAListenerRefusesLeavesNoStepAndNoUnsavedMark) {
  const Document source = app.Documents().Add("");
  const host::DocumentId sourceId{source.ref().id};
  host::Store& store = engine().edit().making();
  const host::MasterId master = store.addMaster(sourceId, "Box");
  const host::SheetId shape = store.addShape(store.master(master)->contents, {}, host::SheetKind::Shape);
  store.sheet(shape)->lineStyle = store.addStyle(sourceId, 5, "Loud");
  page.DrawRectangle(1, 1, 2, 2);
  app.Undo();
  document.SetSaved(true);
  const std::string before = dump();
  const std::size_t stepsBefore = steps();
  const Cell total = page.PageSheet().Cells("PageWidth");
  bool alsoCounts = false;
  Recorder recorder(running);
  recorder.onShapeAdded = [&](const Shape& added) {
    added.AddNamedRow(visio::sectionUser, "mark", 0);
    if (alsoCounts) total.SetResult(visio::unitsInches, 12);
    added.Delete();
  };
  EXPECT_FALSE(drop(master));
  EXPECT_FALSE(page.DrawRectangle(0, 0, 1, 1));
  EXPECT_EQ(firstDifference(before, dump()), "");
  EXPECT_EQ(steps(), stepsBefore);
  EXPECT_EQ(document.Saved(), true);

  alsoCounts = true;
  EXPECT_FALSE(drop(master));
  EXPECT_EQ(total.Result(visio::unitsInches), 12.0);
  EXPECT_EQ(steps(), stepsBefore + 1);
  EXPECT_EQ(document.Saved(), false);
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(firstDifference(before, dump()), "");
}

TEST_F(Undo, WhatIsRolledBackIsAsSavedAsBefore) {
  const Cell x = user(page.PageSheet(), "x", "0");
  const auto rollBack = [&](const std::function<void()>& meanwhile) {
    document.SetSaved(true);
    const int scope = app.BeginUndoScope("try").or_(0);
    x.SetFormula("1");
    EXPECT_EQ(document.Saved(), false);
    meanwhile();
    app.EndUndoScope(scope, false);
  };
  rollBack([] {});
  EXPECT_EQ(document.Saved(), true);
  // What was saved inside the scope is no longer what the drawing shows.
  rollBack([&] { document.SetSaved(true); });
  EXPECT_EQ(document.Saved(), false);
}

TEST_F(Undo, IsBoundedForEachDocumentByStepsAndBytes) {
  EXPECT_GE(engine().undo().limits().steps, 100u);
  const Cell x = user(page.PageSheet(), "x", "0");
  const Document other = app.Documents().Add("");
  const Cell there = user(other.Pages().Item(1).PageSheet(), "x", "0");
  host::UndoLog& undo = engine().undo();
  const host::DocumentId id{document.ref().id};
  undo.setLimits({.steps = 5, .bytes = 1 << 20});
  for (int i = 1; i <= 20; ++i) x.SetResult(0, i);
  there.SetFormula("1");
  EXPECT_EQ(undo.undoCount(id), 5u);
  EXPECT_EQ(undo.undoCount(host::DocumentId{other.ref().id}), 3u) << "its row, its formula and the write";
  while (undo.undo(id)) continue;
  EXPECT_EQ(x.Result(0), 15.0) << "the oldest steps were removed first";
  EXPECT_EQ(undo.redoCount(id), 5u);
  while (undo.redo(id)) continue;
  EXPECT_EQ(x.Result(0), 20.0);

  // A step's size counts all that it holds: deleted texts, and deleted shapes as a whole.
  undo.discard(id);
  undo.setLimits({.steps = 1000, .bytes = 100'000});
  const Shape shape = rectangle();
  for (int i = 0; i < 10; ++i) shape.SetText(std::string(30'000, static_cast<char>('a' + i)));
  EXPECT_LE(undo.bytes(id), 100'000u);
  EXPECT_GT(undo.bytes(id), 60'000u);
  EXPECT_EQ(undo.undoCount(id), 3u);
  ASSERT_TRUE(shape.SetText(std::string(500'000, 'x')));
  const std::size_t before = undo.bytes(id);
  ASSERT_TRUE(shape.Delete());
  EXPECT_GT(undo.bytes(id), 500'000u) << "the newest step is kept complete";
  EXPECT_LT(before, 100'000u);
  EXPECT_EQ(undo.undoCount(id), 1u);
  ASSERT_TRUE(undo.undo(id));
  EXPECT_EQ(shape.Text().or_("").size(), 500'000u);
  EXPECT_LT(undo.bytes(id), 10'000u) << "the drawing has it again";
}

TEST_F(Undo, WhatAListenerChangesInAnotherDrawingIsChangedThere) {
  const Document other = app.Documents().Add("");
  const Page there = other.Pages().Item(1);
  const Shape shape = there.DrawRectangle(0, 0, 1, 1);
  document.SetSaved(true);
  other.SetSaved(true);
  Recorder recorder(running);
  recorder.onShapeAdded = [&](const Shape&) { shape.Delete(); };
  rectangle();
  recorder.onShapeAdded = nullptr;
  EXPECT_EQ(document.Saved(), false);
  EXPECT_EQ(other.Saved(), false);
  // The step remains a step of the drawing that was closed meanwhile, and of the other.
  ASSERT_TRUE(other.Close());
  ASSERT_TRUE(engine().undo().undo(host::DocumentId{document.ref().id}));
  EXPECT_EQ(page.Shapes().Count(), 0);

  // A scope in which only another drawing changed is a step of that.
  const Document third = app.Documents().Add("");
  const int scope = app.BeginUndoScope("elsewhere").or_(0);
  rectangle();
  app.EndUndoScope(scope, true);
  EXPECT_EQ(engine().undo().undoCount(host::DocumentId{third.ref().id}), 0u);
  EXPECT_TRUE(engine().undo().undo(host::DocumentId{document.ref().id}));
}

TEST_F(Undo, AListenerEndsNoScopeOfACommandAndLeavesNoneOpen) {
  Recorder recorder(running);
  std::size_t closed = 0;
  recorder.onShapeAdded = [&](const Shape&) {
    const int own = app.BeginUndoScope("own").or_(0);
    for (int scope = own - 1; scope > own - 4; --scope) closed += app.EndUndoScope(scope, true);
    closed += app.EndUndoScope(own, true) ? 10 : 0;
    for (int scope = own - 1; scope > own - 4; --scope) closed += app.EndUndoScope(scope, true);
    closed += document.Close() ? 100 : 0;
    app.BeginUndoScope("left open");
  };
  rectangle();
  EXPECT_EQ(closed, 10u);
  EXPECT_FALSE(engine().undo().isOpen());
  recorder.onShapeAdded = nullptr;
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(page.Shapes().Count(), 0);
}

TEST_F(Undo, AScopeOfOneDrawingLetsAnotherBeClosed) {
  const Document other = app.Documents().Add("");
  const int scope = app.BeginUndoScope("scope").or_(0);
  other.Pages().Add();
  EXPECT_FALSE(other.Close()) << "the scope has changed it";
  EXPECT_TRUE(document.Close());
  EXPECT_TRUE(app.EndUndoScope(scope, true));
}

TEST_F(Undo, RowsThatHidTheMastersBecomeNewOnes) {
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
