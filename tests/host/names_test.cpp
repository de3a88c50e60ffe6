// Local and universal names, references by name, rows found by number, and texts that no file can contain.
#include <gtest/gtest.h>

#include "host/host_fixture.h"
#include "host/sheet/inheritance.h"
#include "host/store_dump.h"

namespace quorvel {
namespace {

class Names : public HostTest {
 protected:
  host::Sheet& sheet(const Shape& shape) { return *engine().edit().making().sheet(sheetOf(shape)); }
  std::string dump() { return StoreDump::of(engine().store(), host::DocumentId{document.ref().id}); }
  /// What the formula gives on the shape.
  std::string shown(const Shape& shape, const std::string& formula) {
    return user(shape, "asked", formula).ResultStr(0).or_("refused");
  }
};

TEST_F(Names, OfTwoKindsAreKeptApart) {
  const Page second = document.Pages().Add();
  ASSERT_TRUE(page.SetName("Bestellung"));
  EXPECT_EQ(page.NameU(), "Bestellung") << "a change of one changes the other while they are the same";
  ASSERT_TRUE(page.SetNameU("Order"));
  EXPECT_EQ(page.Name(), "Bestellung");
  ASSERT_TRUE(page.SetName("Auftrag"));
  EXPECT_EQ(page.NameU(), "Order");
  ASSERT_TRUE(second.SetName("Lager"));
  EXPECT_FALSE(second.SetNameU("Order")) << "the universal name of another page";
  EXPECT_EQ(document.Pages().ItemU("order"), page);
  EXPECT_EQ(document.Pages().Item("Auftrag"), page);

  const Shape a = rectangle(), b = rectangle();
  ASSERT_TRUE(a.SetNameU("Start"));
  EXPECT_EQ(a.Name(), "Start") << "a shape without a name gets both";
  ASSERT_TRUE(a.SetName("Ende"));
  ASSERT_TRUE(a.SetNameU("Start"));
  ASSERT_TRUE(b.SetName("Start"));
  ASSERT_TRUE(b.SetNameU("End"));
  EXPECT_EQ(page.Shapes().Item("start"), b);
  EXPECT_EQ(page.Shapes().ItemU("start"), a);
  user(a, "own", "1");
  user(b, "own", "2");
  EXPECT_EQ(shown(b, "Start!User.own"), "1") << "formulas go by universal names";
  EXPECT_EQ(shown(a, "NAME()&\"/\"&NAME(750)&\"/\"&PAGENAME()&\"/\"&PAGENAME(750)"), "Ende/Start/Auftrag/Order");
  EXPECT_EQ(shown(a, "Pages[Order]!End!User.own"), "2");
}

TEST_F(Names, AreRestoredByUndo) {
  const Shape a = rectangle();
  a.AddNamedRow(visio::sectionProp, "Cost", 0);
  const Row row = a.Section(visio::sectionProp).Row(0);
  const std::string before = dump();
  ASSERT_TRUE(row.SetNameU("Price"));
  EXPECT_EQ(a.Section(visio::sectionProp).Row(0).Name(), "Cost") << "the local name stays";
  EXPECT_EQ(a.Cells("Prop.Cost").Name(), "Prop.Price") << "and leads to the cell";
  EXPECT_FALSE(a.CellsU("Prop.Cost"));
  ASSERT_TRUE(a.Section(visio::sectionProp).Row(0).SetName("Kosten"));
  EXPECT_EQ(a.Section(visio::sectionProp).Row(0).NameU(), "Price");
  EXPECT_TRUE(a.Cells("Prop.Kosten"));
  EXPECT_EQ(a.CellExists("Prop.Kosten", 0), true);
  ASSERT_TRUE(a.SetName("A"));
  ASSERT_TRUE(a.SetNameU("B"));
  ASSERT_TRUE(page.SetNameU("C"));
  for (int step = 0; step < 5; ++step) ASSERT_TRUE(app.Undo()) << step;
  EXPECT_EQ(firstDifference(dump(), before), "");
  EXPECT_EQ(page.NameU(), "Page-1");
  for (int step = 0; step < 5; ++step) ASSERT_TRUE(app.Redo()) << step;
  EXPECT_EQ(a.Name().or_("") + a.NameU().or_("") + page.NameU().or_(""), "ABC");
  EXPECT_EQ(a.Section(visio::sectionProp).Row(0).Name(), "Kosten");
}

TEST_F(Names, WithANumberAreWholeNamesFirst) {
  const Shape first = rectangle(), second = rectangle(), third = rectangle(), reader = rectangle();
  for (const Shape& shape : {first, second, third}) user(shape, "number", std::to_string(*shape.ID()));
  // The third shape's name looks like the second's name and number.
  ASSERT_TRUE(first.SetName("Box"));
  ASSERT_TRUE(second.SetName("Box"));
  ASSERT_TRUE(third.SetName("Box.2"));
  const Cell cell = user(reader, "follows", "Box.2!User.number");
  EXPECT_EQ(cell.ResultStr(0), "3");
  EXPECT_EQ(shown(reader, "Box.1!User.number"), "1") << "a name and the number of its shape";
  EXPECT_EQ(shown(reader, "Box.3!User.number"), "#REF!") << "shape 3 is not called Box";
  EXPECT_EQ(shown(reader, "Box!User.number"), "1");
  third.Cells("User.number").FormulaForce("30");
  EXPECT_EQ(cell.ResultStr(0), "30") << "and the value follows";
  second.Cells("User.number").FormulaForce("20");
  EXPECT_EQ(cell.ResultStr(0), "30");

  // A copy of both refers to the copy; a copy of the reader alone refers to the same shape.
  app.ActiveWindow().DeselectAll();
  for (const Shape& shape : {third, reader}) app.ActiveWindow().Select(shape, visio::select);
  ASSERT_TRUE(app.ActiveWindow().Selection().Copy());
  ASSERT_TRUE(page.Paste());
  const Shape copy = app.ActiveWindow().Selection().Item(2);
  EXPECT_EQ(copy.Cells("User.follows").Formula(),
            "Sheet." + std::to_string(*app.ActiveWindow().Selection().Item(1).ID()) + "!User.number");
  EXPECT_EQ(reader.Duplicate().Cells("User.follows").Formula(), "Box.2!User.number");

  const host::MasterId master = addMaster("Named", [this](host::Sheet& group, host::Sheet& member) {
    member.name = member.universalName = "Box.1";
    set(member, "User.number", "7");
    set(group, "User.follows", "Box.1!User.number", 7);
  });
  const Shape dropped = drop(master);
  const Shape inner = dropped.Shapes().Item(1);
  inner.Cells("User.number").FormulaForce("8");
  EXPECT_EQ(dropped.Cells("User.follows").ResultStr(0), "8") << "the instance's own member";
  EXPECT_EQ(dropped.Cells("User.follows").Formula(), inner.NameID().or_("") + "!User.number");
}

TEST_F(Names, OfRowsAreReachedByNumber) {
  constexpr int control = 9;
  const host::MasterId master = addMaster("Menus", [this](host::Sheet& group, host::Sheet&) {
    set(group, "Actions.Open.Menu", "\"Open\"");
    set(group, "Actions.Close.Menu", "\"Close\"");
    set(group, "Controls.Grip", "1 in");
    set(group, "User.x", "Controls.X1*2", 2);
  });
  const Shape shape = drop(master);
  EXPECT_EQ(shape.Cells("Actions.Menu[1]").ResultStr(0), "Open");
  EXPECT_EQ(shape.Cells("Actions.Menu[2]").Name(), "Actions.close.Menu");
  EXPECT_EQ(shape.CellExists("Actions.D2", 0), true);
  EXPECT_FALSE(shape.Cells("Actions.Menu[3]"));
  ASSERT_TRUE(shape.Cells("Controls.X1").FormulaForce("3 in"));
  EXPECT_EQ(shape.Cells("Controls.Grip").Result(visio::unitsInches), 3);
  EXPECT_EQ(shape.Cells("User.x").Result(visio::unitsInches), 6) << "a formula with the number follows too";

  ASSERT_TRUE(shape.AddRow(visio::sectionAction, visio::rowLast, 0));
  ASSERT_TRUE(shape.Cells("Actions.Menu[3]").FormulaForce("\"New\""));
  const Shape drawn = rectangle();
  ASSERT_TRUE(drawn.AddRow(visio::sectionAction, visio::rowLast, 0));
  ASSERT_TRUE(drawn.AddRow(visio::sectionAction, 0, 0)) << "in front of it";
  ASSERT_TRUE(drawn.Cells("Actions.Menu[1]").FormulaForce("\"first\""));
  EXPECT_EQ(drawn.Cells("Actions.Row_2.Menu").ResultStr(0), "first") << "rows have the names that files give them";
  EXPECT_EQ(drawn.Cells("Actions.Menu[1]").Row(), 0);
  ASSERT_TRUE(drawn.AddRow(control, visio::rowLast, 0));
  EXPECT_EQ(drawn.Cells("Controls.X1").Name(), "Controls.Row_1");
}

/// All places where a user or a script can write a text.
TEST_F(Names, AndTextsThatNoFileCanContainAreRefused) {
  const Shape shape = rectangle();
  user(shape, "a", "1");
  shape.AddNamedRow(visio::sectionProp, "Note", 0);
  const Hyperlink link = shape.AddHyperlink();
  const std::string before = dump();
  for (const std::string& bad : {std::string("bell\x07"), std::string("nul\0l", 5), std::string("\xEF\xBF\xBF"),
                                 std::string("half \xC3"), std::string("\xED\xA0\x80")}) {
    EXPECT_FALSE(shape.Cells("User.a").FormulaForce("\"" + bad + "\""));
    EXPECT_FALSE(shape.Cells("Prop.Note").SetFormula("\"" + bad + "\""));
    EXPECT_FALSE(shape.SetText(bad));
    EXPECT_FALSE(shape.SetName(bad));
    EXPECT_FALSE(shape.SetNameU(bad));
    EXPECT_FALSE(shape.SetData1(bad));
    EXPECT_FALSE(page.SetName(bad));
    EXPECT_FALSE(link.SetAddress(bad));
    EXPECT_FALSE(link.SetDescription(bad));
    EXPECT_FALSE(page.Layers().Add(bad));
    EXPECT_FALSE(shape.EndTextEdit(bad));
  }
  EXPECT_EQ(firstDifference(dump(), before), "");
  ASSERT_FALSE(shape.SetText("bell\x07"));
  EXPECT_EQ(running.refusals().back().reason, "the text has the character U+0007, which no drawing file can hold");
  for (const char* const good : {"tab\tline\nreturn\r", "\xEF\xBF\xBD", "\xF0\x9F\x98\x80", "\xE2\x80\xA8"})
    EXPECT_TRUE(shape.SetText(good)) << good;
}

}  // namespace
}  // namespace quorvel
