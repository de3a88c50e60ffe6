// How shapes, groups, layers and pages become a scene.
#include <gtest/gtest.h>

#include <numbers>

#include "render/build/arrowheads.h"
#include "render/build/line_style.h"
#include "render/drawing.h"

namespace quorvel::render {
namespace {

std::string firstPath(const Scene& scene) {
  const auto paths = itemsOf<PathItem>(scene);
  return paths.empty() ? "" : textOf(paths.front()->path);
}

TEST(Shapes, AreWhereNestedTransformsPutThem) {
  struct Case {
    const char* what;
    double groupAngle, memberAngle;
    bool groupFlipX, memberFlipY;
    const char* path;
  };
  // A group of 2 by 1 inches about (2, 1.5) on a page of 4 by 3, with a line from its own (0, 0) to (1, 0.5) in a
  // member that fills its lower left quarter.
  const Case cases[] = {
      {"plain", 0, 0, false, false, "M72 144L144 108"},
      {"group flipped", 0, 0, true, false, "M216 144L144 108"},
      {"member flipped", 0, 0, false, true, "M72 108L144 144"},
      {"group turned a quarter left", 90, 0, false, false, "M180 180L144 108"},
      {"member turned half", 0, 180, false, false, "M144 108L72 144"},
      {"both", 90, 180, true, false, "M144 108L180 36"},
  };
  for (const Case& each : cases) {
    Drawing drawing;
    const auto group = drawing.addShape(2, 1.5, 2, 1, {}, host::SheetKind::Group);
    const auto member = drawing.addShape(0.5, 0.25, 1, 0.5, group);
    drawing.addGeometry(member, 1, {{0, 0}, {1, 0.5}});
    drawing.set(group, "Angle", each.groupAngle * std::numbers::pi / 180);
    drawing.set(group, "FlipX", each.groupFlipX);
    drawing.set(member, "Angle", each.memberAngle * std::numbers::pi / 180);
    drawing.set(member, "FlipY", each.memberFlipY);
    EXPECT_EQ(firstPath(drawing.scene()), each.path) << each.what;
  }
}

TEST(Shapes, FollowTheDrawingScaleButTheirLinesDoNot) {
  Drawing drawing;
  const auto sheet = drawing.store.page(drawing.page)->sheet;
  drawing.set(sheet, "PageScale", 1);
  drawing.set(sheet, "DrawingScale", 10);
  drawing.set(sheet, "PageWidth", 40);
  drawing.set(sheet, "PageHeight", 30);
  const auto shape = drawing.addRectangle(20, 15, 20, 10);
  drawing.set(shape, "LineWeight", 2.0 / 72);
  const Scene scene = drawing.scene();
  EXPECT_EQ(scene.width, 288);
  EXPECT_EQ(firstPath(scene), "M72 144L216 144L216 72L72 72L72 144Z");
  EXPECT_DOUBLE_EQ(itemsOf<PathItem>(scene).front()->stroke.width, 2);
}

TEST(Shapes, SectionsShareOneFillWithHoles) {
  Drawing drawing;
  const auto shape = drawing.addRectangle(2, 1.5, 2, 2);
  drawing.addGeometry(shape, 2, {{0.5, 0.5}, {1.5, 0.5}, {1.5, 1.5}, {0.5, 0.5}});
  drawing.addGeometry(shape, 3, {{0, 1}, {2, 1}});
  drawing.set(shape, "Geometry1.NoLine", 1);
  Scene scene = drawing.scene();
  auto paths = itemsOf<PathItem>(scene);
  ASSERT_EQ(paths.size(), 2u);
  EXPECT_EQ(subpathsOf(paths[0]->path).size(), 2u) << "the third section is a line and encloses nothing";
  EXPECT_FALSE(paths[0]->stroke.visible);
  EXPECT_EQ(subpathsOf(paths[1]->path).size(), 2u) << "the first section has no line";
  drawing.addGeometry(shape, 4, {{0, 0}, {1, 1}, {2, 0}});
  drawing.set(shape, "Geometry4.NoLine", 1);
  scene = drawing.scene();
  paths = itemsOf<PathItem>(scene);
  EXPECT_EQ(textOf(paths[0]->path).substr(textOf(paths[0]->path).rfind('M')), "M72 180L144 108L216 180Z")
      << "a bow that is not closed is filled";
  drawing.set(shape, "Geometry4.NoFill", 1);
  scene = drawing.scene();
  EXPECT_EQ(subpathsOf(itemsOf<PathItem>(scene)[0]->path).size(), 2u);
  drawing.set(shape, "Geometry4.NoShow", 1);
  drawing.set(shape, "Geometry2.NoShow", 1);
  drawing.set(shape, "Geometry3.NoShow", 1);
  drawing.set(shape, "Geometry1.NoLine", 0.0);
  scene = drawing.scene();
  paths = itemsOf<PathItem>(scene);
  ASSERT_EQ(paths.size(), 1u) << "one outline is filled and stroked as one path";
  EXPECT_TRUE(paths[0]->stroke.visible);
  drawing.set(shape, "FillPattern", 0.0);
  drawing.set(shape, "LinePattern", 0.0);
  EXPECT_TRUE(itemsOf<PathItem>(drawing.scene()).empty());
}

TEST(Shapes, AreHiddenByLayersAndGroupsByTheirDisplayMode) {
  Drawing drawing;
  const auto sheet = drawing.store.page(drawing.page)->sheet;
  drawing.set(sheet, "Layers.Visible[1]", 1);
  drawing.set(sheet, "Layers.Visible[2]", 0.0);
  const auto group = drawing.addRectangle(2, 1.5, 2, 2, {}, host::SheetKind::Group);
  const auto member = drawing.addRectangle(1, 1, 1, 1, group);
  const auto count = [&](const char* ofGroup, const char* ofMember, int mode) {
    drawing.set(group, "LayerMember", ofGroup);
    drawing.set(member, "LayerMember", ofMember);
    drawing.set(group, "DisplayMode", mode);
    return itemsOf<PathItem>(drawing.scene()).size();
  };
  EXPECT_EQ(count("", "", 2), 2u);
  EXPECT_EQ(count("1", "", 2), 0u) << "a member without a layer goes with its group";
  EXPECT_EQ(count("1", "0", 2), 1u);
  EXPECT_EQ(count("0;1", "1", 2), 1u) << "one visible layer is enough";
  EXPECT_EQ(count("7", "", 2), 2u) << "a missing layer hides nothing";
  EXPECT_EQ(count("", "", 0), 1u) << "the group's own outline is not shown";
  drawing.set(group, "LineWeight", 5.0 / 72);
  const auto lastWidth = [&](int mode) {
    drawing.set(group, "DisplayMode", mode);
    const Scene scene = drawing.scene();
    return itemsOf<PathItem>(scene).back()->stroke.width;
  };
  EXPECT_DOUBLE_EQ(lastWidth(2), 5) << "in front of its members";
  EXPECT_LT(lastWidth(1), 5) << "behind them";
}

TEST(Shapes, CarryNumberNameAndLink) {
  Drawing drawing;
  const auto shape = drawing.addRectangle(1, 1, 1, 1);
  drawing.store.sheet(shape)->name = "A01";
  drawing.set(shape, "Hyperlink.Row_1.Address", "plan.html");
  drawing.set(shape, "Hyperlink.Row_2.Address", "other.html");
  drawing.set(shape, "Hyperlink.Row_2.SubAddress", "Page-2");
  drawing.set(shape, "Hyperlink.Row_2.Description", "Detail");
  const auto begin = [&] {
    const Scene scene = drawing.scene();
    return *itemsOf<ShapeBegin>(scene).front();
  };
  EXPECT_EQ(begin().shape, shape);
  EXPECT_EQ(begin().name, "A01");
  EXPECT_EQ(begin().link, "plan.html");
  drawing.set(shape, "Hyperlink.Row_2.Default", 1);
  EXPECT_EQ(begin().link, "other.html#Page-2");
  EXPECT_EQ(begin().linkTitle, "Detail");
  drawing.set(shape, "Hyperlink.Row_2.Invisible", 1);
  EXPECT_EQ(begin().link, "plan.html");
}

TEST(Shapes, BackgroundPagesComeFirstAndCirclesEnd) {
  Drawing drawing;
  const auto back = drawing.store.addPage(drawing.document, "Back");
  const auto front = drawing.page;
  drawing.addRectangle(1, 1, 1, 1);
  drawing.page = back;
  const auto behind = drawing.addRectangle(3, 1, 1, 1);
  drawing.page = front;
  drawing.store.page(front)->backPage = back;
  drawing.store.page(back)->backPage = front;
  const Scene scene = drawing.scene();
  const auto begins = itemsOf<ShapeBegin>(scene);
  ASSERT_GE(begins.size(), 2u);
  EXPECT_EQ(begins[begins.size() - 2]->shape, behind);
  SceneOptions options;
  options.withBackgroundPages = false;
  EXPECT_EQ(itemsOf<ShapeBegin>(drawing.scene(options)).size(), 1u);
  EXPECT_TRUE(buildScene(drawing.store, {}).items.empty());
}

TEST(Shapes, FieldsOfABackgroundReadTheForegroundPage) {
  Drawing drawing;
  const auto back = drawing.store.addPage(drawing.document, "Back", 0);
  const auto other = drawing.store.addPage(drawing.document, "Other", 1), front = drawing.page;
  drawing.page = back;
  const auto title = drawing.addRectangle(3, 1, 1, 1);
  auto body = std::make_shared<host::TextBody>();
  for (int field = 0; field < 3; ++field) {
    const auto add = [&](const std::string& column, const std::string& formula, host::Value value) {
      host::Cell& cell = drawing.store.sheet(title)->local(
          *host::parseCellName("Fields." + column + "[" + std::to_string(field + 1) + "]"));
      cell.formula = drawing.store.formulas().get(formula);
      cell.value = std::move(value);
    };
    const char* const formulas[] = {"PAGENUMBER()", "PAGENAME()", "Width*2"};
    add("Format", "0", host::Value::number(0));
    add("Value", formulas[field], field == 1 ? host::Value::text("Back") : host::Value::number(0));
    body->push_back({host::TextPiece::Field, field, {}});
    body->push_back({host::TextPiece::Characters, 0, "|"});
  }
  drawing.store.sheet(title)->text = body;
  drawing.store.page(back)->background = true;
  const std::pair<host::PageId, std::string> cases[] = {
      {other, "1|Other|0|"}, {front, "2|" + drawing.store.page(front)->name + "|0|"}, {back, "0|Back|0|"}};
  for (const auto& [page, shown] : cases) {
    if (page != back) drawing.store.page(page)->backPage = back;
    const Scene scene = buildScene(drawing.store, page);
    const auto texts = itemsOf<TextItem>(scene);
    ASSERT_EQ(texts.size(), 1u);
    std::string text;
    for (const auto& line : texts[0]->layout->lines) {
      for (const auto& run : line.runs) text += run.text;
    }
    EXPECT_EQ(text, shown);
  }
}

TEST(Shapes, FromOnePlaceHaveOneStem) {
  Drawing drawing;
  const auto line = [&](const std::vector<Point>& vertices, double end) {
    const auto shape = drawing.addShape(0, 0, 0, 0);
    drawing.addGeometry(shape, 1, vertices);
    drawing.set(shape, "BeginX", 1);
    drawing.set(shape, "FillPattern", 0.0);
    drawing.set(shape, "EndArrow", end);
    return shape;
  };
  const auto written = [&] {
    std::string all;
    const Scene scene = drawing.scene();
    for (const PathItem* path : itemsOf<PathItem>(scene)) all += textOf(path->path) + ' ';
    return all;
  };
  line({{1, 1}, {2, 1}, {2, 2}}, 0);
  line({{1, 1}, {3, 1}}, 0);
  const auto third = line({{1, 1}, {3, 1}, {3, 2}}, 0);
  line({{2, 0}, {2.5, 0}, {2.5, 2}, {2, 2}, {2, 1}}, 0);
  const std::string stems = "M72 144L144 144L144 72 M144 144L216 144 M216 144L216 72 ";
  EXPECT_EQ(written(), stems + "M144 216L180 216L180 72L144 72 ") << "and one arrival";
  drawing.set(third, "LineWeight", 3.0 / 72);
  EXPECT_NE(written().find("M72 144L216 144L216 72"), std::string::npos) << "a wider line covers the other";
}

TEST(Arrowheads, AreAtOpenEndsAndShortenTheLine) {
  Path line;
  line.moveTo({0, 0});
  line.lineTo({100, 0});
  struct Case {
    int number;
    std::size_t pieces;
    bool filled, shortens;
  };
  const Case cases[] = {{0, 0, false, false},  {1, 1, false, false},  {4, 1, true, true},
                        {10, 1, true, true},   {16, 1, true, true},   {24, 1, false, false},
                        {28, 1, false, false}, {29, 2, false, false}, {39, 2, true, true}};
  for (const Case& each : cases) {
    LineStyle style;
    style.stroke = {true, {0x0000FF, 1}, 1, LineCap::Round, {3, 1}};
    style.endArrow = each.number;
    std::vector<PathItem> heads;
    const Path drawn = withArrowheads(line, style, heads);
    EXPECT_EQ(heads.size(), each.pieces) << each.number;
    if (heads.empty()) continue;
    EXPECT_EQ(!std::holds_alternative<std::monostate>(heads[0].fill), each.filled) << each.number;
    EXPECT_EQ(drawn.current().x < 99.9, each.shortens) << each.number;
    EXPECT_EQ(drawn.points().front(), (Point{0, 0}));
    Box box;
    for (const PathItem& head : heads) box.add(boundsOf(head.path));
    EXPECT_NEAR(box.top, -box.bottom, 1e-9) << each.number;
    EXPECT_TRUE(heads[0].stroke.dashes.empty()) << "dashes stay with the line";
  }
}

TEST(Arrowheads, PointAlongTheLastStretch) {
  LineStyle style;
  style.stroke = {true, {}, 1, LineCap::Round, {}};
  style.endArrow = style.beginArrow = 4;
  std::vector<PathItem> heads;
  Path bent;
  bent.moveTo({0, 0});
  bent.lineTo({0, 50});
  bent.lineTo({50, 50});
  bent.lineTo({50, 50});
  withArrowheads(bent, style, heads);
  ASSERT_EQ(heads.size(), 2u);
  EXPECT_LT(boundsOf(heads[0].path).bottom, 20) << "the first points up from (0, 0)";
  EXPECT_NEAR(boundsOf(heads[1].path).right, 50, 1e-9);
  EXPECT_NEAR(boundsOf(heads[1].path).height(), arrowheadUnit(2, 1), 1e-9);
  heads.clear();
  Path closed;
  closed.addRectangle(0, 0, 9, 9);
  withArrowheads(closed, style, heads);
  EXPECT_TRUE(heads.empty());
  EXPECT_GT(arrowheadUnit(4, 1), arrowheadUnit(2, 1));
  EXPECT_GT(arrowheadUnit(2, 4), arrowheadUnit(2, 1));
}

}  // namespace
}  // namespace quorvel::render
