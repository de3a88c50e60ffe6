// What drawings and their logic rely on at the published surface: names, rows, guards, locks, fields, selections,
// copies.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "host/host_fixture.h"
#include "host/sheet/inheritance.h"
#include "host/sheet/transform.h"

namespace quorvel {
namespace {

class Surface : public HostTest {
 protected:
  Master box = Master(&running, {ObjectKind::Master,
                                 addMaster("Box",
                                           [this](host::Sheet& group, host::Sheet& member) {
                                             set(group, "User.inherited", "3");
                                             set(group, "Prop.Label", "\"box\"");
                                             const std::string id = std::to_string(group.shapeId);
                                             set(member, "User.ofGroup", "Sheet." + id + " !User.inherited+1", 4);
                                           })
                                     .value,
                                 0});
  Shape dropBox(const Page& where) { return where.Drop(box, 2, 2); }
};

TEST_F(Surface, NamesOfShapes) {
  const Shape a = rectangle(), b = rectangle();
  ASSERT_TRUE(a.SetName("A01"));
  EXPECT_TRUE(b.SetName("A01")) << "while tasks are renumbered two have the same name";
  EXPECT_EQ(page.Shapes().Item("a01"), a) << "the first in the stack";
  EXPECT_FALSE(a.SetName(""));
  EXPECT_EQ(a.Name(), "A01");

  // A copy never gets its source's name: links to the source would go to the copy.
  EXPECT_EQ(a.Duplicate().Name(), "Sheet.3");
  const Shape dropped = dropBox(page);
  EXPECT_EQ(dropped.Name(), "Box.4");
  dropped.SetName("A02");
  EXPECT_EQ(dropped.Duplicate().Name(), "Box.6");
  app.ActiveWindow().DeselectAll();
  app.ActiveWindow().Select(a, visio::select);
  ASSERT_TRUE(app.ActiveWindow().Selection().Copy());
  ASSERT_TRUE(page.Paste());
  EXPECT_EQ(app.ActiveWindow().Selection().Item(1).Name(), "Sheet.8");
}

TEST_F(Surface, NamesOfPages) {
  const Page second = document.Pages().Add();
  EXPECT_FALSE(second.SetName("page-1"));
  EXPECT_FALSE(second.SetName(" "));
  EXPECT_TRUE(second.SetName("Orders"));
  EXPECT_TRUE(second.SetName("ORDERS")) << "its own name in another case";
  EXPECT_EQ(document.Pages().Item("orders"), second);
  EXPECT_FALSE(second.SetBackPage(page)) << "a foreground page is no background";
  second.SetBackground(true);
  EXPECT_TRUE(page.SetBackPage(second));
  EXPECT_FALSE(second.SetBackPage(second));
  EXPECT_TRUE(second.Delete());
  EXPECT_FALSE(page.Delete()) << "the last page";
}

/// Long sections are searched in other ways than short ones: what is overridden, deleted and added must be the same.
TEST_F(Surface, LongSectionsShowTheMastersRowsAndTheirOwn) {
  constexpr int ofMaster = 200;
  const auto name = [](int i) { return "row" + std::to_string(i); };
  const host::MasterId master = addMaster("Long", [&](host::Sheet& group, host::Sheet&) {
    for (int i = 0; i < ofMaster; ++i) set(group, "User." + name(i), std::to_string(i));
  });
  const Shape shape = drop(master);
  for (const int i : {150, 3, 77}) user(shape, name(i), std::to_string(1000 + i));
  for (const int i : {199, 0, 78})
    EXPECT_TRUE(shape.DeleteRow(visio::sectionUser, shape.Cells("User." + name(i)).Row().or_(-1)));
  for (int i = ofMaster; i < ofMaster + 60; ++i) user(shape, name(i), std::to_string(i));

  std::vector<std::string> expected;
  for (int i = 0; i < ofMaster + 60; ++i)
    if (i != 0 && i != 78 && i != 199) expected.push_back(name(i));
  std::vector<std::string> shown;
  const auto alone = [&](host::RowKey key) {
    return host::rowWithKey(engine().store(), sheetOf(shape), host::SectionNumber::User, key);
  };
  for (const host::RowView& row : host::rowsOf(engine().store(), sheetOf(shape), host::SectionNumber::User)) {
    shown.emplace_back(host::spelling(row.name));
    EXPECT_TRUE(alone(row.key) == row) << shown.back();
  }
  EXPECT_FALSE(alone(host::parseCellName("User." + name(78))->row));
  EXPECT_EQ(shown, expected);
  for (int step = 0; step < ofMaster + 60; ++step) {
    const int i = step * 97 % (ofMaster + 60);  // neither the last row nor the next
    const bool own = i == 150 || i == 3 || i == 77;
    const Cell cell = shape.Cells("User." + name(i));
    if (i == 0 || i == 78 || i == 199)
      EXPECT_FALSE(cell) << i;
    else
      EXPECT_EQ(cell.ResultInt(visio::unitsNone, 0), own ? 1000 + i : i) << i;
  }
}

TEST_F(Surface, RowsOfTheMasterAreThereButNotLocal) {
  const Shape shape = dropBox(page);
  EXPECT_EQ(shape.CellExists("user.INHERITED", 0), true);
  EXPECT_EQ(shape.CellExists("User.inherited", 1), false);
  EXPECT_EQ(shape.CellExists("User.missing", 0), false);
  EXPECT_FALSE(shape.Cells("User.missing"));
  EXPECT_EQ(shape.Cells("User.inherited.Value").Name(), "User.inherited");

  // A row of the master's name makes it local; one that is local already refuses, in any letter case.
  EXPECT_TRUE(shape.AddNamedRow(visio::sectionUser, "Inherited", 0));
  EXPECT_EQ(shape.CellExists("User.inherited", 1), true);
  EXPECT_FALSE(shape.AddNamedRow(visio::sectionUser, "inherited", 0));
  EXPECT_EQ(shape.RowCount(visio::sectionUser), 1);
  EXPECT_FALSE(shape.AddNamedRow(visio::sectionUser, "no name", 0));
  EXPECT_FALSE(shape.AddNamedRow(visio::sectionUser, "", 0));

  // Deleting one hides the master's too, until it is added again.
  ASSERT_TRUE(shape.DeleteRow(visio::sectionUser, 0));
  EXPECT_FALSE(shape.Cells("User.inherited"));
  EXPECT_EQ(dropBox(page).Cells("User.inherited").Result(0), 3.0);
  EXPECT_TRUE(shape.AddNamedRow(visio::sectionUser, "inherited", 0));
  EXPECT_TRUE(shape.Cells("User.inherited"));
}

TEST_F(Surface, CollectionsCountFromOneButHyperlinksFromZero) {
  const Shape shape = rectangle();
  const Hyperlink first = shape.AddHyperlink(), second = shape.Hyperlinks().Add();
  ASSERT_TRUE(first.SetAddress("one") && second.SetAddress("say \"two\""));
  EXPECT_EQ(shape.Hyperlinks().Item(0).Address(), "one");
  EXPECT_EQ(shape.Hyperlinks().Item(1).Address(), "say \"two\"");
  EXPECT_FALSE(shape.Hyperlinks().Item(2));
  EXPECT_TRUE(first.SetIsDefaultLink(true) && second.SetIsDefaultLink(true));
  EXPECT_EQ(first.IsDefaultLink(), false) << "a shape has one default link";
  EXPECT_TRUE(first.SetIsDefaultLink(false));
  EXPECT_EQ(second.IsDefaultLink(), true);
  ASSERT_TRUE(first.Delete());
  EXPECT_EQ(shape.Hyperlinks().Item(0).Address(), "say \"two\"");
  EXPECT_EQ(second.Address(), "say \"two\"");
  EXPECT_FALSE(first.Address());
  ASSERT_TRUE(shape.DeleteSection(visio::sectionHyperlink));
  EXPECT_EQ(shape.Hyperlinks().Count(), 0);

  const Layer layer = page.Layers().Add("Visible");
  EXPECT_EQ(page.Layers().Add("visible"), layer);
  EXPECT_EQ(layer.CellsC(visio::columnLayerVisible).Result(0), 1) << "a new layer is visible";
  layer.Add(shape, 1);
  for (const int index : {0, 2}) {
    EXPECT_FALSE(page.Shapes().Item(index));
    EXPECT_FALSE(document.Pages().Item(index));
    EXPECT_FALSE(app.Documents().Item(index));
    EXPECT_FALSE(shape.Layer(index));
    EXPECT_FALSE(page.Layers().Item(index));
  }
  EXPECT_EQ(shape.Layer(1).Name(), "Visible");
  EXPECT_EQ(page.Shapes().Item(1), shape);
}

TEST_F(Surface, OnlyAGuardStopsAWrite) {
  const Shape shape = rectangle();
  const Cell cell = user(shape, "x", "= GUARD( 2+1 )");
  EXPECT_EQ(cell.Formula(), "GUARD( 2+1 )");
  EXPECT_FALSE(cell.SetFormula("5"));
  EXPECT_FALSE(cell.SetResult(0, 5.0));
  EXPECT_FALSE(cell.SetResultIU(5.0));
  EXPECT_EQ(cell.Result(0), 3.0);
  EXPECT_TRUE(cell.ResultForce(0, 6.0));
  EXPECT_EQ(cell.Formula(), "6");
  EXPECT_FALSE(cell.FormulaForce("2 +* 3"));
  EXPECT_EQ(cell.Formula(), "6") << "broken text leaves the cell";
  EXPECT_TRUE(cell.SetFormula("=No Formula"));
  EXPECT_EQ(cell.Formula(), "");

  // Locks stop a user's commands, not writes to cells.
  for (const char* lock : {"LockWidth", "LockTextEdit", "LockFormat", "LockMoveX"}) shape.Cells(lock).SetFormula("1");
  EXPECT_TRUE(shape.Cells("Width").SetResult(visio::unitsInches, 3.0));
  EXPECT_TRUE(shape.Cells("PinX").SetResult(visio::unitsInches, 3.0));
  EXPECT_TRUE(shape.SetText("typed by code"));
  EXPECT_FALSE(shape.BeginTextEdit());
  shape.Cells("LockTextEdit").SetFormula("0");
  EXPECT_TRUE(shape.BeginTextEdit());
  EXPECT_TRUE(shape.EndTextEdit("typed by hand"));
  EXPECT_EQ(shape.Text(), "typed by hand");
}

TEST_F(Surface, ALockAgainstDeletionHoldsForTheShapeAndNotForItsGroup) {
  const Shape group = dropBox(page), member = group.Shapes().Item(1);
  ASSERT_TRUE(member.Cells("LockDelete").SetFormula("1"));
  EXPECT_FALSE(member.Delete());
  EXPECT_TRUE(member.Name());
  EXPECT_TRUE(group.Delete());
  EXPECT_FALSE(member.Name());
  ASSERT_TRUE(app.Undo());
  // LockGroup holds for the members, and not for the group either.
  ASSERT_TRUE(member.Cells("LockDelete").SetFormula("0"));
  ASSERT_TRUE(group.Cells("LockGroup").SetFormula("1"));
  const Shape inner = member.DrawRectangle(0, 0, 1, 1);
  EXPECT_FALSE(member.Delete());
  EXPECT_FALSE(inner.Delete());
  EXPECT_TRUE(group.Delete());

  const Shape locked = rectangle(), open = rectangle();
  locked.Cells("LockDelete").SetFormula("1");
  const Window window = app.ActiveWindow();
  for (const Shape& shape : {locked, open}) window.Select(shape, visio::select);
  Recorder recorder(running);
  EXPECT_FALSE(window.Selection().Delete());
  EXPECT_TRUE(locked.Name() && open.Name()) << "all or nothing";
  EXPECT_TRUE(recorder.take().empty());
  // The same when a listener locks one after the other has been deleted.
  locked.Cells("LockDelete").SetFormula("0");
  recorder.onBeforeShapeDelete = [&](const Shape& going) {
    if (going == locked) open.Cells("LockDelete").SetFormula("1");
  };
  EXPECT_FALSE(window.Selection().Delete());
  EXPECT_TRUE(locked.Name() && open.Name());
}

TEST_F(Surface, FieldsAreInTextOrder) {
  const Shape shape = rectangle();
  user(shape, "word", "\"world\"");
  // Where there is neither text nor field the first field can be written, and becomes the text.
  EXPECT_EQ(shape.CellExists("Fields.Value[1]", 1), false);
  ASSERT_TRUE(shape.Cells("Fields.Value[1]").FormulaForce("User.word"));
  EXPECT_EQ(shape.Text(), "world");
  EXPECT_EQ(shape.CellExists("Fields.Value", 1), true);

  // A new field is first and becomes row 1.
  ASSERT_TRUE(shape.Characters().AddCustomField("\"hello \"", 0));
  EXPECT_EQ(shape.Text(), "hello world");
  EXPECT_EQ(shape.Cells("Fields.Value[2]").Formula(), "User.word");
  ASSERT_TRUE(shape.Characters().AddCustomField("", 0));
  ASSERT_TRUE(shape.Cells("Fields.Value[1]").FormulaForce("\"oh, \""));
  EXPECT_EQ(shape.Characters().Text(), "oh, hello world");
  shape.Cells("Fields.Format[3]").FormulaForce("\"'the '@\"");
  EXPECT_EQ(shape.Text(), "oh, hello the world");
  // A format by its published number.
  ASSERT_TRUE(shape.Cells("Fields.Value[3]").FormulaForce("1.256"));
  for (const auto& [number, text] : {std::pair("6", "1.26"), std::pair("2", "1"), std::pair("0", "1.256")}) {
    ASSERT_TRUE(shape.Cells("Fields.Format[3]").FormulaForce(number));
    EXPECT_EQ(shape.Text(), std::string("oh, hello ") + text) << number;
  }

  // Text that is put replaces the fields; after text no field can be written.
  ASSERT_TRUE(shape.SetText("plain"));
  EXPECT_FALSE(shape.Cells("Fields.Value[1]").FormulaForce("User.word"));
  EXPECT_EQ(shape.Text(), "plain");
  EXPECT_EQ(shape.RowCount(8), 0);

  // A put of the text that is shown keeps the field.
  ASSERT_TRUE(shape.SetText(""));
  ASSERT_TRUE(shape.Cells("Fields.Value[1]").FormulaForce("User.word"));
  ASSERT_TRUE(shape.EndTextEdit("world"));
  EXPECT_EQ(shape.CellExists("Fields.Value[1]", 1), true);
}

TEST_F(Surface, AFieldIsInsertedWhereTheCharactersBegin) {
  const Shape shape = rectangle();
  ASSERT_TRUE(
      shape.SetText("gr\xC3\xBC\xC3\x9F"
                    "e!"));
  const Characters range = shape.Characters();
  EXPECT_EQ(range.Begin(), 0);
  EXPECT_EQ(range.End(), 6);
  ASSERT_TRUE(range.SetBegin(4));
  EXPECT_EQ(range.Text(), "e!");
  EXPECT_EQ(shape.Characters().Begin(), 0) << "another range";
  for (const char* formula : {"\"[b]\"", "\"[a]\""}) ASSERT_TRUE(range.AddCustomField(formula, 0));
  EXPECT_EQ(shape.Text(), "gr\xC3\xBC\xC3\x9F[a][b]e!");
  EXPECT_EQ(shape.Cells("Fields.Value[2]").Formula(), "\"[b]\"") << "rows are in text order";
  // Inside a field is its start, and the rows before it stay.
  ASSERT_TRUE(range.SetBegin(8));
  ASSERT_TRUE(range.AddCustomField("\"[-]\"", 0));
  ASSERT_TRUE(range.SetBegin(15));
  EXPECT_EQ(range.End(), 15);
  ASSERT_TRUE(range.AddCustomField("\"[z]\"", 0));
  EXPECT_EQ(shape.Text(), "gr\xC3\xBC\xC3\x9F[a][-][b]e![z]");
  for (const auto& [cell, formula] : {std::pair("Fields.Value[1]", "\"[a]\""), std::pair("Fields.Value[2]", "\"[-]\""),
                                      std::pair("Fields.Value[4]", "\"[z]\"")})
    EXPECT_EQ(shape.Cells(cell).Formula(), formula);
  ASSERT_TRUE(range.SetEnd(2));
  EXPECT_EQ(range.Begin(), 2);
  EXPECT_FALSE(range.SetEnd(19));
  EXPECT_FALSE(range.SetBegin(-1));
  ASSERT_TRUE(shape.SetText(""));
  EXPECT_EQ(range.End(), 0);
}

TEST_F(Surface, ASelectionIsWalkedInItsMode) {
  const Shape group = dropBox(page), member = group.Shapes().Item(1), other = rectangle();
  const Window window = app.ActiveWindow();
  window.DeselectAll();
  for (const Shape& shape : {other, group, member}) ASSERT_TRUE(window.Select(shape, visio::select));
  const Selection selection = window.Selection();
  EXPECT_EQ(selection.all(), (std::vector<Shape>{other, group}));
  ASSERT_TRUE(selection.SetIterationMode(visio::selectModeSkipSuper));
  EXPECT_EQ(selection.all(), (std::vector<Shape>{other, member}));

  // A selection that was handed out does not change; a deleted shape keeps its place.
  window.Select(other, visio::deselect);
  EXPECT_EQ(selection.Count(), 2);
  EXPECT_EQ(window.Selection().Count(), 1);
  other.Delete();
  EXPECT_EQ(selection.Count(), 2);
  EXPECT_FALSE(selection.Item(1).Name());
  EXPECT_FALSE(window.Select(other, visio::select));
  EXPECT_FALSE(window.Select(document.Pages().Add().DrawRectangle(0, 0, 1, 1), 99));
}

TEST_F(Surface, ReferencesInsideACopyMeanTheCopy) {
  const Shape source = dropBox(page), member = source.Shapes().Item(1);
  const std::string outside = at(rectangle(), "Width");
  ASSERT_TRUE(member.Cells("User.ofGroup").SetFormula("Sheet." + std::to_string(*source.ID()) + "!User.inherited+1"));
  user(member, "beyond", outside);
  const auto reads = [](const Shape& copy) {
    const std::string group = copy.NameID().or_("?");
    const Shape inner = copy.Shapes().Item(1);
    EXPECT_NE(inner.Cells("User.ofGroup").Formula().or_("").find(group), std::string::npos)
        << inner.Cells("User.ofGroup").Formula().or_("(none)") << " in " << group;
    EXPECT_TRUE(copy.Cells("User.inherited").FormulaForce("41"));
    EXPECT_EQ(inner.Cells("User.ofGroup").Result(0), 42.0) << group;
  };
  EXPECT_EQ(dropBox(page).Shapes().Item(1).Cells("User.ofGroup").Formula(), "Sheet.4 !User.inherited+1");
  reads(dropBox(page));

  const Shape duplicate = source.Duplicate();
  reads(duplicate);
  EXPECT_EQ(duplicate.Shapes().Item(1).Cells("User.beyond").Formula(), outside)
      << "what is not copied keeps its meaning";
  EXPECT_EQ(member.Cells("User.ofGroup").Result(0), 4.0) << "the source is untouched";

  const Window window = app.ActiveWindow();
  window.DeselectAll();
  window.Select(source, visio::select);
  ASSERT_TRUE(window.Selection().Copy());
  const Page second = document.Pages().Add();
  second.DrawRectangle(0, 0, 1, 1);
  ASSERT_TRUE(second.Paste());
  reads(second.Shapes().Item(2));
  EXPECT_EQ(second.Shapes().Item(2).Shapes().Item(1).Cells("User.beyond").Formula(), "1 in.")
      << "the shape of that number is another one here";
  EXPECT_EQ(second.Shapes().Item(2).Master().Name(), "Box");

  const Document other = app.Documents().Add("");
  const Page there = other.Pages().Item(1);
  for (int i = 0; i < 5; ++i) there.DrawRectangle(0, 0, 1, 1);
  ASSERT_TRUE(there.Paste());
  reads(there.Shapes().Item(6));
  EXPECT_EQ(other.Masters().Count(), 1) << "the master was copied too";
  ASSERT_TRUE(there.Paste());
  EXPECT_EQ(other.Masters().Count(), 1) << "once";
}

TEST_F(Surface, APasteKeepsTheStackAndNeedsNothingOfItsSource) {
  const Document source = app.Documents().Add(""), target = app.Documents().Add("");
  const Page from = source.Pages().Item(1), to = target.Pages().Item(1);
  const Shape outer = from.Drop(box, 3, 3);
  ASSERT_TRUE(outer.Cells("Angle").SetFormula("90 deg"));
  const Shape line = from.DrawLine(1, 1, 2, 2);
  const Shape image = from.Import(QUORVEL_SOURCE_FOLDER "/data/Images/Quorvel Logo.jpg");
  image.SetName("source's");
  ASSERT_TRUE(line.Cells("EndX").GlueTo(image.Cells("PinX")));
  const Window window = app.Windows().Item(2);
  ASSERT_TRUE(window.Activate());
  window.DeselectAll();
  for (const Shape& shape : {image, outer.Shapes().Item(1), line}) ASSERT_TRUE(window.Select(shape, visio::select));
  const Selection chosen = window.Selection();
  chosen.SetIterationMode(256);
  ASSERT_TRUE(chosen.Copy());
  // A member by itself has what it inherited, and lies where it lay.
  const host::Matrix placed = host::toPageMatrix(engine().store(), sheetOf(outer.Shapes().Item(1)));
  const Maybe<double> inherited = outer.Shapes().Item(1).Cells("User.ofGroup").Result(0);
  ASSERT_TRUE(source.Close());
  Recorder recorder(running);
  recorder.onShapeAdded = [](const Shape& shape) {
    if (shape.OneD() == true) shape.Delete();
  };
  ASSERT_TRUE(to.Paste());
  EXPECT_EQ(recorder.take(), (std::vector<std::string>{"SelectionChanged", "ShapeAdded Sheet.1", "ShapeAdded Sheet.2",
                                                       "BeforeShapeDelete Sheet.2", "(handled)", "SelectionChanged",
                                                       "ShapeAdded Sheet.3"}));
  ASSERT_EQ(to.Shapes().Count(), 2);
  const Shape member = to.Shapes().Item(1);
  EXPECT_EQ(member.Cells("User.ofGroup").Result(0), inherited);
  const host::Matrix now = host::toPageMatrix(engine().store(), sheetOf(member));
  EXPECT_NEAR(now.e, placed.e, 1e-9);
  EXPECT_NEAR(now.f, placed.f, 1e-9);
  EXPECT_NEAR(now.b, placed.b, 1e-9);
  EXPECT_EQ(to.Shapes().Item(2).Name(), "Sheet.3") << "never the source's";
  EXPECT_TRUE(host::foreignOf(engine().store(), sheetOf(to.Shapes().Item(2))));
}

TEST_F(Surface, ACopyIsOnTheLayersOfItsNewPage) {
  const Shape shape = rectangle();
  page.Layers().Add("First");
  page.Layers().Add("Details").Add(shape, 1);
  app.ActiveWindow().Select(shape, visio::select);
  ASSERT_TRUE(app.ActiveWindow().Selection().Copy());
  const Page second = document.Pages().Add();
  second.Layers().Add("Other");
  ASSERT_TRUE(second.Paste());
  const Shape copy = second.Shapes().Item(1);
  ASSERT_EQ(copy.LayerCount(), 1);
  EXPECT_EQ(copy.Layer(1).Name(), "Details");
}

TEST_F(Surface, Durations) {
  const Shape shape = rectangle();
  const Cell time = user(shape, "TimeValue", "\"0 em.\"");
  shape.AddNamedRow(visio::sectionProp, "Time_Units", 0);
  shape.Cells("Prop.Time_Units").SetFormula("\"Minutes\"");
  shape.AddNamedRow(visio::sectionProp, "Completion", 0);
  const Cell shown = shape.Cells("Prop.Completion");
  const std::string formula =
      "=  FORMATEX(User.TimeValue,\"#.##### u\",,IF(STRSAME(Prop.Time_Units,\"Seconds\"),\"es.\","
      "IF(STRSAME(Prop.Time_Units,\"Minutes\"),\"em.\",IF(STRSAME(Prop.Time_Units,\"Hours\"),\"eh.\","
      "IF(STRSAME(Prop.Time_Units,\"Days\"),\"ed.\",\"ew.\")))))";
  ASSERT_TRUE(shown.FormulaForce(formula));
  EXPECT_EQ(time.ResultStr(0), "0 em.");
  EXPECT_EQ(shown.ResultIU(), 0.0);

  const struct {
    const char *written, *units, *shown;
    double days;
  } cases[] = {
      {"5em", "Minutes", "5 em.", 5 / 1440.0},   {"5 em.", "Seconds", "300 es.", 5 / 1440.0},
      {"\"2 eh.\"", "Hours", "2 eh.", 2 / 24.0}, {"2 eh.", "Minutes", "120 em.", 2 / 24.0},
      {"1.5 ed.", "Days", "1.5 ed.", 1.5},       {"2 ew", "Weeks", "2 ew.", 14},
  };
  for (const auto& c : cases) {
    ASSERT_TRUE(time.FormulaForce(c.written)) << c.written;
    shape.Cells("Prop.Time_Units").SetFormula("\"" + std::string(c.units) + "\"");
    EXPECT_EQ(shown.ResultStr(0), c.shown) << c.written;
    EXPECT_NEAR(shown.ResultIU().or_(-1), c.days, 1e-9) << c.written;
  }

  // A bare number in a duration property is a duration too; its text always ends in blank, two letters and a point.
  ASSERT_TRUE(shape.Cells("Prop.Completion.Type").SetFormula("6"));
  ASSERT_TRUE(shown.FormulaForce("2"));
  EXPECT_EQ(shown.ResultStr(0), "2 ed.");
  EXPECT_EQ(shown.Formula(), "2");
}

TEST_F(Surface, AGluedEndFollowsItsShape) {
  const Shape from = page.DrawRectangle(0, 0, 2, 2), to = page.DrawRectangle(6, 0, 8, 2);
  const Shape line = page.DrawLine(3, 3, 4, 4);
  ASSERT_TRUE(line.Cells("BeginX").GlueTo(from.Cells("PinX")));
  ASSERT_TRUE(line.Cells("EndX").GlueTo(to.Cells("PinX")));
  EXPECT_EQ(line.Cells("BeginX").Result(visio::unitsInches), 1.0);
  EXPECT_EQ(line.Cells("EndX").Result(visio::unitsInches), 7.0);
  ASSERT_TRUE(to.Cells("PinX").SetResult(visio::unitsInches, 11.0));
  ASSERT_TRUE(to.Cells("PinY").SetResult(visio::unitsInches, 5.0));
  EXPECT_EQ(line.Cells("EndX").Result(visio::unitsInches), 11.0);
  EXPECT_EQ(line.Cells("EndY").Result(visio::unitsInches), 5.0);
  EXPECT_EQ(line.Cells("PinX").Result(visio::unitsInches), 6.0);

  EXPECT_FALSE(line.Cells("EndX").GlueTo(line.Cells("PinX")));
  EXPECT_FALSE(from.Cells("PinX").GlueTo(to.Cells("PinX")));
  EXPECT_FALSE(line.Cells("EndX").GlueTo(document.Pages().Add().DrawRectangle(0, 0, 1, 1).Cells("PinX")));
  const Cell width = user(from, "Width", at(to, "Width") + "*2");
  const std::string glued = line.Cells("EndX").Formula().or_({});
  ASSERT_TRUE(to.Delete());
  EXPECT_EQ(line.Cells("EndX").Formula(), "11 in.") << "a number that is used again must not glue the loose end";
  EXPECT_EQ(line.Cells("EndY").Result(visio::unitsInches), 5.0);
  EXPECT_EQ(width.Formula(), "REF()*2");
  EXPECT_EQ(width.ResultStr(0), "#REF!");
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(line.Cells("EndX").Formula(), glued);
  EXPECT_EQ(width.Result(visio::unitsInches), 4.0);
  ASSERT_TRUE(to.Cells("PinX").SetResult(visio::unitsInches, 9.0));
  EXPECT_EQ(line.Cells("EndX").Result(visio::unitsInches), 9.0);
}

TEST_F(Surface, MembersHaveTheMasterTheyCameWith) {
  const Shape group = dropBox(page);
  EXPECT_EQ(group.Shapes().Item(1).Master().Name(), "Box");
  EXPECT_FALSE(group.DrawRectangle(0, 0, 1, 1).Master());
  EXPECT_FALSE(rectangle().Master());
  EXPECT_EQ(group.Shapes().Item(1).ContainingShape(), group);
  EXPECT_EQ(group.ContainingShape(), page.PageSheet());
  EXPECT_FALSE(group.Parent()) << "a page is no shape";
}

TEST_F(Surface, DropConnectedPlacesNextToAndGluesBothEnds) {
  const Shape start = page.DrawRectangle(4, 4, 6, 5);
  const struct {
    int direction;
    double x, y;
  } cases[] = {{0, 7.5, 4.5}, {1, 5, 6}, {2, 5, 3}, {3, 2.5, 4.5}, {4, 7.5, 4.5}};
  for (const auto& c : cases) {
    const Shape beside = page.DropConnected(box, start, c.direction, {});
    ASSERT_TRUE(beside) << c.direction;
    EXPECT_DOUBLE_EQ(beside.Cells("PinX").ResultIU().or_(0), c.x) << c.direction;
    EXPECT_DOUBLE_EQ(beside.Cells("PinY").ResultIU().or_(0), c.y) << c.direction;
    const Shape line = beside.FromConnects().Item(1).FromSheet();
    ASSERT_EQ(line.Connects().Count(), 2);
    EXPECT_EQ(line.Connects().Item(1).ToSheet(), start);
    EXPECT_EQ(line.Connects().Item(1).FromCell().Name(), "BeginX");
    EXPECT_EQ(line.Connects().Item(2).ToSheet(), beside);
    EXPECT_EQ(page.Connects().Count(), 2);
    EXPECT_EQ(app.ActiveWindow().Selection().Item(1), beside);
    ASSERT_TRUE(app.Undo()) << "one step";
    EXPECT_EQ(page.Shapes().Count(), 1);
    EXPECT_EQ(page.Connects().Count(), 0);
  }
  EXPECT_FALSE(page.DropConnected(box, start, 5, {}));
  EXPECT_FALSE(page.DropConnected(box, document.DocumentSheet(), 4, {}));
  EXPECT_FALSE(page.DropConnected(box, document.Pages().Add().DrawLine(0, 0, 1, 1), 4, {})) << "on another page";

  // A handler that deletes the new shape leaves no connector.
  Recorder recorder(running);
  recorder.onShapeAdded = [](Shape shape) { shape.Delete(); };
  EXPECT_FALSE(page.DropConnected(box, start, 4, {}));
  EXPECT_EQ(page.Shapes().Count(), 1);
}

TEST_F(Surface, CollectionsByName) {
  EXPECT_EQ(app.Documents().Item("drawing1"), document);
  EXPECT_FALSE(app.Documents().Item("Drawing2"));
  const CommandBar bar = app.CommandBars().Add("Quorvel", 1, false, true);
  EXPECT_EQ(app.CommandBars().Item("quorvel"), bar);
  EXPECT_EQ(app.CommandBars().Item(app.CommandBars().Count().or_(0)), bar);
  const CommandBarControl button = bar.Controls().Add(1);
  ASSERT_TRUE(button.SetCaption("&Roles..."));
  EXPECT_EQ(bar.Controls().Item("roles..."), button);
}

TEST_F(Surface, AnImageFileThatChangedIsReadAgain) {
  const std::string file = testing::TempDir() + "quorvel-surface.bmp";
  const auto widthOf = [&](char pixels, std::size_t size) {
    std::string bytes(size, '\0');
    bytes.replace(0, 2, "BM");
    bytes[18] = bytes[22] = pixels;
    std::ofstream(file, std::ios::binary) << bytes;
    return page.Import(file).Cells("Width").Result(visio::unitsInches);
  };
  EXPECT_EQ(widthOf(96, 64), 1.0);
  EXPECT_EQ(widthOf(48, 65), 0.5);
  std::filesystem::remove(file);
  EXPECT_FALSE(page.Import(file)) << "nor is one that is no longer there";
}

TEST_F(Surface, FormulasAreWrittenInTheSyntaxOfTheCountry) {
  engine().setLocale({';', ','});
  const Shape shape = rectangle();
  const Cell separator = user(shape, "lstSpr", "LISTSEP()"), mark = user(shape, "mark", "DECIMALSEP()");
  EXPECT_EQ(separator.ResultStr(0), ";");
  EXPECT_EQ(mark.ResultStr(0), ",");
  const Cell width = shape.Cells("Width");
  ASSERT_TRUE(width.SetFormula("IF(1;2,5 in;0)"));
  EXPECT_EQ(width.Result(visio::unitsInches), 2.5);
  EXPECT_EQ(width.Formula(), "IF(1;2,5 in;0)");
  EXPECT_EQ(width.FormulaU(), "IF(1,2.5 in,0)");
  ASSERT_TRUE(width.FormulaForceU("MAX(1.5 in,0.5 in)"));
  EXPECT_EQ(width.Formula(), "MAX(1,5 in;0,5 in)");
  ASSERT_TRUE(width.SetResult(visio::unitsInches, 1.25));
  EXPECT_EQ(width.Formula(), "1,25 in.");
  // What is composed with the cell's separator is read in any country.
  ASSERT_TRUE(width.FormulaForce("MAX(3 in" + separator.ResultStr(0).or_("") + "1 in)"));
  EXPECT_EQ(width.Result(visio::unitsInches), 3.0);
  engine().setLocale({});
  EXPECT_EQ(width.Formula(), "MAX(3 in,1 in)");
}

}  // namespace
}  // namespace quorvel
