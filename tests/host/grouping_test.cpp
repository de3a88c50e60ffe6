// Grouping and ungrouping: shapes keep their place, grow with their group, stay glued, and all is undone in one
// step.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "host/connectors/connector_ends.h"
#include "host/host_fixture.h"
#include "host/sheet/transform.h"
#include "host/store_dump.h"

namespace quorvel {
namespace {

class Grouping : public HostTest {
 protected:
  Recorder recorder{running};

  Shape box(double left, double bottom, double width, double height) {
    return page.DrawRectangle(left, bottom, left + width, bottom + height);
  }
  static void write(const Shape& shape, std::initializer_list<std::pair<const char*, const char*>> cells) {
    for (const auto& [cell, formula] : cells) EXPECT_TRUE(shape.Cells(cell).FormulaForce(formula)) << cell;
  }
  Shape group(const std::vector<Shape>& shapes) {
    const Window window = app.ActiveWindow();
    window.DeselectAll();
    for (const Shape& shape : shapes) window.Select(shape, visio::select);
    return window.Selection().Group();
  }
  /// The corners of the shape's own box and where its members' are, on the page, to millionths of an inch.
  std::string seen(const Shape& shape) {
    const host::Store& store = engine().store();
    std::string text;
    for (const host::SheetId each : store.subtree(sheetOf(shape))) {
      const host::Matrix matrix = host::toPageMatrix(store, each);
      const double width = host::cellNumber(store, each, host::objectCell("Width"));
      const double height = host::cellNumber(store, each, host::objectCell("Height"));
      text += std::to_string(store.sheet(each)->shapeId) + ":";
      for (const auto& [x, y] : {std::pair(0.0, 0.0), {width, 0.0}, {width, height}}) {
        const auto at = matrix({x, y});
        text += " " + std::to_string(std::round(at.x * 1e6) / 1e6 + 0.0) + "," +
                std::to_string(std::round(at.y * 1e6) / 1e6 + 0.0);
      }
      text += "\n";
    }
    return text;
  }
  std::string seen(const std::vector<Shape>& shapes) {
    std::string text;
    for (const Shape& shape : shapes) text += seen(shape);
    return text;
  }
  static double inches(const Shape& shape, const char* cell) {
    return shape.Cells(cell).Result(visio::unitsInches).or_(NAN);
  }
  std::string dump() { return StoreDump::of(engine().store(), host::DocumentId{document.ref().id}); }
  std::string stack(const Shapes& shapes) {
    std::string text;
    for (const Shape& shape : shapes.all()) text += (text.empty() ? "" : " ") + std::to_string(shape.ID().or_(0));
    return text;
  }

  /// Rotated, flipped, guarded, locked, lines, a group: all kinds whose place is difficult to keep.
  std::vector<Shape> allKinds() {
    const Shape plain = box(1, 1, 2, 1), turned = box(4, 1, 2, 1), upright = box(2, 4, 1, 2), flipped = box(5, 4, 2, 1);
    write(turned, {{"Angle", "30 deg"}, {"LocPinX", "0 in"}});
    write(upright, {{"Angle", "-90 deg"}, {"FlipX", "TRUE"}, {"LocPinY", "Height*0.25"}});
    write(flipped, {{"FlipY", "TRUE"}, {"LocPinY", "0.125 in"}, {"Angle", "10 deg"}});
    const Shape guarded = box(8, 1, 1, 1), computed = box(8, 4, 1, 1), locked = box(8, 6, 1, 1);
    write(guarded, {{"PinX", "GUARD(8.5 in)"}, {"PinY", "GUARD(PinX-7 in)"}, {"Width", "GUARD(1 in)"}});
    write(computed, {{"PinX", "User.x+1 in"}, {"Height", "Width*0.5"}});
    user(computed, "x", "7.5 in");
    write(locked, {{"LockWidth", "1"}, {"LockMoveX", "1"}, {"ResizeMode", "1"}});
    const Shape line = page.DrawLine(1, 7, 3, 9), outer = box(10, 1, 3, 3);
    write(line, {{"FlipY", "TRUE"}});
    const Shape inner = outer.DrawRectangle(0.5, 0.5, 1, 2);
    write(inner, {{"Angle", "45 deg"}, {"PinX", (outer.NameID().or_("") + "!Width*0.25").c_str()}});
    write(outer, {{"Angle", "20 deg"}, {"FlipX", "TRUE"}});
    return {plain, turned, upright, flipped, guarded, computed, locked, line, outer};
  }
};

TEST_F(Grouping, EverythingStaysWhereItIs) {
  const std::vector<Shape> shapes = allKinds();
  const std::string before = seen(shapes), start = dump();
  const Shape made = group(shapes);
  ASSERT_TRUE(made);
  EXPECT_EQ(seen(shapes), before);
  EXPECT_EQ(stack(page.Shapes()), made.NameID().or_("").substr(6));
  EXPECT_TRUE(app.ActiveWindow().Selection().Item(1) == made);
  const std::string grouped = dump();
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(firstDifference(start, dump()), "");
  ASSERT_TRUE(app.Redo());
  EXPECT_EQ(firstDifference(grouped, dump()), "");

  // Ungrouped from a rotated and flipped group, they are rotated and flipped.
  app.ActiveWindow().Select(made, visio::select);
  write(made, {{"PinX", "20 in"}, {"Angle", "75 deg"}, {"FlipX", "TRUE"}});
  const std::string turned = seen(shapes);
  EXPECT_NE(turned, before);
  ASSERT_TRUE(made.Ungroup());
  EXPECT_EQ(seen(shapes), turned);
  EXPECT_FALSE(made.ID()) << "the group is deleted";
  EXPECT_EQ(app.ActiveWindow().Selection().Count(), static_cast<int>(shapes.size()));
  for (const Shape& shape : shapes) {
    for (const char* cell : {"PinX", "PinY", "Width", "Height", "LocPinX", "BeginX", "EndY"}) {
      const std::string formula = shape.CellExists(cell, 1) == true ? shape.Cells(cell).Formula().or_("") : "";
      EXPECT_EQ(formula.find("Sheet."), std::string::npos) << formula;
      EXPECT_EQ(formula.find("REF()"), std::string::npos) << formula;
    }
  }
  const std::string ungrouped = dump();
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(seen(shapes), turned);
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(app.Undo());
  EXPECT_EQ(firstDifference(grouped, dump()), "");
  for (int i = 0; i < 4; ++i) ASSERT_TRUE(app.Redo());
  EXPECT_EQ(firstDifference(ungrouped, dump()), "");
}

TEST_F(Grouping, MembersGrowWithTheirGroup) {
  const Shape plain = box(1, 1, 2, 1), upright = box(4, 1, 1, 2), guarded = box(1, 3, 1, 1), locked = box(3, 3, 1, 1),
              moved = box(4, 4, 1, 1), own = box(2, 2, 0.5, 0.5), line = page.DrawLine(1, 1, 5, 5);
  write(upright, {{"Angle", "90 deg"}});
  write(guarded, {{"Width", "GUARD(1 in)"}});
  write(locked, {{"LockHeight", "1"}});
  write(moved, {{"ResizeMode", "1"}});
  write(own, {{"Height", "Width*1"}});
  const Shape made = group({plain, upright, guarded, locked, moved, own, line});
  ASSERT_TRUE(made);
  const struct {
    const char* cell;
    double value;
  } boxCells[] = {{"PinX", 3.25}, {"PinY", 3}, {"Width", 4.5}, {"Height", 4}, {"LocPinX", 2.25}, {"Angle", 0}};
  for (const auto& each : boxCells) EXPECT_NEAR(inches(made, each.cell), each.value, 1e-9) << each.cell;
  const std::string name = made.NameID().or_("");
  EXPECT_EQ(plain.Cells("PinY").Formula(), name + "!Height*0.125");
  EXPECT_EQ(plain.Cells("Height").Formula(), name + "!Height*0.25");
  EXPECT_EQ(plain.Cells("LocPinX").Formula(), "Width*0.5");
  EXPECT_EQ(upright.Cells("Height").Formula(), name + "!Width*0.4444444444444444") << "it is rotated";
  EXPECT_EQ(line.Cells("BeginX").Formula(), name + "!Width*0");
  EXPECT_EQ(line.Cells("PinX").Formula(), "(BeginX+EndX)/2");

  write(made, {{"Width", "9 in"}, {"Height", "12 in"}});
  const struct {
    const Shape& shape;
    double x, y, width, height;
  } grown[] = {{plain, 2, 1.5, 4, 3},  {upright, 7, 3, 3, 4},  {guarded, 1, 7.5, 1, 3},
               {locked, 5, 7.5, 2, 1}, {moved, 7, 10.5, 1, 1}, {own, 2.5, 3.75, 1, 1}};
  for (const auto& each : grown) {
    EXPECT_NEAR(inches(each.shape, "PinX"), each.x, 1e-9) << each.shape.NameID().or_("");
    EXPECT_NEAR(inches(each.shape, "PinY"), each.y, 1e-9) << each.shape.NameID().or_("");
    EXPECT_NEAR(inches(each.shape, "Width"), each.width, 1e-9) << each.shape.NameID().or_("");
    EXPECT_NEAR(inches(each.shape, "Height"), each.height, 1e-9) << each.shape.NameID().or_("");
  }
  EXPECT_NEAR(inches(line, "EndX"), 8, 1e-9);
  EXPECT_NEAR(inches(line, "EndY"), 12, 1e-9);

  // After a group inside another one is ungrouped, its members grow with the outer group.
  const Shape outer = group({made});
  const std::string before = seen({plain, upright, line});
  ASSERT_TRUE(made.Ungroup());
  EXPECT_EQ(seen({plain, upright, line}), before);
  EXPECT_EQ(plain.Cells("Width").Formula().or_("").substr(0, 8), outer.NameID().or_("").substr(0, 7) + "!");
  write(outer, {{"Width", "18 in"}});
  EXPECT_NEAR(inches(plain, "Width"), 8, 1e-9);
}

TEST_F(Grouping, TheStackKeepsItsOrder) {
  const Shape a = box(0, 0, 1, 1), b = box(1, 0, 1, 1), c = box(2, 0, 1, 1), d = box(3, 0, 1, 1), e = box(4, 0, 1, 1);
  const Shape made = group({d, b});
  EXPECT_EQ(stack(page.Shapes()), "1 3 6 5") << "the group has the place of the topmost";
  EXPECT_EQ(stack(made.Shapes()), "2 4");
  const Shape pair = group({made, a});
  EXPECT_EQ(stack(page.Shapes()), "3 7 5");
  EXPECT_EQ(stack(pair.Shapes()), "1 6");
  // Members alone are grouped inside their group.
  const Shape inside = group({b, d});
  EXPECT_EQ(stack(made.Shapes()), inside.NameID().or_("").substr(6));
  EXPECT_TRUE(inside.Parent() == made);
  ASSERT_TRUE(inside.Ungroup());
  EXPECT_EQ(stack(made.Shapes()), "2 4");
  app.ActiveWindow().DeselectAll();
  for (const Shape& each : {pair, c, e}) app.ActiveWindow().Select(each, visio::select);
  ASSERT_TRUE(app.ActiveWindow().Selection().Ungroup()) << "what is no group is not changed";
  EXPECT_EQ(stack(page.Shapes()), "3 1 6 5");
  EXPECT_EQ(app.ActiveWindow().Selection().Count(), 4);
}

TEST_F(Grouping, MembersAreBroughtToTheFrontOfTheirGroup) {
  const Shape made = group({box(0, 0, 1, 1), box(1, 0, 1, 1), box(2, 0, 1, 1)});
  box(3, 0, 1, 1);
  ASSERT_TRUE(made.Shapes().Item(1).BringToFront());
  EXPECT_EQ(stack(made.Shapes()), "2 3 1");
  ASSERT_TRUE(made.Shapes().Item(1).BringForward());
  EXPECT_EQ(stack(made.Shapes()), "3 2 1");
  EXPECT_EQ(stack(page.Shapes()), "4 5");
  ASSERT_TRUE(app.Undo() && app.Undo());
  EXPECT_EQ(stack(made.Shapes()), "1 2 3");
}

TEST_F(Grouping, WhatMayNotBeGroupedIsRefusedAndChangesNothing) {
  const Shape a = box(0, 0, 1, 1), b = box(2, 0, 1, 1), c = box(4, 0, 1, 1), held = box(6, 0, 1, 1);
  const Shape made = group({a, b}), other = group({c, box(8, 0, 1, 1)});
  const Layer layer = page.Layers().Add("fixed"), loose = page.Layers().Add("loose");
  ASSERT_TRUE(layer.Add(held, 1));
  constexpr int lockColumn = 7;
  ASSERT_TRUE(layer.CellsC(lockColumn).SetResult(0, 1.0));
  const Window window = app.ActiveWindow();
  const auto refused = [&](const char* why, const std::vector<Shape>& shapes) {
    window.DeselectAll();
    for (const Shape& shape : shapes) window.Select(shape, visio::select);
    const std::string before = StoreDump::of(running);
    EXPECT_FALSE(window.Selection().Group()) << why;
    EXPECT_EQ(running.refusals().back().reason, why);
    EXPECT_EQ(firstDifference(before, StoreDump::of(running)), "") << why;
  };
  refused("nothing is selected", {});
  refused("the shapes are in different groups", {a, c});
  refused("the shapes are in different groups", {a, held});
  refused("the shape is on a locked layer", {held, made});
  ASSERT_TRUE(loose.Add(held, 1));
  EXPECT_TRUE(group({held})) << "one of its layers is not locked";
  write(made, {{"LockGroup", "1"}});
  refused("the shape is a member of a locked group", {a, b});
  EXPECT_FALSE(made.Ungroup());
  EXPECT_EQ(running.refusals().back().reason, "the group is locked");
  EXPECT_FALSE(held.Ungroup());
  EXPECT_EQ(running.refusals().back().reason, "only groups can be ungrouped");
  ASSERT_TRUE(held.Group());
  EXPECT_FALSE(held.Group());
  EXPECT_FALSE(held.Ungroup());
  EXPECT_EQ(running.refusals().back().reason, "the group has no members");
  write(other, {{"LockSelect", "1"}});
  ASSERT_TRUE(document.SetProtection("", visio::protectShapes));
  refused("the shape is locked against selecting", {other, made});
  EXPECT_FALSE(other.Ungroup());
}

TEST_F(Grouping, GroupsNestOnlyAsDeepAsFilesAllow) {
  Shape outermost = box(0, 0, 1, 1);
  int deep = 0;
  while (const Shape made = group({outermost})) {
    outermost = made;
    ASSERT_LT(++deep, 100);
  }
  EXPECT_EQ(deep, 50);
  EXPECT_EQ(running.refusals().back().reason, "groups are nested too deeply");
}

TEST_F(Grouping, RaisesEventsForNewAndDeletedShapes) {
  const Shape a = box(0, 0, 1, 1), b = box(2, 0, 1, 1);
  app.ActiveWindow().Select(a, visio::select);
  app.ActiveWindow().Select(b, visio::select);
  recorder.take();
  const Shape made = app.ActiveWindow().Selection().Group();
  const std::string name = made.NameID().or_("");
  std::vector<std::string> recorded = recorder.take();
  ASSERT_GT(recorded.size(), 4u);
  EXPECT_EQ((std::vector<std::string>{recorded.begin(), recorded.begin() + 4}),
            (std::vector<std::string>{"SelectionChanged", "ShapeAdded " + name, "ShapeParentChanged Sheet.1",
                                      "ShapeParentChanged Sheet.2"}));
  EXPECT_TRUE(std::ranges::count(recorded, "FormulaChanged Sheet.1 PinX"));
  EXPECT_FALSE(std::ranges::count(recorded, "CellChanged Sheet.1 PinX")) << "it is at the corner of the group";
  write(made, {{"PinX", "9 in"}});
  recorder.take();
  recorder.onBeforeShapeDelete = [&](const Shape&) { box(5, 5, 1, 1); };
  ASSERT_TRUE(made.Ungroup());
  recorded = recorder.take();
  ASSERT_GT(recorded.size(), 5u);
  EXPECT_EQ((std::vector<std::string>{recorded.begin(), recorded.begin() + 5}),
            (std::vector<std::string>{"BeforeShapeDelete " + name, "ShapeAdded Sheet.4", "(handled)",
                                      "ShapeParentChanged Sheet.1", "ShapeParentChanged Sheet.2"}));
  EXPECT_TRUE(std::ranges::count(recorded, "CellChanged Sheet.1 PinX"));
  EXPECT_EQ(recorded.back(), "SelectionChanged");

  // If it deletes the group itself, nothing is ungrouped; if it deletes the new group, its members are deleted too.
  recorder.onBeforeShapeDelete = nullptr;
  recorder.onShapeAdded = [](const Shape& shape) { shape.Delete(); };
  EXPECT_FALSE(group({a, b}));
  EXPECT_EQ(stack(page.Shapes()), "4");
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(stack(page.Shapes()), "1 2 4");
}

TEST_F(Grouping, GlueHoldsThroughGroups) {
  const Shape from = box(0, 0, 1, 1), to = box(4, 0, 1, 1), beside = box(2, 3, 1, 1);
  const Shape outside = page.DrawLine(0, 0, 1, 1), inside = page.DrawLine(0, 0, 1, 1);
  for (const Shape& line : {outside, inside}) {
    ASSERT_TRUE(line.Cells("BeginX").GlueTo(from.Cells("LocPinX")));
    ASSERT_TRUE(line.Cells("EndX").GlueTo(to.Cells("LocPinX")));
  }
  const std::string before = seen({outside, inside});
  const Shape made = group({from, inside, beside});
  ASSERT_TRUE(made);
  EXPECT_EQ(seen({outside, inside}), before);
  EXPECT_EQ(page.Connects().Count(), 4);
  write(made, {{"PinX", "10 in"}, {"PinY", "10 in"}, {"Angle", "90 deg"}});
  const host::Store& store = engine().store();
  const auto meets = [&](const Shape& line, bool begin, const Shape& shape) {
    const host::Point end = host::endOf(store, sheetOf(line), begin).at;
    const auto middle = host::toPageMatrix(store, sheetOf(shape))({0.5, 0.5});
    return std::hypot(end.x - middle.x, end.y - middle.y) < 1e-9;
  };
  const auto allMeet = [&](const char* when) {
    for (const Shape& line : {outside, inside}) {
      EXPECT_TRUE(meets(line, true, from)) << when;
      EXPECT_TRUE(meets(line, false, to)) << when;
    }
  };
  allMeet("the group moved");
  write(from, {{"PinX", "0.25 in"}});
  write(to, {{"PinX", "-3 in"}});
  allMeet("a member and a shape outside moved");
  const Shape outer = group({made, to});
  write(outer, {{"PinX", "1 in"}, {"FlipX", "TRUE"}});
  allMeet("a group around the group moved");
  ASSERT_TRUE(outer.Ungroup());
  allMeet("the outer group was given up");
  ASSERT_TRUE(made.Ungroup());
  allMeet("the group was given up");
  EXPECT_EQ(page.Connects().Count(), 4);
  write(from, {{"PinX", "-7 in"}});
  allMeet("all are free again");

  // What was glued to the group itself stays where it was.
  const Shape again = group({from, beside});
  ASSERT_TRUE(outside.Cells("BeginX").GlueTo(again.Cells("LocPinX")));
  const std::string glued = seen(outside);
  ASSERT_TRUE(again.Ungroup());
  EXPECT_EQ(seen(outside), glued);
  EXPECT_EQ(outside.Cells("BeginX").Formula().or_("").find('('), std::string::npos);
  EXPECT_EQ(page.Connects().Count(), 3);
}

TEST_F(Grouping, MembersOfAnInstanceGetTheirOwnCells) {
  const host::MasterId master = addMaster("Box", [this](host::Sheet& top, host::Sheet& member) {
    const std::string name = "Sheet." + std::to_string(top.shapeId) + "!";
    set(member, "Width", name + "Width*0.5", 1);
    set(member, "PinX", name + "Width*0.25", 0.5);
    set(member, "FillForegnd", "3");
    set(member, "User.own", "Width*2", 2);
    set(member, "User.ofGroup", name + "Width+1", 3);
    member.text = std::make_shared<const host::TextBody>(host::TextBody{{host::TextPiece::Characters, 0, "label"}});
  });
  const Shape instance = drop(master, 5, 5), member = instance.Shapes().Item(1);
  ASSERT_TRUE(instance.Cells("Width").SetFormula("4 in"));
  const std::string before = seen(member), start = dump();
  ASSERT_TRUE(instance.Ungroup());
  EXPECT_EQ(seen(member), before);
  EXPECT_FALSE(member.Master());
  EXPECT_EQ(member.Text(), "label");
  EXPECT_EQ(member.Cells("FillForegnd").Formula(), "3");
  EXPECT_EQ(member.Cells("User.own").Formula(), "Width*2");
  EXPECT_EQ(member.Cells("Width").Formula(), "2 in.");
  EXPECT_EQ(member.Cells("User.ofGroup").Formula(), "REF()+1") << "as when the group is deleted";
  ASSERT_TRUE(member.Cells("Width").SetFormula("3 in"));
  EXPECT_EQ(member.Cells("User.own").ResultIU(), 6);
  for (int i = 0; i < 2; ++i) ASSERT_TRUE(app.Undo());
  EXPECT_EQ(firstDifference(start, dump()), "");
  ASSERT_TRUE(instance.Cells("Width").SetFormula("6 in"));
  EXPECT_EQ(inches(member, "Width"), 3) << "it inherits again";

  // Members that are grouped within their instance still inherit.
  const Shape made = group({member});
  ASSERT_TRUE(made);
  EXPECT_TRUE(member.Master());
  EXPECT_EQ(member.Cells("User.ofGroup").ResultIU(), 7);
  ASSERT_TRUE(instance.Cells("Width").SetFormula("8 in"));
  EXPECT_EQ(member.Cells("User.ofGroup").ResultIU(), 9);
  const Shape copy = instance.Duplicate();
  ASSERT_TRUE(copy.Cells("Width").SetFormula("5 in"));
  EXPECT_EQ(copy.Shapes().Item(1).Shapes().Item(1).Cells("User.ofGroup").ResultIU(), 6);
}

TEST_F(Grouping, StepsThatMakeAndGroupAreUndoneCompletely) {
  const host::MasterId master = addMaster("Box", [this](host::Sheet& top, host::Sheet&) { set(top, "User.a", "1"); });
  const Shape old = box(0, 0, 1, 1);
  const std::string start = dump();
  const struct {
    const char* what;
    std::function<void()> act;
  } stories[] = {
      {"dropped and grouped with an old one",
       [&] {
         group({drop(master), old});
       }},
      {"grouped and deleted",
       [&] {
         group({drop(master), old}).Delete();
       }},
      {"dropped and ungrouped", [&] { drop(master).Ungroup(); }},
      {"grouped, moved and ungrouped",
       [&] {
         const Shape made = group({old, box(3, 3, 1, 1)});
         write(made, {{"PinX", "9 in"}, {"Width", "9 in"}});
         made.Ungroup();
       }},
      {"grouped twice",
       [&] {
         group({group({old, drop(master)}), box(1, 1, 1, 1)}).Cells("Angle").SetFormula("1 rad");
       }},
  };
  for (const auto& story : stories) {
    SCOPED_TRACE(story.what);
    const int scope = app.BeginUndoScope(story.what).or_(0);
    story.act();
    ASSERT_TRUE(app.EndUndoScope(scope, true));
    const std::string end = dump();
    EXPECT_NE(end, start);
    ASSERT_TRUE(app.Undo());
    ASSERT_EQ(firstDifference(start, dump()), "");
    ASSERT_TRUE(app.Redo());
    ASSERT_EQ(firstDifference(end, dump()), "");
    ASSERT_TRUE(app.Undo());
    const int other = app.BeginUndoScope(story.what).or_(0);
    story.act();
    ASSERT_TRUE(app.EndUndoScope(other, false));
    ASSERT_EQ(firstDifference(start, dump()), "");
  }
}

}  // namespace
}  // namespace quorvel
