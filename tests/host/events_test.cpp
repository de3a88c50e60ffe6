// Which events listeners get, in which order, and that they may do anything while they handle one.
#include <gtest/gtest.h>

#include <memory>

#include "host/host_fixture.h"
#include "host/store_dump.h"
#include "model/upkeep_listener.h"

namespace quorvel {
namespace {

using Recorded = std::vector<std::string>;

class Events : public HostTest {};

/// A listener that does one thing at each cell change.
class Doing : public ApplicationEvents {
 public:
  std::function<void()> act;
  int calls = 0;
  void CellChanged(Cell) override {
    ++calls;
    if (act) act();
  }
};

TEST_F(Events, AWriteRaisesItsFormulaThenItsValueThenItsDependents) {
  const Shape a = rectangle(), b = rectangle();
  const Cell x = user(a, "x", "1");
  user(a, "y", "User.x+1");
  user(b, "z", at(a, "User.y") + "+1");
  user(b, "calm", at(a, "User.x") + "*0");
  Recorder recorder(running);
  // Every change is complete before the first event.
  recorder.onCellChanged = [&](const Cell&) { EXPECT_EQ(b.Cells("User.z").Result(0), 7.0); };
  ASSERT_TRUE(x.SetFormula("5"));
  EXPECT_EQ(recorder.take(), (Recorded{"FormulaChanged Sheet.1 User.x", "CellChanged Sheet.1 User.x",
                                       "CellChanged Sheet.1 User.y", "CellChanged Sheet.2 User.z"}));
  recorder.onCellChanged = nullptr;

  // A new formula of the same value is no new value; the same formula is no change.
  ASSERT_TRUE(x.SetFormula("2+3"));
  EXPECT_EQ(recorder.take(), Recorded{"FormulaChanged Sheet.1 User.x"});
  ASSERT_TRUE(x.SetFormula("= 2+3"));
  ASSERT_TRUE(a.Cells("User.y").FormulaForce("User.x+1"));
  EXPECT_EQ(recorder.take(), Recorded{});
  ASSERT_TRUE(x.SetResult(0, 5.0));
  EXPECT_EQ(recorder.take(), Recorded{"FormulaChanged Sheet.1 User.x"});
  ASSERT_TRUE(x.SetResult(0, 5.0));
  EXPECT_EQ(recorder.take(), Recorded{});
}

TEST_F(Events, AChangeOfKindOrUnitIsAChangeOfValue) {
  const Shape shape = rectangle();
  const Cell time = user(shape, "time", "\"2 eh.\"");
  Recorder recorder(running);
  const Recorded both{"FormulaChanged Sheet.1 User.time", "CellChanged Sheet.1 User.time"};
  for (const char* formula : {"2", "2 eh.", "120 em.", "2 in", "TRUE", "\"TRUE\""}) {
    ASSERT_TRUE(time.SetFormula(formula));
    EXPECT_EQ(recorder.take(), both) << formula;
  }
}

TEST_F(Events, AddedRowsRaiseAnEventAndDeletedOnesDoNot) {
  const Shape shape = rectangle();
  Recorder recorder(running);
  shape.AddNamedRow(visio::sectionUser, "x", 0);
  EXPECT_EQ(recorder.take(), Recorded{"CellChanged Sheet.1 User.x"});
  shape.DeleteRow(visio::sectionUser, 0);
  EXPECT_EQ(recorder.take(), Recorded{});
  const std::function<void()> additions[] = {[&] { shape.AddHyperlink(); }, [&] { shape.Hyperlinks().Add(); },
                                             [&] { shape.AddRow(244, visio::rowLast, 0); }};
  for (int n = 1; const auto& add : additions) {
    add();
    const std::string row = "CellChanged Sheet.1 Hyperlink.Row_" + std::to_string(n++);
    Recorded expected;
    for (const char* column :
         {"Description", "Address", "SubAddress", "ExtraInfo", "Frame", "NewWindow", "Default", "SortKey", "Invisible"})
      expected.push_back(row + "." + column);
    EXPECT_EQ(recorder.take(), expected);
  }
}

TEST_F(Events, ADropSelectsBeforeItsEvent) {
  const host::MasterId master = addMaster("Box", [](host::Sheet&, host::Sheet&) {});
  Recorder recorder(running);
  Shape selected;
  recorder.onShapeAdded = [&](const Shape&) { selected = app.ActiveWindow().Selection().Item(1); };
  const Shape dropped = drop(master);
  EXPECT_EQ(recorder.take(), (Recorded{"SelectionChanged", "ShapeAdded Sheet.1"}));
  EXPECT_EQ(selected, dropped);

  recorder.onShapeAdded = [](const Shape& shape) { shape.Delete(); };
  EXPECT_FALSE(drop(master));
  EXPECT_EQ(page.Shapes().Count(), 1);
}

TEST_F(Events, ADuplicateIsSelectedButNotDuringADeletion) {
  const Shape shape = rectangle(), second = rectangle();
  Recorder recorder(running);
  Shape copy;
  Maybe<int> selected;
  recorder.onShapeAdded = [&](const Shape&) { selected = app.ActiveWindow().Selection().Count(); };
  ASSERT_TRUE(second.Duplicate());
  EXPECT_EQ(recorder.take(), (Recorded{"SelectionChanged", "ShapeAdded Sheet.3"}));
  EXPECT_EQ(selected, 1);
  app.ActiveWindow().SetPage(document.Pages().Add());
  ASSERT_TRUE(second.Duplicate().Delete());
  EXPECT_EQ(app.ActiveWindow().Selection().Count(), 0) << "another page is shown";

  app.ActiveWindow().SetPage(page);
  for (const Shape& each : {shape, second}) app.ActiveWindow().Select(each, visio::select);
  recorder.take();
  recorder.onBeforeShapeDelete = [&](const Shape& going) {
    if (going == shape) copy = going.Duplicate();
    // A deletion inside is part of this one.
    if (going == second) page.Shapes().Item(3).Delete();
  };
  ASSERT_TRUE(app.ActiveWindow().Selection().Delete());
  EXPECT_EQ(recorder.take(),
            (Recorded{"BeforeShapeDelete Sheet.1", "ShapeAdded Sheet.5", "(handled)", "BeforeShapeDelete Sheet.2",
                      "BeforeShapeDelete Sheet.5", "(handled)", "(handled)", "SelectionChanged"}));
  EXPECT_EQ(selected, 2);
  ASSERT_TRUE(app.Undo());
  ASSERT_TRUE(page.Shapes().Item(3).Delete());
  recorder.onBeforeShapeDelete = [&](const Shape& going) { copy = going.Duplicate(); };
  ASSERT_TRUE(second.Delete());
  ASSERT_TRUE(shape.Delete());
  recorder.onBeforeShapeDelete = nullptr;
  ASSERT_TRUE(page.Shapes().Item(1).Delete());
  EXPECT_TRUE(copy.Name());
  EXPECT_FALSE(shape.Name());
  EXPECT_EQ(page.Shapes().Count(), 1);

  // A handler that deletes the shape itself leaves the command nothing to do, and it ends.
  recorder.onBeforeShapeDelete = [&](const Shape& going) {
    recorder.onBeforeShapeDelete = nullptr;
    going.Delete();
  };
  EXPECT_TRUE(copy.Delete());
  EXPECT_EQ(page.Shapes().Count(), 0);
}

TEST_F(Events, MembersOfAGroupAreAddedAndDeletedWithIt) {
  const host::MasterId master = addMaster("Box", [](host::Sheet&, host::Sheet&) {});
  const Shape group = drop(master);
  ASSERT_TRUE(group.Shapes().Item(1).Cells("LockDelete").SetFormula("1"));
  Recorder recorder(running);
  const Shape copy = group.Duplicate();
  EXPECT_EQ(recorder.take(), (Recorded{"SelectionChanged", "ShapeAdded Sheet.3"}));
  ASSERT_TRUE(copy.Delete());
  EXPECT_EQ(recorder.take(), (Recorded{"BeforeShapeDelete Sheet.3", "(handled)", "SelectionChanged"}));
}

TEST_F(Events, AListenerMayUnlockATextThatIsAboutToBeEdited) {
  const Shape shape = rectangle();
  ASSERT_TRUE(shape.Cells("LockTextEdit").SetFormula("1"));
  Recorder recorder(running);
  EXPECT_FALSE(shape.BeginTextEdit());
  EXPECT_EQ(recorder.take(), Recorded{"BeforeShapeTextEdit Sheet.1"});
  recorder.onBeforeShapeTextEdit = [](const Shape& edited) { edited.Cells("LockTextEdit").FormulaForce("0"); };
  EXPECT_TRUE(shape.BeginTextEdit());
  recorder.take();
  ASSERT_TRUE(shape.EndTextEdit("typed"));
  EXPECT_EQ(recorder.take(), (Recorded{"TextChanged Sheet.1", "ShapeExitedTextEdit Sheet.1"}));
}

TEST_F(Events, DialogsAreScopesWithAModalInside) {
  const Shape outer = rectangle(), locked = rectangle(), member = outer.DrawRectangle(0, 0, 1, 1);
  user(outer, "notes", "\"a\"");
  user(outer, "length", "LEN(User.notes)");
  const Shape elsewhere = document.Pages().Add().DrawRectangle(0, 0, 1, 1);
  for (const Shape& shape : {outer, locked, member, elsewhere})
    shape.SetText(
        "Order orders, Ordnung \xC3\x96"
        "order order");
  ASSERT_TRUE(member.Characters().AddCustomField("\"order \"", 0));
  ASSERT_TRUE(locked.Cells("LockTextEdit").SetFormula("1"));
  app.ActiveWindow().SetPage(page);
  const host::DocumentId id{document.ref().id};
  const std::string before = StoreDump::of(engine().store(), id);
  const std::size_t steps = engine().undo().undoCount(id);
  Recorder recorder(running);
  recorder.onBeforeModal = [&] { elsewhere.SetName("prepared"); };
  ASSERT_TRUE(running.editShapeData(outer, {{"User.notes", "\"\""}}));
  EXPECT_EQ(recorder.take(), (Recorded{"EnterScope 1312", "BeforeModal", "FormulaChanged Sheet.1 User.notes",
                                       "CellChanged Sheet.1 User.notes", "CellChanged Sheet.1 User.length",
                                       "AfterModal", "ExitScope 1312"}));
  for (const auto& [cell, formula] : {std::pair("User.none", "1"), std::pair("User.notes", "(")})
    EXPECT_FALSE(running.editShapeData(outer, {{"User.length", "1"}, {cell, formula}}));
  EXPECT_EQ(recorder.take(), Recorded{}) << "nothing is written when one of them cannot be";
  EXPECT_EQ(engine().undo().undoCount(id), steps + 1);

  recorder.onBeforeModal = nullptr;
  // Two in each of the unlocked shapes; neither a part of a word nor a field.
  const host::ReplaceOutcome done = running.replaceText("order", "sale", {.matchCase = false, .wholeWords = true});
  EXPECT_EQ(done.count, 6);
  EXPECT_EQ(outer.Text(),
            "sale orders, Ordnung \xC3\x96"
            "order sale");
  EXPECT_EQ(member.Text(),
            "order sale orders, Ordnung \xC3\x96"
            "order sale");
  EXPECT_EQ(recorder.take(), (Recorded{"EnterScope 1179", "BeforeModal", "TextChanged Sheet.1", "TextChanged Sheet.3",
                                       "TextChanged Sheet.1", "AfterModal", "ExitScope 1179"}));
  EXPECT_EQ(running.replaceText("Order", "", {.matchCase = true}, false).count, 0);
  EXPECT_EQ(running.replaceText("order", "", {}, false).count, 2 * 2);
  EXPECT_EQ(outer.Text(), "sale s, Ordnung \xC3\x96 sale");
  EXPECT_FALSE(running.replaceText("", "x").outcome);
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(app.Undo());
  EXPECT_EQ(firstDifference(before, StoreDump::of(engine().store(), id)), "");
  recorder.onBeforeModal = [&] { running.editShapeData(outer, {{"User.notes", "1"}}); };
  EXPECT_TRUE(running.editShapeData(outer, {{"User.notes", "1"}})) << "endless nesting ends";
}

TEST_F(Events, PagesRaiseEventsForNameAndKindOnly) {
  Recorder recorder(running);
  const Page added = document.Pages().Add();
  EXPECT_EQ(recorder.take(), Recorded{"PageAdded Page-2"});
  ASSERT_TRUE(added.SetName("Orders"));
  ASSERT_TRUE(added.SetName("Orders"));
  ASSERT_TRUE(added.SetBackground(true));
  ASSERT_TRUE(added.SetBackground(true));
  ASSERT_TRUE(page.SetBackPage(added));
  EXPECT_EQ(recorder.take(), (Recorded{"PageChanged Orders", "PageChanged Orders"}));
  added.DrawRectangle(0, 0, 1, 1);
  recorder.take();
  ASSERT_TRUE(added.Delete());
  EXPECT_EQ(recorder.take(), Recorded{});
  EXPECT_FALSE(page.BackPage());
}

/// Acts at the events at which listeners update their own marks.
template <class Base>
class AtUpkeep : public Base {
 public:
  explicit AtUpkeep(Backend& backend) : backend_(backend) { backend_.advise(*this); }
  ~AtUpkeep() override { backend_.unadvise(*this); }
  std::function<void()> act;
  void SelectionChanged(Window) override { run(); }
  void BeforeDocumentSaveAs(Document) override { run(); }
  void DocumentSavedAs(Document) override { run(); }
  void DocumentCreated(Document) override { run(); }
  void MouseMove(int, int, double, double) override { run(); }

 private:
  void run() {
    if (const auto once = std::exchange(act, nullptr)) once();
  }
  Backend& backend_;
};

TEST_F(Events, OnlyTheUpkeepOfAListenerThatDeclaresItIsNoStep) {
  const Shape shape = rectangle();
  const Cell mark = user(shape, "mark", "0"), follows = user(rectangle(), "follows", at(shape, "User.mark"));
  const host::DocumentId id{document.ref().id};
  const auto steps = [&] { return engine().undo().undoCount(id); };
  const struct {
    const char* name;
    std::function<void()> cause;
  } cases[] = {
      {"selecting", [&] { app.ActiveWindow().DeselectAll(), app.ActiveWindow().Select(shape, visio::select); }},
      {"moving the pointer", [&] { running.mouseMove(0, 0, 1, 1); }},
      {"making a drawing", [&] { app.Documents().Add("").Close(); }},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    const std::size_t before = steps();
    document.SetSaved(true);
    {
      AtUpkeep<UpkeepListener> addin(running);
      addin.act = [&] { mark.SetResult(0, mark.Result(0).or_(0) + 1); };
      each.cause();
    }
    EXPECT_EQ(follows.Result(0), mark.Result(0));
    EXPECT_EQ(steps(), before);
    EXPECT_EQ(document.Saved(), true);

    // Another listener's changes are steps, also those made in an event that the upkeep raised.
    for (const bool nested : {false, true}) {
      document.SetSaved(true);
      const Shape going = rectangle();
      document.SetSaved(true);
      AtUpkeep<UpkeepListener> addin(running);
      AtUpkeep<ApplicationEvents> script(running);
      Recorder recorder(running);
      if (nested) {
        addin.act = [&] { mark.SetResult(0, mark.Result(0).or_(0) + 1); };
        recorder.onCellChanged = [&](const Cell&) { going.Delete(); };
      } else {
        script.act = [&] { going.Delete(); };
      }
      each.cause();
      EXPECT_FALSE(going.Name());
      EXPECT_EQ(steps(), before + (nested ? 4 : 2)) << "drawn and deleted";
      EXPECT_EQ(document.Saved(), false);
    }
    for (int i = 0; i < 4; ++i) ASSERT_TRUE(engine().undo().undo(id));
    EXPECT_EQ(page.Shapes().Count(), 2);
  }
}

TEST_F(Events, ADeletedShapeLeavesTheSelectionAndThatIsRaised) {
  const Shape a = rectangle(), b = rectangle(), c = rectangle();
  const Window window = app.ActiveWindow();
  for (const Shape& shape : {a, b}) window.Select(shape, visio::select);
  Recorder recorder(running);
  ASSERT_TRUE(c.Delete());
  EXPECT_EQ(recorder.take(), (Recorded{"BeforeShapeDelete Sheet.3", "(handled)"})) << "it was not selected";
  ASSERT_TRUE(window.Selection().Delete());
  EXPECT_EQ(recorder.take(), (Recorded{"BeforeShapeDelete Sheet.1", "(handled)", "BeforeShapeDelete Sheet.2",
                                       "(handled)", "SelectionChanged"}));
  ASSERT_TRUE(app.Undo());
  const Page second = document.Pages().Add();
  window.SetPage(second);
  const Shape there = second.DrawRectangle(0, 0, 1, 1);
  window.Select(there, visio::select);
  recorder.take();
  ASSERT_TRUE(second.Delete());
  EXPECT_EQ(recorder.take(), Recorded{"SelectionChanged"});
  ASSERT_TRUE(app.Undo());
  // A drop selects; after undo and redo no deleted shape is selected.
  window.SetPage(page);
  recorder.take();
  drop(addMaster("Box", [](host::Sheet&, host::Sheet&) {}));
  recorder.take();
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(recorder.take(), Recorded{"SelectionChanged"});
  EXPECT_EQ(window.Selection().Count(), 0);
  const int scope = app.BeginUndoScope("try").or_(0);
  window.Select(page.DrawRectangle(0, 0, 1, 1), visio::select);
  recorder.take();
  app.EndUndoScope(scope, false);
  EXPECT_EQ(recorder.take(), Recorded{"SelectionChanged"});
}

TEST_F(Events, NoneIsRaisedAboutADeletedCell) {
  const Shape a = rectangle(), b = rectangle();
  const Cell x = user(a, "x", "0");
  const Cell y = user(b, "y", at(a, "User.x") + "+1");
  Recorder first(running), second(running);
  // One row is deleted during the event of the other, and the event's own cell before the second listener gets it.
  first.onCellChanged = [&](const Cell& cell) {
    if (cell == x) b.DeleteRow(visio::sectionUser, 0), a.DeleteRow(visio::sectionUser, 0);
  };
  ASSERT_TRUE(x.SetFormula("1"));
  EXPECT_EQ(first.take(), (Recorded{"FormulaChanged Sheet.1 User.x", "CellChanged Sheet.1 User.x"}));
  EXPECT_EQ(second.take(), Recorded{"FormulaChanged Sheet.1 User.x"});
  EXPECT_FALSE(y.Result(0));
}

class ListenerHazards : public Events {
 protected:
  const Cell x = user(rectangle(), "x", "0");
  void change() { ASSERT_TRUE(x.SetResult(0, ++value)); }
  double value = 0;
  Doing first, second, third;
};

TEST_F(ListenerHazards, OneRemovesItself) {
  for (Doing* each : {&first, &second}) running.advise(*each);
  first.act = [&] { running.unadvise(first); };
  change();
  change();
  EXPECT_EQ(first.calls, 1);
  EXPECT_EQ(second.calls, 2);
}

TEST_F(ListenerHazards, OneRemovesAnother) {
  for (Doing* each : {&first, &second, &third}) running.advise(*each);
  first.act = [&] { running.unadvise(second); };
  change();
  EXPECT_EQ(second.calls, 0);
  EXPECT_EQ(third.calls, 1);
}

TEST_F(ListenerHazards, OneIsAddedDuringAnEvent) {
  running.advise(first);
  first.act = [&] { running.advise(second); };
  change();
  EXPECT_EQ(second.calls, 0);
  change();
  EXPECT_EQ(second.calls, 1);
}

TEST_F(ListenerHazards, OneWritesWhatItListensTo) {
  running.advise(first);
  running.advise(second);
  first.act = [&] {
    if (x.Result(0) < 3.0) change();
  };
  change();
  EXPECT_EQ(first.calls, 3);
  EXPECT_EQ(second.calls, 3);
  EXPECT_EQ(x.Result(0), 3.0);
}

TEST_F(ListenerHazards, OneIsDestroyedDuringItsEvent) {
  auto mortal = std::make_unique<Doing>();
  running.advise(*mortal);
  running.advise(second);
  std::function<void()> die = [&] {
    running.unadvise(*mortal);
    mortal.reset();
  };
  first.act = [&] { die(); };
  running.unadvise(*mortal);
  running.advise(first);
  running.advise(*mortal);
  change();
  EXPECT_FALSE(mortal);
  EXPECT_EQ(second.calls, 1);
}

TEST_F(Events, AnEndlessExchangeIsRefusedAtItsDepthAndKeepsEarlierWrites) {
  const Shape shape = rectangle();
  const Cell count = user(shape, "count", "0");
  const Cell twice = user(shape, "twice", "User.count*2");
  int accepted = 0, refused = 0;
  Recorder recorder(running);
  recorder.onCellChanged = [&](const Cell& cell) {
    if (!(cell == count)) return;
    (count.SetResult(0, count.Result(0).or_(0) + 1) ? accepted : refused)++;
  };
  ASSERT_TRUE(count.SetFormula("1"));
  EXPECT_EQ(refused, 1);
  EXPECT_EQ(accepted, host::Engine::deepestWrite - 1);
  EXPECT_EQ(count.Result(0), double(host::Engine::deepestWrite));
  EXPECT_EQ(twice.Result(0), 2.0 * host::Engine::deepestWrite);
  EXPECT_NE(running.refusals().back().reason.find("nested"), std::string::npos);

  recorder.onCellChanged = nullptr;
  ASSERT_TRUE(count.SetFormula("7"));
  EXPECT_EQ(twice.Result(0), 14.0);
  ASSERT_TRUE(app.Undo());
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(count.Result(0), 0.0);
}

TEST_F(Events, ShapesThatAddShapesEndToo) {
  // Each ShapeAdded makes another shape: no cell is written, so only the depth can end it.
  Recorder recorder(running);
  recorder.onShapeAdded = [&](const Shape&) { page.DrawRectangle(0, 0, 1, 1); };
  rectangle();
  EXPECT_LE(page.Shapes().Count(), 2 * host::Engine::deepestWrite);
}

TEST_F(Events, AHandlerMayDeleteTheShapeOfItsCell) {
  const Shape a = rectangle(), b = rectangle();
  const Cell x = user(a, "x", "0");
  user(a, "y", "User.x+1");
  const Cell z = user(b, "z", at(a, "User.x") + "+1");
  Recorder recorder(running);
  recorder.onCellChanged = [&](const Cell& cell) {
    if (cell == x) a.Delete();
  };
  EXPECT_TRUE(x.SetFormula("1"));
  EXPECT_FALSE(x.Result(0));
  EXPECT_EQ(recorder.take().back(), "CellChanged Sheet.2 User.z");
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(x.Result(0), 0.0);
  EXPECT_EQ(z.Result(0), 1.0);
}

}  // namespace
}  // namespace quorvel
