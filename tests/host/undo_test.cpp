// Steps that can be taken back: one for each command, with everything that handlers did inside it.
#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

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

/// Random work on one drawing, as a user and a careless script would do it.
class RandomEdits {
 public:
  RandomEdits(Application app, Document document, Master box, unsigned seed)
      : app_(app), document_(document), box_(box), random_(seed) {}

  void step() {
    const Page page = pick(document_.Pages().all());
    const Shape shape = pickShape(page);
    switch (below(22)) {
      case 0:
      case 1:
        page.Drop(box_, below(10), below(10));
        return;
      case 2:
        page.DrawRectangle(0, 0, below(5), below(5));
        return;
      case 3:
        page.DrawLine(0, 0, below(5), below(5));
        return;
      case 4:
        shape.DrawRectangle(0, 0, 1, below(3));
        return;
      case 5:
        shape.Delete();
        return;
      case 6:
        shape.Duplicate();
        return;
      case 7:
        shape.AddNamedRow(pick(std::vector{visio::sectionUser, visio::sectionProp}), rowName(), 0);
        return;
      case 8:
        shape.AddRow(pick(std::vector{visio::sectionAction, visio::sectionHyperlink, 6}), visio::rowLast, 0);
        return;
      case 9:
        shape.DeleteRow(pick(std::vector{visio::sectionUser, visio::sectionProp, visio::sectionAction, 6}), below(3));
        return;
      case 10:
        if (below(8) == 0) shape.DeleteSection(pick(std::vector{visio::sectionUser, visio::sectionProp, 10}));
        return;
      case 11:
        shape.SetName(rowName());
        shape.SetData1(rowName());
        return;
      case 12:
        shape.SetText(rowName());
        return;
      case 13:
        shape.Characters().AddCustomField("User." + rowName(), 0);
        return;
      case 14:
        below(2) ? shape.BringForward() : shape.BringToFront();
        return;
      case 15:
        if (const Layer layer = page.Layers().Add("layer " + rowName())) {
          below(3) ? layer.Add(shape, 1) : layer.Remove(shape, 1);
        }
        return;
      case 16:
        if (below(4) == 0 && document_.Pages().Count() < 5) document_.Pages().Add();
        if (below(12) == 0) page.Delete();
        return;
      case 17:
        page.SetName("name " + rowName());
        if (below(4) == 0) page.SetBackground(below(2) == 1);
        if (below(4) == 0) page.SetBackPage(pick(document_.Pages().all()));
        return;
      case 18:
        shape.Cells("BeginX").GlueTo(pickShape(page).Cells("PinX"));
        return;
      case 19:
        app_.ActiveWindow().Select(shape, visio::select);
        app_.ActiveWindow().Selection().Copy();
        if (page.Shapes().Count() < 40) page.Paste();
        return;
      case 20:
        if (const Hyperlink link = shape.AddHyperlink()) link.SetAddress(rowName());
        return;
      default:
        writeCell(below(5) ? shape : page.PageSheet());
    }
  }

 private:
  int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }
  template <class T>
  T pick(const std::vector<T>& items) {
    return items.empty() ? T() : items[static_cast<std::size_t>(below(static_cast<int>(items.size())))];
  }
  std::string rowName() { return std::string(1, static_cast<char>('a' + below(6))); }

  Shape pickShape(const Page& page) {
    Shape shape = pick(page.Shapes().all());
    while (shape && below(2) && shape.Shapes().Count() > 0) shape = pick(shape.Shapes().all());
    return shape;
  }

  void writeCell(const Shape& shape) {
    const std::string cells[] = {"PinX",
                                 "Width",
                                 "Height",
                                 "User." + rowName(),
                                 "User." + rowName() + ".Prompt",
                                 "Prop." + rowName(),
                                 "Prop." + rowName() + ".Type",
                                 "FillForegnd",
                                 "Angle",
                                 "EndX"};
    const Shape other = pickShape(pick(document_.Pages().all()));
    const std::string formulas[] = {std::to_string(below(9)) + " in",
                                    "\"text\"",
                                    "User." + rowName() + "+1",
                                    "GUARD(Width*0.5)",
                                    other.NameID().or_("ThePage") + "!User." + rowName() + "*2",
                                    "IF(User.a>3,User.b,User.c)",
                                    "ThePage!User." + rowName(),
                                    "No Formula",
                                    "5 em.",
                                    "TEXTWIDTH(TheText)",
                                    std::to_string(below(4)),
                                    "((",
                                    "1/0"};
    const Cell cell = shape.Cells(cells[below(std::size(cells))]);
    const std::string& formula = formulas[below(std::size(formulas))];
    below(2) ? cell.SetFormula(formula) : cell.FormulaForce(formula);
  }

  Application app_;
  Document document_;
  Master box_;
  std::mt19937 random_;
};

TEST_F(Undo, RandomEditsAreUndoneToTheStartAndRedoneToTheEnd) {
  const char* given = std::getenv("QUORVEL_TEST_SEED");
  const unsigned seed = given ? static_cast<unsigned>(std::atol(given)) : std::random_device()();
  SCOPED_TRACE("QUORVEL_TEST_SEED=" + std::to_string(seed));
  const host::MasterId master = addMaster("Box", [this](host::Sheet& group, host::Sheet& member) {
    set(group, "User.a", "1");
    set(group, "User.b", "User.a+1", 2);
    set(group, "Prop.c", "ThePage!User.a", 0);
    set(member, "User.a", "Sheet." + std::to_string(group.shapeId) + "!User.b*2", 4);
  });
  RandomEdits edits(app, document, Master(&running, {ObjectKind::Master, master.value, 0}), seed);
  const std::string start = dump();
  for (int round = 0; round < 30; ++round) {
    for (int i = 0; i < 100; ++i) edits.step();
    const std::string here = dump();
    int undone = 0;
    while (undone < 15 && app.Undo()) ++undone;
    for (int i = 0; i < undone; ++i) ASSERT_TRUE(app.Redo());
    ASSERT_EQ(firstDifference(here, dump()), "") << "after " << undone << " steps back and forth in round " << round;
  }
  ASSERT_FALSE(engine().undo.isOpen());
  const std::string end = dump();
  int undone = 0;
  while (app.Undo()) ++undone;
  EXPECT_GT(undone, 1000);
  ASSERT_EQ(firstDifference(start, dump()), "");
  for (int i = 0; i < undone; ++i) ASSERT_TRUE(app.Redo());
  EXPECT_EQ(firstDifference(end, dump()), "");
}

}  // namespace
}  // namespace quorvel
