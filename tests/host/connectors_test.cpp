// Connectors on a page: glued, with ends that move around their shapes, drawn around obstacles, and undone in one
// step.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "host/connector_master.h"
#include "host/connectors/connector_ends.h"
#include "host/connectors/route_map.h"
#include "host/host_fixture.h"
#include "host/recalc/recalculator.h"
#include "host/store_dump.h"

namespace quorvel {
namespace {

class Connectors : public HostTest {
 protected:
  host::MasterId master = host::addConnectorMaster(engine(), host::DocumentId{document.ref().id});

  Shape box(double x, double y, double width = 1, double height = 1) {
    return page.DrawRectangle(x - width / 2, y - height / 2, x + width / 2, y + height / 2);
  }
  static void move(const Shape& shape, double x, double y) {
    EXPECT_TRUE(shape.Cells("PinX").SetResult(visio::unitsInches, x));
    EXPECT_TRUE(shape.Cells("PinY").SetResult(visio::unitsInches, y));
  }
  Shape glued(const Shape& from, const Shape& to, const char* cell = "PinX") {
    const Shape connector = drop(master);
    EXPECT_TRUE(connector.Cells("BeginX").GlueTo(from.Cells(cell)));
    EXPECT_TRUE(connector.Cells("EndX").GlueTo(to.Cells(cell)));
    return connector;
  }
  host::Polyline lineOf(const Shape& connector) { return host::lineOnPage(engine().store(), sheetOf(connector)); }
  /// "(1,2)(3,2)", to thousandths.
  std::string drawn(const Shape& connector) {
    std::string text;
    const auto rounded = [](double number) {
      std::string digits = std::to_string(std::round(number * 1000) / 1000 + 0.0);
      digits.erase(digits.find_last_not_of('0') + 1);
      if (digits.back() == '.') digits.pop_back();
      return digits == "-0" ? std::string("0") : digits;
    };
    for (const host::Point& spot : lineOf(connector)) text += "(" + rounded(spot.x) + "," + rounded(spot.y) + ")";
    return text;
  }
  bool runsThrough(const Shape& connector, const Shape& shape) {
    return host::crosses(lineOf(connector), host::boxOnPage(engine().store(), sheetOf(shape)));
  }
  std::string dump() { return StoreDump::of(engine().store(), host::DocumentId{document.ref().id}); }
  std::vector<host::Connect> connects() { return engine().store().page(host::PageId{page.ref().id})->connects; }
  static double inches(const Shape& shape, const char* cell) {
    return shape.Cells(cell).Result(visio::unitsInches).or_(NAN);
  }
};

TEST_F(Connectors, AnEndMovesToTheBestSide) {
  const Shape from = box(2, 2), to = box(6, 2), connector = glued(from, to);
  EXPECT_EQ(connector.Cells("BeginX").Formula(), "_WALKGLUE(BegTrigger,EndTrigger,WalkPreference)");
  EXPECT_EQ(connector.Cells("EndTrigger").Formula(), "_XFTRIGGER(" + at(to, "EventXFMod") + ")");
  EXPECT_EQ(drawn(connector), "(2.5,2)(5.5,2)");
  const struct {
    double x, y;
    const char* line;
  } moves[] = {
      {6, 6, "(2.5,2)(6,2)(6,5.5)"},
      {2, 6, "(2,2.5)(2,5.5)"},
      {-2, 2, "(1.5,2)(-1.5,2)"},
      {2, -3, "(2,1.5)(2,-2.5)"},
      {4, 2.5, "(2.5,2)(3,2)(3,2.5)(3.5,2.5)"},
      {6, 2, "(2.5,2)(5.5,2)"},
  };
  for (const auto& each : moves) {
    const int scope = app.BeginUndoScope("move").or_(0);
    move(to, each.x, each.y);
    ASSERT_TRUE(app.EndUndoScope(scope, true));
    EXPECT_EQ(drawn(connector), each.line);
    EXPECT_NEAR(inches(connector, "Width"), inches(connector, "EndX") - inches(connector, "BeginX"), 1e-9);
    const host::Point middle = host::midpointOf(lineOf(connector));
    const auto text = host::toPageMatrix(
        engine().store(), sheetOf(connector))({inches(connector, "TxtPinX"), inches(connector, "TxtPinY")});
    EXPECT_NEAR(text.x, middle.x, 1e-9) << "the text stays on the line";
    EXPECT_NEAR(text.y, middle.y, 1e-9);
  }
  // Ends are on the sides of rotated and resized shapes too.
  ASSERT_TRUE(to.Cells("Angle").SetFormula("90 deg"));
  ASSERT_TRUE(to.Cells("Height").SetFormula("3 in"));
  EXPECT_EQ(drawn(connector), "(2.5,2)(4.5,2)");
}

TEST_F(Connectors, AShapeInTheWayIsGoneAround) {
  const Shape from = box(2, 2), to = box(8, 2), connector = glued(from, to);
  const Shape other = box(5, 6, 1, 2);
  EXPECT_EQ(drawn(connector), "(2.5,2)(7.5,2)");
  move(other, 5, 2);
  EXPECT_FALSE(runsThrough(connector, other)) << drawn(connector);
  const std::string around = drawn(connector);
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(drawn(connector), "(2.5,2)(7.5,2)");
  ASSERT_TRUE(app.Redo());
  EXPECT_EQ(drawn(connector), around);
  move(other, 5, 7);
  EXPECT_EQ(drawn(connector), "(2.5,2)(7.5,2)") << "the direct line is free again";

  // So is one that is redrawn, dropped or rotated into the way, until it is deleted.
  const Shape drawnOver = box(4, 2);
  EXPECT_FALSE(runsThrough(connector, drawnOver)) << drawn(connector);
  ASSERT_TRUE(drawnOver.Delete());
  EXPECT_EQ(drawn(connector), "(2.5,2)(7.5,2)");
  const Shape beam = box(5, 3.2, 0.5, 2);
  EXPECT_EQ(drawn(connector), "(2.5,2)(7.5,2)");
  ASSERT_TRUE(beam.Cells("Height").SetFormula("3 in"));
  EXPECT_FALSE(runsThrough(connector, beam)) << drawn(connector);
}

TEST_F(Connectors, OtherShapesAreNoObstacles) {
  const Shape from = box(2, 2), to = box(8, 2), connector = glued(from, to);
  const std::string straight = drawn(connector);
  // A lane with shapes of its own, a shape that is marked as no obstacle, and one that lets horizontal lines through.
  box(5, 2, 3, 3);
  for (const double x : {4.2, 5.5}) box(x, 1.2, 0.4, 0.4);
  EXPECT_NE(drawn(connector), straight) << "an empty lane looks like any shape";
  move(to, 8, 3);
  move(to, 8, 2);
  EXPECT_EQ(drawn(connector), straight);
  const Shape aside = page.DrawRectangle(20, 20, 21, 21), open = page.DrawRectangle(20, 20, 21, 21);
  ASSERT_TRUE(aside.Cells("ObjType").SetFormula("4"));
  ASSERT_TRUE(open.Cells("ShapePermeableX").SetFormula("TRUE"));
  move(aside, 3.2, 2);
  move(open, 7, 2);
  EXPECT_EQ(drawn(connector), straight);
}

TEST_F(Connectors, FixedCodesDecideWhatMayBeRedrawn) {
  const Shape from = box(2, 2), to = box(8, 4);
  const Shape never = glued(from, to), asNeeded = glued(from, to);
  ASSERT_TRUE(never.Cells("ConFixedCode").SetFormula("2"));
  ASSERT_TRUE(asNeeded.Cells("ConFixedCode").SetFormula("1"));
  // A user bends the line by hand.
  ASSERT_TRUE(never.CellsSRC(10, 2, 0).SetResult(visio::unitsInches, 1.5));
  const std::string before = drawn(never), other = drawn(asNeeded);
  const Shape block = box(5, 2);
  EXPECT_EQ(drawn(never), before);
  EXPECT_EQ(drawn(asNeeded), other);
  move(to, 8, 6);
  const host::Polyline stretched = lineOf(never);
  EXPECT_EQ(stretched.size(), 3u);
  EXPECT_NEAR(stretched.front().x, inches(never, "BeginX"), 1e-9);
  EXPECT_NEAR(stretched.back().x, inches(never, "EndX"), 1e-9);
  EXPECT_NEAR(stretched.back().y, inches(never, "EndY"), 1e-9);
  EXPECT_FALSE(runsThrough(asNeeded, block)) << "once its end moves it is redrawn: " << drawn(asNeeded);
  ASSERT_TRUE(page.PageSheet().Cells("DynamicsOff").SetFormula("TRUE"));
  const std::string off = drawn(asNeeded);
  move(box(20, 20), 6, 2);
  EXPECT_EQ(drawn(asNeeded), off);
}

TEST_F(Connectors, StylesGiveTheFirstLeg) {
  const Shape from = box(2, 8), to = box(6, 2), beside = box(8, 8);
  const Shape down = glued(from, to), across = glued(from, beside);
  const struct {
    int style;
    const char *toBelow, *toBeside;
  } cases[] = {
      {1, "(2,7.5)(2,2)(5.5,2)", "(2.5,8)(7.5,8)"},
      {2, "(2,7.5)(6,2.5)", "(2.5,8)(7.5,8)"},
      {7, "(2,7.5)(2,5)(6,5)(6,2.5)", "(2.5,8)(7.5,8)"},
      {8, "(2.5,8)(4,8)(4,2)(5.5,2)", "(2.5,8)(7.5,8)"},
      {21, "(2.5,8)(6,8)(6,2.5)", nullptr},
      {22, "(2,7.5)(2,2)(5.5,2)", nullptr},
  };
  for (const auto& each : cases) {
    ASSERT_TRUE(page.PageSheet().Cells("RouteStyle").SetResult(0, each.style));
    move(from, 2, 9);
    move(from, 2, 8);
    EXPECT_EQ(drawn(down), each.toBelow) << each.style;
    if (each.toBeside) {
      EXPECT_EQ(drawn(across), each.toBeside) << each.style;
    }
  }
  ASSERT_TRUE(down.Cells("ShapeRouteStyle").SetResult(0, 16.0));
  move(to, 5, 5);
  const host::Polyline centre = lineOf(down);
  ASSERT_EQ(centre.size(), 2u);
  EXPECT_NEAR(centre[0].x - 2, 8 - centre[0].y, 1e-9) << "aims at the middle: " << drawn(down);
}

TEST_F(Connectors, PointsStayGluedAndTheLineLeavesByTheirSide) {
  const Shape from = box(2, 2, 2, 1), to = box(8, 2);
  for (const Shape& shape : {from, to}) {
    const int row = shape.AddRow(7, visio::rowLast, 0).or_(-1);
    ASSERT_GE(row, 0);
    ASSERT_TRUE(shape.CellsSRC(7, row, 0).SetFormula("Width*0.5"));
    ASSERT_TRUE(shape.CellsSRC(7, row, 1).SetFormula("Height*1"));
  }
  const Shape connector = glued(from, to, "Connections.X1");
  EXPECT_EQ(connector.Cells("BeginX").Formula(),
            "PAR(PNT(" + at(from, "Connections.X1") + "," + at(from, "Connections.Y1") + "))");
  EXPECT_EQ(drawn(connector), "(2,2.5)(2,2.625)(8,2.625)(8,2.5)");
  ASSERT_TRUE(from.Cells("Angle").SetFormula("180 deg"));
  EXPECT_EQ(lineOf(connector).front(), (host::Point{2, 1.5})) << drawn(connector);
  EXPECT_LT(lineOf(connector)[1].y, 1.5) << drawn(connector);
  ASSERT_EQ(connects().size(), 2u);
  EXPECT_EQ(connects()[0].toCell, "Connections.X1");
  EXPECT_EQ(connects()[0].toPart, 100);
}

TEST_F(Connectors, AnEndThatIsWrittenIsFree) {
  const Shape from = box(2, 2), to = box(8, 2), connector = glued(from, to);
  ASSERT_EQ(connects().size(), 2u);
  EXPECT_EQ(connects()[1].toCell, "PinX");
  const std::string before = dump();
  ASSERT_TRUE(connector.Cells("EndX").SetResult(visio::unitsInches, 5.0));
  ASSERT_EQ(connects().size(), 1u);
  EXPECT_EQ(connects()[0].fromCell, "BeginX");
  EXPECT_EQ(connector.Cells("EndY").Formula(), "2 in.");
  EXPECT_EQ(drawn(connector), "(2.5,2)(5,2)");
  move(to, 8, 9);
  EXPECT_EQ(drawn(connector), "(2.5,2)(5,2)");
  for (int i = 0; i < 2; ++i) ASSERT_TRUE(app.Undo());
  EXPECT_EQ(firstDifference(before, dump()), "");

  // A formula that glues is glue, written by a user or by code.
  const Shape line = page.DrawLine(0, 0, 1, 1);
  ASSERT_TRUE(line.Cells("EndX").SetFormula("PAR(PNT(" + at(to, "LocPinX") + "," + at(to, "LocPinY") + "))"));
  ASSERT_EQ(connects().size(), 3u);
  EXPECT_EQ(connects()[2].toShape, to.ID());
  ASSERT_TRUE(to.Delete());
  EXPECT_EQ(connects().size(), 1u);
  EXPECT_EQ(connector.Cells("EndX").Formula(), "7.5 in.");
  EXPECT_FALSE(host::endOf(engine().store(), sheetOf(connector), false).glued);
  ASSERT_TRUE(app.Undo());
  move(to, 8, 5);
  EXPECT_EQ(inches(connector, "EndX"), 8.0) << "glued again, it moves again";
}

TEST_F(Connectors, EndsOfPlainLinesMoveByTheirPreference) {
  const Shape from = box(2, 2), to = box(6, 6), line = page.DrawLine(0, 0, 1, 1);
  ASSERT_TRUE(line.Cells("GlueType").SetFormula("2"));
  ASSERT_TRUE(line.Cells("BeginX").GlueTo(from.Cells("PinX")));
  ASSERT_TRUE(line.Cells("EndX").GlueTo(to.Cells("PinY")));
  const struct {
    int preference;
    double x, y;
    const char* ends;
  } cases[] = {{0, 6, 6, "(2.5,2)(5.5,6)"},   {1, 6, 6, "(2,2.5)(5.5,6)"},     {2, 6, 6, "(2.5,2)(6,5.5)"},
               {3, -2, 6, "(2,2.5)(-2,5.5)"}, {0, 2.2, 6, "(2,2.5)(2.2,5.5)"}, {3, 9, 2.2, "(2.5,2)(8.5,2.2)"}};
  for (const auto& each : cases) {
    ASSERT_TRUE(line.Cells("WalkPreference").SetResult(0, each.preference));
    move(to, each.x, each.y);
    EXPECT_EQ(drawn(line), each.ends) << each.preference;
  }
  // Shapes that forbid it are glued to at their point nearest to the other end.
  const Shape fixed = box(2, -4);
  ASSERT_TRUE(fixed.Cells("GlueType").SetFormula("8"));
  ASSERT_TRUE(line.Cells("BeginX").GlueTo(fixed.Cells("PinX")));
  EXPECT_EQ(line.Cells("BeginX").Formula().or_({}).substr(0, 3), "PAR");
}

TEST_F(Connectors, SheetsThatAreNoShapesHaveNoEnds) {
  const std::string glue = "PAR(PNT(" + at(box(2, 2), "PinX") + ",1))";
  for (const Shape& sheet : {document.DocumentSheet(), page.PageSheet()}) {
    sheet.Cells("BeginX").FormulaForce(glue);
    sheet.Cells("BeginX").FormulaForce("1 in");
  }
  EXPECT_TRUE(connects().empty());
}

TEST_F(Connectors, EventsAndStepsAreThoseOfTheCause) {
  const Shape from = box(2, 2), to = box(8, 2), connector = glued(from, to);
  const host::DocumentId id{document.ref().id};
  const std::size_t steps = engine().undo().undoCount(id);
  const std::string before = dump();
  Recorder recorder(running);
  int seenWhole = 0;
  recorder.onCellChanged = [&](Cell cell) {
    if (!(cell.Name() == "EndX")) return;
    // At the event of the end the line is already redrawn.
    const host::Polyline line = lineOf(connector);
    seenWhole += std::fabs(line.back().x - inches(connector, "EndX")) < 1e-9;
  };
  ASSERT_TRUE(to.Cells("PinY").SetResult(visio::unitsInches, 6.0));
  EXPECT_EQ(engine().undo().undoCount(id), steps + 1);
  const std::vector<std::string> recorded = recorder.take();
  const std::string name = connector.NameID().or_("");
  for (const char* cell : {"EndX", "EndY", "Height", "PinX", "Geometry1.X2", "Controls.TextPosition"}) {
    const std::string event = "CellChanged " + name + " " + cell;
    EXPECT_EQ(std::count(recorded.begin(), recorded.end(), event), 1) << event;
  }
  EXPECT_EQ(seenWhole, 1);
  const std::string after = dump();
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(firstDifference(before, dump()), "");
  ASSERT_TRUE(app.Redo());
  EXPECT_EQ(firstDifference(after, dump()), "");

  // When a handler moves a shape onto the new line, the line is redrawn in the same step.
  const Shape other = box(2, 12);
  recorder.onCellChanged = [&, done = false](Cell cell) mutable {
    if (done || !(cell.Shape().NameID() == to.NameID())) return;
    done = true;
    other.Cells("PinY").SetResult(visio::unitsInches, 4.0);
  };
  const std::string untouched = dump();
  ASSERT_TRUE(to.Cells("PinX").SetResult(visio::unitsInches, 2.0));
  EXPECT_FALSE(runsThrough(connector, other)) << drawn(connector);
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(firstDifference(untouched, dump()), "");
}

TEST_F(Connectors, CopiesAndWholeMovesKeepTheirLines) {
  const Shape from = box(2, 2), to = box(8, 2), connector = glued(from, to);
  ASSERT_TRUE(connector.Cells("ConFixedCode").SetFormula("1"));
  ASSERT_TRUE(connector.CellsSRC(10, 2, 0).SetResult(visio::unitsInches, 4.5));  // drawn short by a user
  const Shape copy = connector.Duplicate();
  EXPECT_EQ(lineOf(copy).size(), 2u);
  EXPECT_NEAR(host::lengthOf(lineOf(copy)), host::lengthOf(lineOf(connector)), 1e-9);
  const Shape loose = drop(master, 5, 5);
  const host::Polyline before = lineOf(loose);
  const int scope = app.BeginUndoScope("move").or_(0);
  for (const char* cell : {"BeginX", "EndX"}) loose.Cells(cell).SetResult(visio::unitsInches, inches(loose, cell) + 3);
  ASSERT_TRUE(app.EndUndoScope(scope, true));
  EXPECT_EQ(lineOf(loose).size(), before.size());
}

TEST_F(Connectors, OneInAGroupFollowsItsMembers) {
  const Shape from = box(2, 2), to = box(6, 2), connector = glued(from, to);
  app.ActiveWindow().DeselectAll();
  for (const Shape& shape : {from, to, connector}) app.ActiveWindow().Select(shape, visio::select);
  const Shape group = app.ActiveWindow().Selection().Group();
  EXPECT_EQ(drawn(connector), "(2.5,2)(5.5,2)");
  const std::string before = dump();
  ASSERT_TRUE(to.Cells("PinX").SetResult(visio::unitsInches, inches(from, "PinX")));
  ASSERT_TRUE(to.Cells("PinY").SetResult(visio::unitsInches, inches(from, "PinY") + 3));
  EXPECT_EQ(drawn(connector), "(2,2.5)(2,4.5)");
  move(group, 10, 2);
  EXPECT_EQ(drawn(connector), "(8,2.5)(8,4.5)") << "it came with its group";
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(app.Undo());
  EXPECT_EQ(firstDifference(before, dump()), "");
}

TEST_F(Connectors, ACopyMadeInADeletionTakesOverTheGlue) {
  const Shape from = box(2, 2), to = box(8, 2), plain = page.DrawLine(0, 0, 1, 1);
  const Shape group = app.ActiveWindow().Select(from, visio::select) ? app.ActiveWindow().Selection().Group() : Shape();
  const Shape walking = glued(group, to), toMember = glued(from, to);
  ASSERT_TRUE(plain.Cells("EndX").GlueTo(group.Cells("PinX")));
  const Cell reader = [&] {
    plain.AddNamedRow(visio::sectionUser, "reads", 0);
    plain.Cells("User.reads").SetFormula(group.NameID().or_("") + "!Width");
    return plain.Cells("User.reads");
  }();
  const std::string before = dump();
  Recorder recorder(running);
  Shape copies[2];
  recorder.onBeforeShapeDelete = [&](const Shape& going) {
    for (Shape& copy : copies) copy = going.Duplicate();
  };
  ASSERT_TRUE(group.Delete());
  const Shape copy = copies[1], member = copy.Shapes().Item(1);
  EXPECT_EQ(walking.Cells("BegTrigger").Formula(), "_XFTRIGGER(" + *copy.NameID() + "!EventXFMod)");
  EXPECT_EQ(walking.Connects().Item(1).ToSheet(), copy);
  EXPECT_EQ(toMember.Cells("BegTrigger").Formula(), "_XFTRIGGER(" + *member.NameID() + "!EventXFMod)");
  EXPECT_EQ(copy.FromConnects().Count(), 2);
  EXPECT_EQ(member.FromConnects().Count(), 1);
  EXPECT_EQ(inches(plain, "EndX"), inches(copy, "PinX"));
  EXPECT_EQ(reader.Formula(), "REF()") << "only glue moves";
  recorder.onBeforeShapeDelete = nullptr;
  move(copy, 2, 6);
  EXPECT_EQ(inches(plain, "EndY"), 6);
  EXPECT_NEAR(inches(walking, "BeginY"), 6, 0.6);
  EXPECT_NEAR(inches(toMember, "BeginY"), 6, 0.6);
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(app.Undo());
  EXPECT_EQ(firstDifference(before, dump()), "");

  // A copy that is gone again takes nothing over.
  recorder.onBeforeShapeDelete = [&](const Shape& going) {
    if (!(going == group)) return;
    copies[0] = going.Duplicate();
    going.Duplicate().Delete();
  };
  ASSERT_TRUE(group.Delete());
  EXPECT_EQ(walking.Connects().Item(1).ToSheet(), copies[0]);
}

/// Random drawings: after every change no line runs through a shape that it can avoid, and all is undone.
TEST_F(Connectors, StayCorrectAfterRandomEdits) {
  std::srand(11);
  const auto below = [](int limit) { return std::rand() % limit; };
  std::vector<Shape> boxes;
  for (int i = 0; i < 12; ++i) boxes.push_back(box(2 + 3 * (i % 4), 2 + 3 * (i / 4), 1, 1));
  std::vector<Shape> lines;
  for (int i = 0; i < 14; ++i) {
    const int from = below(12);
    lines.push_back(glued(boxes[std::size_t(from)], boxes[std::size_t((from + 1 + below(11)) % 12)]));
  }
  const std::string start = dump();
  const host::DocumentId id{document.ref().id};
  const std::size_t steps = engine().undo().undoCount(id);
  for (int step = 0; step < 120; ++step) {
    const Shape shape = boxes[std::size_t(below(12))];
    // Places at distances that leave space between the shapes.
    const double x = 2 + 1.5 * below(10), y = 2 + 1.5 * below(8);
    const bool taken = std::any_of(boxes.begin(), boxes.end(), [&](const Shape& other) {
      return !(other.NameID() == shape.NameID()) && std::fabs(inches(other, "PinX") - x) < 1.4 &&
             std::fabs(inches(other, "PinY") - y) < 1.4;
    });
    if (taken) continue;
    const int scope = app.BeginUndoScope("move").or_(0);
    move(shape, x, y);
    ASSERT_TRUE(app.EndUndoScope(scope, true));
    for (const Shape& line : lines) {
      for (const Shape& other : boxes) EXPECT_FALSE(runsThrough(line, other)) << step << " " << drawn(line);
      const host::Polyline points = lineOf(line);
      EXPECT_NEAR(points.front().x, inches(line, "BeginX"), 1e-9);
      EXPECT_NEAR(points.back().y, inches(line, "EndY"), 1e-9);
    }
    if (HasFailure()) return;
  }
  const std::string end = dump();
  std::size_t undone = 0;
  while (engine().undo().undoCount(id) > steps && app.Undo()) ++undone;
  EXPECT_EQ(firstDifference(start, dump()), "");
  for (; undone > 0; --undone) ASSERT_TRUE(app.Redo());
  EXPECT_EQ(firstDifference(end, dump()), "");
}

}  // namespace
}  // namespace quorvel
