// Cells between file and engine: every attribute is saved unchanged, and the engine writes what files of other programs
// have.
#include "formats/common/cell_text.h"

#include <gtest/gtest.h>

#include "formats/drawing_files.h"
#include "formats/formats.h"
#include "host/cells/cell_name.h"
#include "host/sheet/inheritance.h"

namespace quorvel::formats::testing {
namespace {

using host::Unit;
using host::Value;

host::CellKey keyOf(const std::string& name) { return *host::parseCellName(name); }

TEST(CellText, ReadsValuesByUnitAndCell) {
  const struct {
    std::string cell, value, unit;
    Value expected;
  } cases[] = {
      {"Width", "1.75", "", Value::number(1.75, Unit::Drawing)},
      {"Char.Size", "0.125", "", Value::number(0.125, Unit::Drawing)},
      {"Para.SpLine", "-1.2", "", Value::number(-1.2)},
      {"Width", "1.968503937007874", "MM", Value::number(1.968503937007874, Unit::Millimetres)},
      {"Angle", "1.5707963267949", "", Value::number(1.5707963267949, Unit::Radians)},
      {"Angle", "1.5707963267949", "DEG", Value::number(1.5707963267949, Unit::Degrees)},
      {"Width", "-7.591035761743328E-16", "", Value::number(-7.591035761743328E-16, Unit::Drawing)},
      {"FillForegnd", "#7f7f7F", "", Value::colour(0x7f7f7f)},
      {"FillForegnd", "Themed", "", Value::text("Themed")},
      {"FillForegnd", "4", "", Value::number(4)},
      {"User.a", "#ffffff", "COLOR", Value::colour(0xffffff)},
      {"User.a", "#ffffff", "", Value::text("#ffffff")},
      {"Prop.a", "12", "STR", Value::text("12")},
      {"Prop.a", "12", "", Value::number(12)},
      {"Prop.a.Label", "12", "", Value::text("12")},
      {"Prop.a", "0.0833333333333333", "EH", Value::number(0.0833333333333333, Unit::ElapsedHour)},
      {"Prop.a", "1", "BOOL", Value::boolean(true)},
      {"Prop.a", "2014-12-05T18:00:00", "DATE", Value::date(41978.75)},
      {"Prop.a", "PNT(3,2)", "PNT", Value::point(3, 2)},
      {"Prop.a", "nan", "", Value::text("nan")},
      {"Prop.a", "12 apples", "MM", Value::text("12 apples")},
  };
  for (const auto& one : cases) {
    const host::CellKey key = keyOf(one.cell);
    const CellAttributes text{true, !one.unit.empty(), false, false, one.value, one.unit, {}, {}};
    EXPECT_EQ(readValue(key, host::definitionOf(key), text), one.expected) << one.cell << " " << one.value << one.unit;
  }
}

TEST(CellText, WritesWhatTheEngineMade) {
  const auto made = [](const std::string& formula, Value value) {
    host::Cell cell;
    cell.formula = formula.empty() ? nullptr : host::parseFormula(formula);
    cell.value = std::move(value);
    return cell;
  };
  const struct {
    std::string cell;
    host::Cell held;
    std::string value, unit, formula, error;
  } cases[] = {
      {"Width", made("", Value::number(0.1, Unit::Drawing)), "0.1", "", "", ""},
      {"Width", made("Height*2", Value::number(0.5, Unit::Inches)), "0.5", "IN", "Height*2", ""},
      {"LineWeight", made("0.72 pt", Value::number(0.01, Unit::Points)), "0.01", "PT", "0.72 pt", ""},
      {"Prop.a", made("\"say \"\"hi\"\"\"", Value::text("say \"hi\"")), "say \"hi\"", "STR", "", ""},
      {"Prop.a.Label", made("\"Role\"", Value::text("Role")), "Role", "", "", ""},
      {"Prop.a", made("", Value::number(2.0 / 24, Unit::ElapsedHour)), "0.08333333333333333", "EH", "", ""},
      {"Prop.a", made("", Value::boolean(false)), "0", "BOOL", "", ""},
      {"Prop.a", made("", Value::date(41978.75)), "2014-12-05T18:00:00", "DATE", "", ""},
      {"LineColor", made("RGB(User.r,0,16)", Value::colour(0xff0010)), "#ff0010", "", "RGB(User.r,0,16)", ""},
      {"User.a", made("1/0", Value::error(host::ErrorCode::DivisionByZero)), "0", "", "1/0", "#DIV/0!"},
      {"User.a", made("", Value::number(3.873086406713372e-5)), "3.873086406713372E-5", "", "", ""},
      {"User.a", made("", Value::number(1234567)), "1234567", "", "", ""},
      {"User.a", made("", Value::number(-0.000125)), "-0.000125", "", "", ""},
      {"User.a", made("", Value::number(-12345.678)), "-12345.678", "", "", ""},
      {"User.a", made("", Value::number(9e15)), "9000000000000000", "", "", ""},
      {"User.a", made("", Value::number(-1e16)), "-1E16", "", "", ""},
  };
  for (const auto& one : cases) {
    WrittenCell written;
    const host::CellKey key = keyOf(one.cell);
    writeCell(key, host::definitionOf(key), one.held, written);
    EXPECT_EQ(written.value, one.value) << one.cell;
    EXPECT_EQ(written.unit, one.unit) << one.cell << " " << one.value;
    EXPECT_EQ(written.error, one.error) << one.cell;
    EXPECT_EQ(written.formula, one.formula) << one.cell;
    // The file's text reads as the value that the engine had.
    const CellAttributes text{true,          !written.unit.empty(), written.hasFormula, !written.error.empty(),
                              written.value, written.unit,          written.formula,    written.error};
    host::FormulaPool formulas;
    bool broken = false;
    EXPECT_EQ(readCell(key, host::definitionOf(key), text, formulas, broken).value, one.held.value) << one.cell;
  }
}

/// One shape with a cell in each unusual notation: all are saved unchanged, until the cell changes.
TEST(CellText, KeepsTheSpellingOfUnchangedCells) {
  const std::string cells[] = {
      R"x(<Cell N="PinX" V="1.50" U="IN" F="=GUARD( 1.5 )"/>)x",
      R"(<Cell N="PinY" V="0.30000000000000004441" F="Width*0.5"/>)",
      R"(<Cell N="Width" V="1" U="WORLDS"/>)",
      R"(<Cell N="Height" V="1" F="this is ( no formula"/>)",
      R"(<Cell N="LocPinX" V="-0.05" E="#REF!" F="Sheet.99!Width"/>)",
      R"(<Cell N="LocPinY" V="2" F="Inh"/>)",
      R"(<Cell N="Angle" V="0" F="No Formula"/>)",
      R"(<Cell N="NewInTheNextRelease" V="maybe" U="STR"/>)",
      R"(<Cell N="FlipX" V="0" Hint="x"><RefBy T="Page" ID="0"/></Cell>)",
      R"(<Cell N="FlipY" F="Inh"/>)",
      R"(<Cell N="ObjType" F="1+1"/>)",
  };
  Parts parts = plainParts();
  std::string shape = "<Shapes><Shape ID='1' Type='Shape'>";
  for (const std::string& cell : cells) shape += cell;
  setPage(parts, shape + "</Shape></Shapes>");
  TemporaryFolder folder;
  const std::string file = folder.file("map.vsdx");
  writeFile(file, zipOf(parts));
  host::Store store;
  const auto& format = *formatFor(file);
  const host::OpenResult opened = format.open(store, file);
  ASSERT_TRUE(opened.document) << opened.error;
  ASSERT_EQ(format.save(store, opened.document, file), "");
  for (const std::string& cell : cells)
    EXPECT_NE(partOf(file, "/visio/pages/page1.xml").find(cell), std::string::npos) << cell;

  host::Sheet& sheet = *store.sheet(store.page(store.document(opened.document)->pages.front())->shapes.front());
  EXPECT_EQ(sheet.findLocal(keyOf("LocPinX"))->value, Value::number(-0.05, Unit::Drawing))
      << "the last valid value is kept";
  EXPECT_EQ(sheet.findLocal(keyOf("FlipY")), nullptr) << "inherits both formula and value";
  for (const char* const name : {"PinX", "Width", "Height", "LocPinX"})
    sheet.findLocal(keyOf(name))->value = Value::number(7);
  ASSERT_EQ(format.save(store, opened.document, file), "");
  const std::string page = partOf(file, "/visio/pages/page1.xml");
  for (const char* const expected : {R"x(<Cell N="PinX" V="7" F="GUARD( 1.5 )"/>)x", R"(<Cell N="Width" V="7"/>)",
                                     R"(<Cell N="Height" V="7"/>)", R"(<Cell N="LocPinX" V="7" F="Sheet.99!Width"/>)"})
    EXPECT_NE(page.find(expected), std::string::npos) << expected << "\n" << page;
}

/// A value of several lines is the element's text. It reads as one, is saved unchanged, and after a change
/// the file has the new one only.
TEST(CellText, TakesAValueFromTheElementsText) {
  const std::string note = "First line\nsecond & last", contents = ">First line\nsecond &amp; last</Cell>";
  const std::string row = "<Section N='Property'><Row N='Notes'><Cell N='Value' U='STR'" + contents +
                          "<Cell N='Prompt' F='Inh'" + contents +
                          "</Row><Row N='Both'><Cell N='Value' V='new' U='STR'" + contents +
                          "<Cell N='Label' F='Inh'>\n  </Cell></Row></Section>";
  Parts parts = plainParts();
  setPage(parts, "<Shapes><Shape ID='1' Type='Shape'>" + row + "</Shape></Shapes>");
  const std::string single =
      "<VisioDocument xmlns='http://schemas.microsoft.com/visio/2003/core'><Pages><Page ID='0'>"
      "<Shapes><Shape ID='1' Type='Shape'><Prop NameU='Notes' ID='1'><Value Unit='STR'>First "
      "line\nsecond &amp; last</Value></Prop></Shape></Shapes></Page></Pages></VisioDocument>";
  TemporaryFolder folder;
  for (const std::string ending : {"vsdx", "vdx"}) {
    const std::string file = folder.file("map." + ending), other = folder.file("other.vdx");
    writeFile(file, ending == "vdx" ? single : zipOf(parts));
    host::Store store;
    const auto reopened = [&](const std::string& name) -> host::Sheet& {
      const host::OpenResult opened = formatFor(name)->open(store, name);
      EXPECT_TRUE(opened.document) << opened.error;
      return *store.sheet(store.page(store.document(opened.document)->pages.front())->shapes.front());
    };
    const auto text = [&](const host::Sheet& sheet, const char* name) {
      return host::cellText(store, sheet.id, keyOf(name));
    };
    host::Sheet& sheet = reopened(file);
    EXPECT_EQ(text(sheet, "Prop.Notes"), note);
    ASSERT_EQ(formatFor(file)->save(store, sheet.document, file), "");
    ASSERT_EQ(formatFor(other)->save(store, sheet.document, other), "");
    for (const std::string& saved : {file, other}) EXPECT_EQ(text(reopened(saved), "Prop.Notes"), note) << saved;
    if (ending == "vsdx") {
      EXPECT_EQ(text(sheet, "Prop.Notes.Prompt"), note);
      EXPECT_EQ(text(sheet, "Prop.Both"), "new") << "the attribute counts where both are";
      EXPECT_EQ(sheet.findLocal(keyOf("Prop.Both.Label")), nullptr) << "blanks are no value";
      const std::string page = partOf(file, "/visio/pages/page1.xml");
      EXPECT_NE(page.find("<Cell N=\"Value\" U=\"STR\"" + contents), std::string::npos) << page;
      EXPECT_NE(page.find(R"(<Cell N="Value" V="new" U="STR"/>)"), std::string::npos) << page;
    }
    for (const char* const name : {"Prop.Notes", "Prop.Both"}) {
      if (host::Cell* const cell = sheet.findLocal(keyOf(name))) cell->value = Value::text("one\ntwo");
    }
    ASSERT_EQ(formatFor(file)->save(store, sheet.document, file), "");
    EXPECT_EQ(text(reopened(file), "Prop.Notes"), "one\ntwo");
    const std::string bytes = ending == "vdx" ? readFile(file) : partOf(file, "/visio/pages/page1.xml");
    EXPECT_EQ(bytes.find("First line", bytes.find("Value")),
              ending == "vdx" ? std::string::npos : bytes.rfind("First line"))
        << "only the prompt, which did not change";
  }
}

}  // namespace
}  // namespace quorvel::formats::testing
