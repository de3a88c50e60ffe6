// Which cells a sheet has, by its kind, and which of them it holds itself: scripts use it to distinguish lines and
// boxes.
#include <gtest/gtest.h>

#include <sstream>

#include "host/host_fixture.h"
#include "host/sheet/inheritance.h"

namespace quorvel {
namespace {

class CellExists : public HostTest {
 protected:
  static bool has(const Shape& shape, const std::string& cell) {
    const bool exists = shape.CellExists(cell, 0) == true;
    EXPECT_EQ(exists, bool(shape.Cells(cell))) << cell;
    EXPECT_EQ(exists, bool(shape.CellsU(cell).Name())) << cell;
    return exists;
  }
  static bool hasItself(const Shape& shape, const std::string& cell) { return shape.CellExists(cell, 1) == true; }
};

TEST_F(CellExists, WhereTheKindOfSheetHasTheCell) {
  const Shape box = rectangle(), line = page.DrawLine(0, 0, 1, 1),
              picture = page.Import(QUORVEL_SOURCE_FOLDER "/data/Images/Quorvel Logo.jpg");
  ASSERT_TRUE(picture);
  for (const Shape& shape : {page.DrawRectangle(0, 0, 1, 1), page.DrawRectangle(2, 2, 3, 3)})
    app.ActiveWindow().Select(shape, visio::select);
  const Shape group = app.ActiveWindow().Selection().Group();
  const Shape style(&running, {ObjectKind::Shape,
                               engine().store().styleNamed(host::DocumentId{document.ref().id}, "No Style").value, 0});
  const std::vector<std::pair<char, Shape>> sheets = {
      {'b', box},  {'l', line}, {'g', group}, {'p', picture}, {'P', page.PageSheet()}, {'D', document.DocumentSheet()},
      {'S', style}};
  // Cells with the kinds that have them.
  const std::vector<std::pair<const char*, const char*>> rows = {
      {"PinX Width LocPinY Angle FlipX ResizeMode TxtPinX TxtHeight TxtAngle", "blgp"},
      {"BeginX BeginY EndX EndY", "l"},
      {"BegTrigger EndTrigger WalkPreference", "lS"},
      {"LineWeight LineColor EndArrow Rounding FillForegnd ShdwPattern ShapeShdwBlur LeftMargin VerticalAlign "
       "LockDelete LockBegin LockGroup HelpTopic Copyright NonPrinting GlueType ObjType Comment TheText EventDblClick "
       "LayerMember ShapePermeableX ConFixedCode DisplayLevel LineGradientAngle FillGradientDir QuickStyleLineColor "
       "QuickStyleFillMatrix QuickStyleFontColor GlowSize BevelTopType RotationXAngle ReplaceCopyCells",
       "blgpS"},
      {"SelectMode DisplayMode IsDropTarget DontMoveChildren", "gS"},
      {"ImgOffsetX ImgWidth ImgHeight ClippingPath", "p"},
      {"Gamma Contrast Brightness Blur Transparency", "pS"},
      {"PageWidth PageHeight DrawingScale PageScale UIVisibility ShdwOffsetX XGridDensity YRulerOrigin PlaceStyle "
       "RouteStyle LineToNodeX PageShapeSplit PageLeftMargin PrintPageOrientation PaperKind",
       "PS"},
      {"EnableLineProps EnableTextProps HideForApply", "S"},
      {"ThemeIndex ColorSchemeIndex VariationStyleIndex", "blgpPS"},
      {"OutputFormat LockPreview DocLangID AddMarkup NoCoauth", "D"},
      {"AlignLeft AlignMiddle", ""},
      {"Char.Size Char.Size[1] Para.HorzAlign[1]", "blgpS"},
      {"Geometry1.NoFill Geometry1.X1", "bl"},
      {"User.none Prop.none Actions.Menu[1] Controls.X1 Connections.X1 Hyperlink.none Scratch.A1 Fields.Value "
       "Char.Size[2] Geometry2.NoFill Geometry1.X9 NoSuchCell",
       ""},
  };
  for (const auto& [cells, kinds] : rows) {
    std::istringstream words{cells};
    for (std::string cell; words >> cell;) {
      std::string having;
      for (const auto& [kind, sheet] : sheets) {
        // The first field of an empty text can be written where it does not exist.
        if (cell == "Fields.Value" ? sheet.CellExists(cell, 0) == true : has(sheet, cell)) having += kind;
      }
      EXPECT_EQ(having, kinds) << cell;
    }
  }

  // Every cell of the table exists for some kind of sheet, or only where a sheet holds it.
  for (const host::CellDefinition& definition : host::cellDefinitions()) {
    if (definition.section != host::SectionNumber::Object || definition.row == 14) continue;
    EXPECT_TRUE(std::ranges::any_of(sheets, [&](const auto& each) {
      return each.second.CellExists(std::string(definition.name), 0) == true;
    })) << definition.name;
  }
}

TEST_F(CellExists, ItselfWhereTheSheetHoldsIt) {
  const host::MasterId master = addMaster("Box", [this](host::Sheet& group, host::Sheet&) {
    set(group, "User.a", "Width*2", 4);
    set(group, "User.b", "7");
    set(group, "LineWeight", "Width*0.01", 0.02);
    set(group, "LockDelete", "0");
  });
  const Shape shape = drop(master);
  for (const char* cell : {"User.a", "User.b", "User.b.Prompt", "LineWeight", "LockDelete", "Width", "FillForegnd"}) {
    EXPECT_TRUE(has(shape, cell)) << cell;
    EXPECT_FALSE(hasItself(shape, cell)) << cell;
  }
  EXPECT_TRUE(hasItself(shape, "PinX")) << "where it was dropped";

  // Values of inherited formulas are kept here, and the formulas are still the master's.
  ASSERT_TRUE(shape.Cells("Width").SetFormula("3 in"));
  EXPECT_EQ(shape.Cells("User.a").Result(0), 6.0);
  EXPECT_TRUE(hasItself(shape, "Width"));
  for (const char* cell : {"User.a", "LineWeight"}) EXPECT_FALSE(hasItself(shape, cell)) << cell;

  // Such a row can be made local, and still inherits.
  ASSERT_TRUE(shape.AddNamedRow(visio::sectionUser, "a", 0));
  EXPECT_TRUE(hasItself(shape, "User.a"));
  EXPECT_FALSE(shape.AddNamedRow(visio::sectionUser, "a", 0));
  ASSERT_TRUE(shape.Cells("Width").SetFormula("4 in"));
  EXPECT_EQ(shape.Cells("User.a").Result(0), 8.0);
  ASSERT_TRUE(shape.Cells("User.b").SetFormula("8"));
  EXPECT_TRUE(hasItself(shape, "User.b"));
  ASSERT_TRUE(shape.Cells("LockDelete").SetFormula("1"));
  EXPECT_TRUE(hasItself(shape, "LockDelete"));

  const Shape box = rectangle();
  for (const char* cell : {"Geometry1.NoFill", "Geometry1.X1", "PinX"}) EXPECT_TRUE(hasItself(box, cell)) << cell;
  for (const char* cell : {"Char.Size", "LineWeight"}) EXPECT_FALSE(hasItself(box, cell)) << cell;
}

TEST_F(CellExists, OfAHandleWhoseRowIsRenamed) {
  const Shape shape = rectangle();
  user(shape, "other", "0");
  const Cell x = user(shape, "x", "7");
  const Row row = shape.Section(visio::sectionUser).Row(1);
  const Cell prompt = shape.Cells("User.x.Prompt");
  ASSERT_TRUE(row.SetName("y"));
  EXPECT_EQ(row.Name(), "y");
  EXPECT_EQ(x.Name(), "User.y");
  EXPECT_EQ(x.Result(0), 7.0);
  ASSERT_TRUE(prompt.SetFormula("\"told\""));
  EXPECT_EQ(shape.Cells("User.y.Prompt").ResultStr(0), "told");
  EXPECT_EQ(shape.CellExists("User.x", 0), false);
  // A new row of the old name is another row.
  const Cell again = user(shape, "x", "1");
  EXPECT_EQ(x.Result(0), 7.0);
  EXPECT_EQ(again.Result(0), 1.0);
  ASSERT_TRUE(row.SetName("z"));
  EXPECT_EQ(x.Name(), "User.z");
  ASSERT_TRUE(shape.Section(visio::sectionUser).Row(2).SetName("y"));
  EXPECT_EQ(again.Name(), "User.y");
  EXPECT_EQ(x.Name(), "User.z");
  // Undo renames too.
  for (int i = 0; i < 4; ++i) ASSERT_TRUE(app.Undo());
  EXPECT_EQ(x.Name(), "User.y");
  ASSERT_TRUE(app.Undo());
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(x.Name(), "User.x");
  EXPECT_EQ(row.Name(), "x");
  ASSERT_TRUE(app.Redo());
  EXPECT_EQ(row.Name(), "y");

  // A hyperlink is a row as well.
  const Hyperlink link = shape.AddHyperlink();
  ASSERT_TRUE(link.SetAddress("there"));
  ASSERT_TRUE(shape.Section(visio::sectionHyperlink).Row(0).SetName("Home"));
  EXPECT_EQ(link.Address(), "there");
  EXPECT_TRUE(link.Delete());
  EXPECT_EQ(shape.Hyperlinks().Count(), 0);
}

}  // namespace
}  // namespace quorvel
