// From packages to single files and back: what both can hold comes through, and what only one has stands where the
// other passes over it.
#include <gtest/gtest.h>

#include <set>

#include "formats/drawing_files.h"
#include "formats/formats.h"
#include "formats/store_text.h"

namespace quorvel::formats::testing {
namespace {

/// Saves under the new name and opens that.
host::DocumentId through(host::Store& store, host::DocumentId document, const std::string& file) {
  EXPECT_EQ(formatFor(file)->save(store, document, file), "");
  const host::OpenResult opened = formatFor(file)->open(store, file);
  EXPECT_TRUE(opened.document) << opened.error;
  return opened.document;
}

/// The lines of `before` that are not in `after`. Geometry by shares of the size is left out: it comes back as
/// coordinates.
std::vector<std::string> lost(const std::vector<std::string>& before, const std::vector<std::string>& after) {
  const auto relativeRow = [](const std::string& line) {
    const std::size_t type = line.find(" type 2");
    const bool isRelative = type != std::string::npos && std::stoi(line.substr(type + 6)) >= 236;
    return isRelative ? line.substr(0, type) + "." : std::string();
  };
  std::set<std::string> relative;
  for (const std::string& line : before) relative.insert(relativeRow(line));
  const std::multiset<std::string> there(after.begin(), after.end());
  std::vector<std::string> missing;
  for (const std::string& line : before) {
    if (there.contains(line) || !relativeRow(line).empty()) continue;
    const std::size_t cell = line.find(" = ");
    if (cell != std::string::npos && relative.contains(line.substr(0, line.rfind('.', cell) + 1))) continue;
    missing.push_back(line);
  }
  return missing;
}

class Conversion : public ::testing::TestWithParam<std::pair<const char*, const char*>> {};

TEST_P(Conversion, LosesNothingThatBothCanHold) {
  TemporaryFolder folder;
  const auto& [source, other] = GetParam();
  host::Store store;
  const host::OpenResult opened = formatFor(source)->open(store, sampleFile(source));
  ASSERT_TRUE(opened.document) << opened.error;
  const std::vector<std::string> before = StoreText(store).of(opened.document);
  const host::DocumentId there = through(store, opened.document, folder.file(other));
  EXPECT_EQ(lost(before, StoreText(store).of(there)), std::vector<std::string>());
  const host::DocumentId back = through(store, there, folder.file(source));
  EXPECT_EQ(lost(before, StoreText(store).of(back)), std::vector<std::string>());
}

INSTANTIATE_TEST_SUITE_P(Drawings, Conversion,
                         ::testing::Values(std::pair("connectors.vsdx", "a.vdx"), std::pair("roadmap.vstx", "a.vtx"),
                                           std::pair("shapes.vssx", "a.vsx"),
                                           std::pair("flowchart_shapes.vsdx", "a.vdx"),
                                           std::pair("network.vsdx", "a.vdx"), std::pair("basic_shapes.vdx", "a.vsdx"),
                                           std::pair("network_devices.vdx", "a.vsdx")));

/// A package whose parts use what older releases lack.
Parts newerDrawing() {
  Parts parts = partsWithMaster(
      "<Shapes><Shape ID='5' Type='Shape'><Cell N='Width' V='2'/><Cell N='Height' V='1'/>"
      "<Section N='User'><Row N='Kind'><Cell N='Value' V='1'/></Row><Row N='Other'><Cell N='Value' "
      "V='2'/></Row></Section>"
      "<Section N='Geometry' IX='0'><Cell N='NoFill' V='0'/>"
      "<Row T='RelMoveTo' IX='1'><Cell N='X' V='0'/><Cell N='Y' V='0.5'/></Row>"
      "<Row T='RelCubBezTo' IX='2'><Cell N='X' V='1'/><Cell N='Y' V='0.5'/><Cell N='A' V='0.25'/><Cell N='B' V='1'/>"
      "<Cell N='C' V='0.75'/><Cell N='D' V='0' F='User.Kind*0'/></Row>"
      "<Row T='RelEllipticalArcTo' IX='3'><Cell N='X' V='0'/><Cell N='Y' V='0.5'/><Cell N='A' V='0.5'/>"
      "<Cell N='B' V='1'/><Cell N='C' V='0'/><Cell N='D' V='2'/></Row></Section></Shape></Shapes>");
  setPage(
      parts,
      "<Shapes><Shape ID='1' Type='Shape' Master='2' OriginalID='0'><Cell N='Width' V='4'/>"
      "<Cell N='LineColor' V='#102030' F='THEMEVAL(\"LineColor\",0)'/><Cell N='QuickStyleLineColor' V='3'/>"
      "<Cell N='DisplayLevel' V='9'/><Cell N='Invented' V='1'/>"
      "<Section N='Property'><Row N='Cost' LocalName='Preis'><Cell N='Value' V='5' U='STR'/>"
      "<Cell N='DataLinked' V='1'/></Row></Section><Section N='User' Del='1'/>"
      "<Section N='Character'><Row IX='0'><Cell N='Font' V='Calibri'/><Cell N='AsianFont' V='Themed' F='THEMEVAL()'/>"
      "</Row></Section><Section N='FillGradient'><Row IX='0'><Cell N='GradientStopColor' V='4'/></Row></Section>"
      "<Section N='Geometry' IX='0'><Row T='RelMoveTo' IX='1'><Cell N='Y' V='0.25'/></Row></Section>"
      "<Section N='FutureSection'><Row N='a'><Cell N='b' V='1'/></Row></Section></Shape></Shapes>");
  std::string& rels = parts["visio/_rels/document.xml.rels"];
  rels.insert(rels.find("</Relationships>"),
              "<Relationship Id='rId7' Type='urn:theme' Target='theme/theme1.xml'/>"
              "<Relationship Id='rId8' Type='urn:macros' Target='vbaProject.bin'/>");
  parts["visio/theme/theme1.xml"] = "<a:theme xmlns:a='urn:a'/>";
  parts["visio/vbaProject.bin"] = "macro";
  std::string& types = parts["[Content_Types].xml"];
  types.insert(types.find("</Types>"),
               "<Override PartName='/visio/theme/theme1.xml' ContentType='application/theme+xml'/>"
               "<Override PartName='/visio/vbaProject.bin' ContentType='application/vnd.ms-office.vbaProject'/>");
  return parts;
}

TEST(NewerDrawing, StandsInTheOlderFormatAsItWouldHaveSaidIt) {
  TemporaryFolder folder;
  const std::string source = folder.file("new.vsdx"), file = folder.file("old.vdx"), back = folder.file("back.vsdx");
  writeFile(source, zipOf(newerDrawing()));
  host::Store store;
  const host::DocumentId newer = formatFor(source)->open(store, source).document;
  ASSERT_TRUE(newer);
  const host::DocumentId older = through(store, newer, file);
  const std::string xml = readFile(file);
  for (const char* const expected : {
           // Older programs read coordinates; a cubic curve is a spline of one span.
           "<MoveTo IX=\"1\"><X F=\"Width*0\">0</X><Y F=\"Height*0.5\">0.5</Y></MoveTo>",
           "<E F=\"NURBS(1,3,0,0,0.25,1,0,1,0.75,User.Kind*0,0,1)\">NURBS(1,3,0,0,0.25,1,0,1,0.75,0,0,1)</E>",
           "<A F=\"Width*0.5\">1</A><B F=\"Height*1\">1</B><C>0</C><D>2</D></EllipticalArcTo>",
           // The instance is twice as wide, so that what it inherits stands elsewhere.
           "<MoveTo IX=\"1\"><X F=\"Inh\">0</X><Y F=\"Height*0.25\">0.25</Y></MoveTo>"
           "<NURBSTo IX=\"2\"><X F=\"Inh\">4</X>",
           // Its formula is for programs that know the function.
           "<LineColor>#102030</LineColor>",
           "<vx:LineColor F=\"THEMEVAL(&quot;LineColor&quot;,0)\">#102030",
           "<v14:DisplayLevel>9</v14:DisplayLevel>",
           "<FaceName ID=\"1\" Name=\"Calibri\"/>",
           "<Font>1</Font>",
           "<User NameU=\"Kind\" ID=\"1\" Del=\"1\"/><User NameU=\"Other\" ID=\"2\" Del=\"1\"/>",
           "<Prop NameU=\"Cost\" Name=\"Preis\" ID=\"1\"><Value Unit=\"STR\">5</Value></Prop>",
       })
    EXPECT_NE(xml.find(expected), std::string::npos) << expected;
  EXPECT_EQ(xml.find("OriginalID"), std::string::npos);
  EXPECT_EQ(xml.find("vbaProject"), std::string::npos);

  const std::vector<std::string> missing =
      lost(StoreText(store).of(newer), StoreText(store).of(through(store, older, back)));
  EXPECT_EQ(missing.size(), 1u) << "a deleted section comes back as deleted rows";
  EXPECT_EQ(partOf(back, "/visio/theme/theme1.xml"), newerDrawing()["visio/theme/theme1.xml"]);
  const std::string page = partOf(back, "/visio/pages/page1.xml");
  for (const char* const expected : {"LocalName=\"Preis\"", "FutureSection", "N=\"Invented\"", "N=\"DataLinked\""})
    EXPECT_NE(page.find(expected), std::string::npos) << expected;
}

}  // namespace
}  // namespace quorvel::formats::testing
