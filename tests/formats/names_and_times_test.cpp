// Local and universal names are kept in both formats, and a saved file has the time of its own save.
#include <gtest/gtest.h>

#include "formats/drawing_files.h"
#include "formats/formats.h"
#include "host/automation/in_memory_host.h"
#include "host/cells/cell_name.h"

namespace quorvel::formats::testing {
namespace {

class OpenedByScript : public ::testing::Test {
 protected:
  OpenedByScript() : running_({.formats = allFormats()}), app_(running_.app()) {}
  TemporaryFolder folder_;
  host::InMemoryHost running_;
  Application app_;
};

TEST_F(OpenedByScript, NamesOfBothKindsSurviveBothFormats) {
  Parts parts = partsWithMaster(
      "<Shapes><Shape ID='5' Type='Shape'><Section N='Property'><Row N='Cost' LocalName='Preis'>"
      "<Cell N='Value' V='5'/></Row></Section></Shape></Shapes>");
  std::string& masters = parts["visio/masters/masters.xml"];
  masters.replace(masters.find("Name='Task' Prompt"), 11, "Name='Aufgabe'");
  std::string& document = parts["visio/document.xml"];
  document.insert(document.find("</StyleSheets>"), "<StyleSheet ID='3' NameU='Text Only' Name='Nur Text'/>");
  std::string& pages = parts["visio/pages/pages.xml"];
  pages.replace(pages.find("Name='Page-1'>"), 13, "Name='Blatt 1'");
  setPage(parts,
          "<Shapes><Shape ID='1' NameU='Start' Name='Anfang' Type='Shape'><Section N='Property'>"
          "<Row N='Cost' LocalName='Kosten'><Cell N='Value' V='7'/></Row></Section>"
          "<Section N='Actions'><Row N='Open'><Cell N='Menu' V='Open it'/></Row></Section></Shape>"
          "<Shape ID='2' Type='Shape' Master='2'/></Shapes>");
  std::string file = folder_.file("names.vsdx");
  writeFile(file, zipOf(parts));
  for (const char* const next : {"a.vdx", "b.vsdx", "c.vdx", "d.vsdx"}) {
    const Document drawing = app_.Documents().Open(file);
    ASSERT_TRUE(drawing) << file;
    const Page page = drawing.Pages().ItemU("Page-1");
    EXPECT_EQ(page.Name(), "Blatt 1") << file;
    EXPECT_EQ(page, drawing.Pages().Item("blatt 1"));
    const Master master = drawing.Masters().ItemU("Task");
    EXPECT_EQ(master.Name(), "Aufgabe") << file;
    EXPECT_EQ(master.NameU(), "Task");
    const Shape shape = page.Shapes().ItemU("Start");
    EXPECT_EQ(shape.Name(), "Anfang") << file;
    EXPECT_EQ(page.Shapes().Item(2).Name(), "Aufgabe.2");
    EXPECT_EQ(page.Shapes().Item(2).NameU(), "Task.2");
    EXPECT_EQ(shape.Section(visio::sectionProp).Row(0).Name(), "Kosten") << file;
    EXPECT_EQ(shape.Section(visio::sectionProp).Row(0).NameU(), "Cost") << file;
    EXPECT_EQ(page.Shapes().Item(2).Cells("Prop.Preis").ResultStr(0), "5") << file;
    EXPECT_EQ(shape.Cells("Actions.Menu[1]").ResultStr(0), "Open it") << file;
    EXPECT_TRUE(shape.SetStyle("Nur Text")) << file;
    EXPECT_TRUE(shape.SetStyle("Text Only")) << file;
    file = folder_.file(next);
    ASSERT_TRUE(drawing.SaveAs(file));
    ASSERT_TRUE(drawing.Close());
  }
}

TEST_F(OpenedByScript, RowsOfMenusAndControlsHaveNamesInTheFile) {
  const Document drawing = app_.Documents().Add("");
  const Shape shape = drawing.Pages().Item(1).DrawRectangle(1, 1, 2, 2);
  // As older drawings have them: by number alone.
  host::Sheet& sheet = *running_.engine().edit().making().sheet(host::SheetId{shape.ref().id});
  for (const char* const name : {"Actions.Menu[1]", "Actions.Menu[2]"})
    sheet.local(*host::parseCellName(name)).value = host::Value::text(name);
  sheet.local(*host::parseCellName("Controls.X1")).value = host::Value::number(1, host::Unit::Inches);
  const std::string file = folder_.file("rows.vsdx");
  ASSERT_TRUE(drawing.SaveAs(file));
  const std::string xml = partOf(file, "/visio/pages/page1.xml");
  for (const char* const expected :
       {R"(<Section N="Actions"><Row N="Row_1"><Cell N="Menu" V="Actions.Menu[1]"/></Row><Row N="Row_2">)",
        R"(<Section N="Control"><Row N="Row_1"><Cell N="X")"})
    EXPECT_NE(xml.find(expected), std::string::npos) << xml;
  ASSERT_TRUE(drawing.Close());
  const Shape again = app_.Documents().Open(file).Pages().Item(1).Shapes().Item(1);
  EXPECT_EQ(again.Cells("Actions.Menu[2]").ResultStr(0), "Actions.Menu[2]");
  EXPECT_EQ(again.Cells("Controls.X1").Result(visio::unitsInches), 1);
}

TEST_F(OpenedByScript, AFileShowsTheTimeOfItsOwnSave) {
  Parts parts = partsWithMaster(
      "<Shapes><Shape ID='5' Type='Shape'><Section N='User'><Row N='Saved'>"
      "<Cell N='Value' V='1999-01-01T00:00:00' U='DATE' F='DOCLASTSAVE()'/></Row></Section></Shape></Shapes>");
  setPage(parts,
          "<Shapes><Shape ID='1' Type='Shape' Master='2'/><Shape ID='2' Type='Shape'><Section N='User'>"
          "<Row N='Year'><Cell N='Value' V='1999' F='YEAR(Sheet.1!User.Saved)'/></Row></Section></Shape>"
          "</Shapes>");
  const std::string file = folder_.file("saved.vsdx");
  writeFile(file, zipOf(parts));
  for (const bool reopened : {false, true}) {
    const Document drawing = app_.Documents().Open(file);
    const Page page = drawing.Pages().Item(1);
    if (!reopened) {
      EXPECT_EQ(page.Shapes().Item(2).Cells("User.Year").ResultStr(0), "1999") << "opening changes nothing";
      EXPECT_FALSE(drawing.SaveAs(folder_.file("no folder/saved.vsdx")));
      EXPECT_EQ(page.Shapes().Item(2).Cells("User.Year").ResultStr(0), "1999") << "nor does a save that fails";
      ASSERT_TRUE(drawing.Save());
    }
    EXPECT_GT(page.Shapes().Item(1).Cells("User.Saved").Result(0).or_(0), 45000);
    EXPECT_GT(page.Shapes().Item(2).Cells("User.Year").Result(0).or_(0), 2023);
    EXPECT_EQ(drawing.Saved(), true);
    EXPECT_FALSE(app_.Undo()) << "a save is not an undo step";
    ASSERT_TRUE(drawing.Close());
  }
}

}  // namespace
}  // namespace quorvel::formats::testing
