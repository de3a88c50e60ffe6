// Values follow what they read, and only that: long chains, circles, inherited formulas, text measures.
#include <gtest/gtest.h>

#include <algorithm>

#include "host/edits/write_cell.h"
#include "host/host_fixture.h"
#include "host/sheet/inheritance.h"
#include "host/store_dump.h"

namespace quorvel {
namespace {

using host::CellKey;
using host::RowKey;
using host::SectionNumber;
using host::SheetId;

class Recalculation : public HostTest {
 protected:
  std::size_t evaluations() { return engine().evaluations(); }
};

TEST_F(Recalculation, AChainOfAHundredThousandCellsAcrossShapes) {
  constexpr int shapes = 1000, cellsOfAShape = 100;
  host::Store& store = engine().edit().making();
  const host::PageId home{page.ref().id};
  int previous = 0;
  for (int s = 0; s < shapes; ++s) {
    const SheetId id = store.addShape(home, {}, host::SheetKind::Shape);
    host::Sheet& sheet = *store.sheet(id);
    for (int c = 0; c < cellsOfAShape; ++c) {
      const std::string formula = c > 0   ? "User.c" + std::to_string(c - 1) + "+1"
                                  : s > 0 ? "Sheet." + std::to_string(previous) + "!User.c99+1"
                                          : "0";
      set(sheet, "User.c" + std::to_string(c), formula, s * cellsOfAShape + c);
    }
    previous = sheet.shapeId;
    engine().edit().watchFormulas(id);
  }
  const Shape first = page.Shapes().Item(1), last = page.Shapes().Item(shapes);
  const std::size_t before = evaluations();
  ASSERT_TRUE(first.Cells("User.c0").SetFormula("1000"));
  EXPECT_EQ(last.Cells("User.c99").Result(0), 1000.0 + shapes * cellsOfAShape - 1);
  EXPECT_EQ(evaluations() - before, std::size_t(shapes * cellsOfAShape - 1));
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(last.Cells("User.c99").Result(0), shapes * cellsOfAShape - 1.0);
}

TEST_F(Recalculation, ACircleThroughTwoShapesIsAnErrorUntilItIsBroken) {
  const Shape a = rectangle(), b = rectangle();
  const Cell x = user(a, "x", "1");
  const Cell y = user(b, "y", at(a, "User.x") + "+1");
  const Cell reader = user(b, "reader", "User.y*2");
  EXPECT_EQ(y.Result(0), 2.0);
  ASSERT_TRUE(x.SetFormula(at(b, "User.y") + "+1"));
  for (const Cell& cell : {x, y, reader}) EXPECT_EQ(cell.ResultStr(0), "#CIRCLE!");
  ASSERT_TRUE(x.SetFormula("5"));
  EXPECT_EQ(y.Result(0), 6.0);
  EXPECT_EQ(reader.Result(0), 12.0);

  // A cell that reads itself is the smallest circle.
  ASSERT_TRUE(x.SetFormula("User.x+1"));
  EXPECT_EQ(x.ResultStr(0), "#CIRCLE!");
  EXPECT_EQ(y.ResultStr(0), "#CIRCLE!");
}

TEST_F(Recalculation, ABranchThatIsNotTakenMakesNoCircle) {
  const Shape a = rectangle(), b = rectangle();
  const Cell flag = user(a, "flag", "0");
  user(b, "y", "1");
  const Cell x = user(a, "x", "IF(User.flag," + at(b, "User.y") + ",5)");
  const Cell y = user(b, "y", at(a, "User.x") + "+1");
  EXPECT_EQ(x.Result(0), 5.0);
  EXPECT_EQ(y.Result(0), 6.0);
  ASSERT_TRUE(flag.SetFormula("1"));
  EXPECT_EQ(x.ResultStr(0), "#CIRCLE!");
  EXPECT_EQ(y.ResultStr(0), "#CIRCLE!");
  ASSERT_TRUE(flag.SetFormula("0"));
  EXPECT_EQ(x.Result(0), 5.0);
  EXPECT_EQ(y.Result(0), 6.0);
}

TEST_F(Recalculation, AnUnchangedValueStopsThere) {
  const Shape shape = rectangle();
  const Cell x = user(shape, "x", "5");
  user(shape, "sign", "IF(User.x>0,1,0)");
  std::string previous = "sign";
  for (int i = 0; i < 20; ++i) {
    const std::string name = "n" + std::to_string(i);
    user(shape, name, "User." + previous + "+1");
    previous = name;
  }
  std::size_t before = evaluations();
  ASSERT_TRUE(x.SetFormula("6"));
  EXPECT_EQ(evaluations() - before, 1u);
  before = evaluations();
  ASSERT_TRUE(x.SetFormula("-6"));
  EXPECT_EQ(evaluations() - before, 21u);
  EXPECT_EQ(shape.Cells("User.n19").Result(0), 20.0);
}

TEST_F(Recalculation, ADiamondIsEvaluatedOncePerCell) {
  const Shape shape = rectangle();
  const Cell top = user(shape, "top", "1");
  user(shape, "left", "User.top+1");
  user(shape, "right", "User.top*2");
  const Cell bottom = user(shape, "bottom", "User.left+User.right");
  const std::size_t before = evaluations();
  ASSERT_TRUE(top.SetFormula("10"));
  EXPECT_EQ(bottom.Result(0), 31.0);
  EXPECT_EQ(evaluations() - before, 3u);
}

TEST_F(Recalculation, InheritedFormulasFollowInEachInstance) {
  SheetId definition;
  const host::MasterId master = addMaster("Box", [&](host::Sheet& group, host::Sheet& member) {
    set(group, "User.base", "3");
    set(group, "User.own", "User.base+1", 4);
    set(group, "User.ofPage", "ThePage!User.p+User.base", 3);
    set(group, "User.ofDocument", "TheDoc!User.d+User.base", 3);
    set(member, "User.fromGroup", "Sheet." + std::to_string(group.shapeId) + "!User.own*10", 40);
    definition = group.id;
  });
  const Cell p = user(page.PageSheet(), "p", "0");
  const Cell d = user(document.DocumentSheet(), "d", "0");
  const Shape instances[] = {drop(master, 1, 1), drop(master, 3, 1), drop(master, 5, 1)};
  const auto read = [](const Shape& shape, const char* cell) { return shape.Cells(cell).Result(0).or_(-1); };

  // A write to one instance changes that instance only, members included, and copies no formula into it.
  ASSERT_TRUE(instances[1].Cells("User.base").SetFormula("7"));
  const double expected[] = {3, 7, 3};
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(read(instances[i], "User.own"), expected[i] + 1) << i;
    EXPECT_EQ(read(instances[i].Shapes().Item(1), "User.fromGroup"), (expected[i] + 1) * 10) << i;
    const auto key = CellKey{SectionNumber::User, RowKey::named(host::intern("own")), 0};
    const host::FoundCell found = host::findCell(engine().store(), sheetOf(instances[i]), key);
    EXPECT_EQ(found.formulaSheet, definition) << i;
  }

  ASSERT_TRUE(p.SetFormula("100"));
  ASSERT_TRUE(d.SetFormula("1000"));
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(read(instances[i], "User.ofPage"), expected[i] + 100) << i;
    EXPECT_EQ(read(instances[i], "User.ofDocument"), expected[i] + 1000) << i;
  }
  const Page other = document.Pages().Add();
  user(other.PageSheet(), "p", "50");
  const Shape there = other.Drop(Master(&running, {ObjectKind::Master, master.value, 0}), 1, 1);
  EXPECT_EQ(read(there, "User.ofPage"), 53);
  EXPECT_EQ(read(there, "User.ofDocument"), 1003);

  // An edit of the master changes the instances without own values.
  const CellKey base{SectionNumber::User, RowKey::named(host::intern("base")), 0};
  ASSERT_TRUE(host::writeFormula(engine(), {definition, base}, "20", false));
  EXPECT_EQ(read(instances[0], "User.own"), 21);
  EXPECT_EQ(read(instances[1], "User.own"), 8);
  EXPECT_EQ(read(there, "User.ofPage"), 70);
}

TEST_F(Recalculation, TextWidthFollowsTheFields) {
  const Shape shape = rectangle();
  const Cell word = user(shape, "word", "\"short\"");
  ASSERT_TRUE(shape.Characters().AddCustomField("User.word", 0));
  const Cell width = user(shape, "width", "GUARD(TEXTWIDTH(TheText))");
  const double before = width.Result(visio::unitsInches).or_(0);
  EXPECT_GT(before, 0);
  ASSERT_TRUE(word.SetFormula("\"a good deal longer\""));
  EXPECT_EQ(shape.Text(), "a good deal longer");
  EXPECT_GT(width.Result(visio::unitsInches), before * 2);
  ASSERT_TRUE(shape.SetText("i"));
  EXPECT_LT(width.Result(visio::unitsInches), before);
}

TEST_F(Recalculation, ADrawnLineFollowsItsEnds) {
  const Shape line = page.DrawLine(0, 0, 3, 4);
  ASSERT_TRUE(line.Cells("EndX").SetResult(visio::unitsInches, 6.0));
  ASSERT_TRUE(line.Cells("EndY").SetResult(visio::unitsInches, 8.0));
  EXPECT_EQ(line.Cells("Width").Result(visio::unitsInches), 10.0);
  EXPECT_EQ(line.Cells("PinX").Result(visio::unitsInches), 3.0);
  EXPECT_EQ(line.Cells("Geometry1.X2").Result(visio::unitsInches), 10.0);
}

TEST_F(Recalculation, AMissingCellIsAReferenceErrorUntilItIsMade) {
  const Shape a = rectangle(), b = rectangle();
  const Cell reader = user(b, "reader", at(a, "User.later") + "+1");
  EXPECT_EQ(reader.ResultStr(0), "#REF!");
  user(a, "later", "4");
  EXPECT_EQ(reader.Result(0), 5.0);
  ASSERT_TRUE(a.DeleteRow(visio::sectionUser, a.Cells("User.later").Row().or_(-1)));
  EXPECT_EQ(reader.ResultStr(0), "#REF!");
  user(a, "later", "7");
  EXPECT_EQ(reader.Result(0), 8.0);
}

/// A container that is a list too and names three shapes, of which two name it; an instance whose formula is inherited.
class Relations : public Recalculation {
 protected:
  const host::MasterId master =
      addMaster("Lane", [this](host::Sheet& group, host::Sheet&) { set(group, "User.counts", "CONTAINERCOUNT()*10"); });
  const Shape container = drop(master), first = rectangle(), second = rectangle(), third = rectangle(),
              instance = drop(master);

  void SetUp() override {
    for (const auto& [name, formula] : {std::pair{"members", "CONTAINERMEMBERCOUNT()"},
                                        {"listed", "LISTMEMBERCOUNT()"},
                                        {"size", "8"},
                                        {"msvStructureType", "\"List\""}})
      user(container, name, formula);
    for (const Shape& shape : {first, second}) {
      user(shape, "containers", "CONTAINERCOUNT()");
      user(shape, "order", "LISTORDER()");
      user(shape, "lane", "IFERROR(CONTAINERSHEETREF(1,\"Lane\")!User.size,-1)");
    }
  }
  static bool relate(const Shape& shape, const std::string& formula) {
    return shape.Cells("Relationships").FormulaForce(formula);
  }
  static std::string names(int kind, const std::vector<Shape>& shapes) {
    std::string call = "DEPENDSON(" + std::to_string(kind);
    for (const Shape& shape : shapes) call += "," + at(shape, "SheetRef()");
    return call + ")";
  }
  /// What the shapes that exist show: the container, the first two, the instance.
  std::string shown() {
    std::string values;
    const auto add = [&](const Shape& shape, std::initializer_list<const char*> cells) {
      for (const char* cell : cells) values += shape.Cells(cell).ResultStr(0).or_("-") + " ";
    };
    add(container, {"User.members", "User.listed"});
    for (const Shape& shape : {first, second}) add(shape, {"User.containers", "User.order", "User.lane"});
    add(instance, {"User.counts"});
    return values;
  }
  std::string dump() { return StoreDump::of(engine().store(), host::DocumentId{document.ref().id}); }
};

TEST_F(Relations, WhatAsksForThemFollowsThem) {
  EXPECT_EQ(shown(), "0 0 0 -1 -1 0 -1 -1 0 ");
  ASSERT_TRUE(relate(container, "SUM(" + names(1, {first, second, third}) + "," + names(2, {first, second}) + ")"));
  for (const Shape& shape : {first, second})
    ASSERT_TRUE(relate(shape, "SUM(" + names(4, {container}) + "," + names(5, {container}) + ")"));
  ASSERT_TRUE(relate(instance, names(4, {container})));
  EXPECT_EQ(shown(), "3 2 1 1 -1 1 2 -1 10 ");
  user(container, "msvShapeCategories", "\"Lane;Other\"");
  const std::string related = "3 2 1 1 8 1 2 8 10 ", without = "3 2 1 1 -1 1 2 -1 10 ";
  EXPECT_EQ(shown(), related);

  const Cell categories = container.Cells("User.msvShapeCategories");
  const struct {
    const char* change;
    std::function<bool()> make;
    std::string after;
  } changes[] = {
      {"the container names one", [&] { return relate(container, names(2, {second})); }, "0 1 1 -1 8 1 1 8 10 "},
      {"a member names none", [&] { return relate(second, ""); }, "3 2 1 1 8 0 -1 -1 10 "},
      {"a constant", [&] { return relate(instance, "0"); }, "3 2 1 1 8 1 2 8 0 "},
      {"other categories", [&] { return categories.SetFormula("\"Other\""); }, without},
      {"row renamed", [&] { return container.Section(visio::sectionUser).Row(*categories.Row()).SetNameU("another"); },
       without},
      {"row deleted", [&] { return container.DeleteRow(visio::sectionUser, *categories.Row()); }, without},
      {"other structure", [&] { return container.Cells("User.msvStructureType").SetFormula("\"\""); },
       "-1 2 1 1 8 1 2 8 10 "},
      {"first deleted", [&] { return first.Delete(); }, "2 1 - - - 1 1 8 10 "},
      {"third deleted, which names nothing", [&] { return third.Delete(); }, "2 2 1 1 8 1 2 8 10 "},
      {"container deleted", [&] { return container.Delete(); }, "- - 0 -1 -1 0 -1 -1 0 "},
      {"container ungrouped", [&] { return container.Ungroup(); }, "- - 0 -1 -1 0 -1 -1 0 "},
  };
  for (const auto& row : changes) {
    SCOPED_TRACE(row.change);
    const std::string before = dump();
    Recorder recorder(running);
    ASSERT_TRUE(row.make());
    EXPECT_EQ(shown(), row.after);
    const std::vector<std::string> events = recorder.take();
    EXPECT_TRUE(std::ranges::any_of(events, [](const std::string& event) {
      return event.starts_with("CellChanged") && !event.ends_with("msvShapeCategories") &&
             !event.ends_with("msvStructureType") && !event.ends_with("Relationships");
    }));
    const std::string after = dump();
    ASSERT_TRUE(app.Undo());
    EXPECT_EQ(firstDifference(before, dump()), "");
    EXPECT_EQ(shown(), related);
    ASSERT_TRUE(app.Redo());
    EXPECT_EQ(firstDifference(after, dump()), "");
    ASSERT_TRUE(app.Undo());
  }
}

TEST_F(Relations, CopiesAskAgainAndOtherPagesDoNot) {
  ASSERT_TRUE(relate(container, names(2, {first, second})));
  for (const Shape& shape : {first, second}) ASSERT_TRUE(relate(shape, names(5, {container})));
  EXPECT_EQ(second.Duplicate().Cells("User.order").Result(0), -1.0) << "the list does not name the copy";

  const auto paste = [&](const std::vector<Shape>& shapes, const Page& target) {
    app.ActiveWindow().SetPage(page);
    app.ActiveWindow().DeselectAll();
    for (const Shape& shape : shapes) app.ActiveWindow().Select(shape, visio::select);
    EXPECT_TRUE(app.ActiveWindow().Selection().Copy());
    EXPECT_TRUE(target.Paste());
    return target.Shapes().Item(target.Shapes().Count().or_(0)).Cells("User.order");
  };
  const Cell copied = paste({container, first, second}, page);
  EXPECT_EQ(copied.Result(0), 2.0);
  ASSERT_TRUE(page.Shapes().Item(page.Shapes().Count().or_(0) - 1).Delete());
  EXPECT_EQ(copied.Result(0), 1.0) << "the copies are related to each other";
  EXPECT_EQ(second.Cells("User.order").Result(0), 2.0);
  const Page other = document.Pages().Add();
  EXPECT_EQ(paste({second}, other).Result(0), -1.0) << "the list is on another page";

  const std::size_t before = evaluations();
  ASSERT_TRUE(relate(document.Pages().Add().DrawRectangle(0, 0, 1, 1), "0"));
  user(first, "plain", "5");
  EXPECT_EQ(evaluations(), before);
}

}  // namespace
}  // namespace quorvel
