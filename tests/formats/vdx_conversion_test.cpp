// From packages to single files and back: what both have is kept, and what only one has is where the
// other ignores it.
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

/// The lines of `before` that are not in `after`. Geometry by shares of the size is left out: it is read as
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

TEST_P(Conversion, LosesNothingThatBothHave) {
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
      "<Row T='RelQuadBezTo' IX='4'><Cell N='X' V='1'/><Cell N='Y' V='0'/><Cell N='A' V='0.5'/><Cell N='B' "
      "V='1'/></Row>"
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

TEST(NewerDrawing, IsInTheOlderFormatInItsOwnWay) {
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
           "<E F=\"NURBS(1,2,0,0,0.5,1,0,1)\">NURBS(1,2,0,0,0.5,1,0,1)</E>",
           "<A F=\"Width*0.5\">1</A><B F=\"Height*1\">1</B><C>0</C><D>2</D></EllipticalArcTo>",
           // The instance is twice as wide, so that what it inherits is at another place.
           "<MoveTo IX=\"1\"><X F=\"Inh\">0</X><Y F=\"Height*0.25\">0.25</Y></MoveTo>"
           "<NURBSTo IX=\"2\"><X F=\"Inh\">4</X>",
           // Its formula is for programs that have the function.
           "<LineColor>#102030</LineColor>",
           "<vx:LineColor F=\"THEMEVAL(&quot;LineColor&quot;,0)\">#102030",
           "<v14:DisplayLevel>9</v14:DisplayLevel>",
           "<FaceName ID=\"1\" Name=\"Calibri\"/>",
           "<Font>1</Font>",
           "<User NameU=\"Kind\" ID=\"1\" Del=\"1\"/><User NameU=\"Other\" ID=\"2\" Del=\"1\"/>",
           "<Prop NameU=\"Cost\" Name=\"Preis\" ID=\"1\"><Value Unit=\"STR\">5</Value></Prop>",
       })
    EXPECT_NE(xml.find(expected), std::string::npos) << expected;
  EXPECT_EQ(xml.find("vbaProject"), std::string::npos);

  const std::vector<std::string> missing =
      lost(StoreText(store).of(newer), StoreText(store).of(through(store, older, back)));
  EXPECT_EQ(missing.size(), 1u) << "a deleted section becomes deleted rows";
  EXPECT_EQ(partOf(back, "/visio/theme/theme1.xml"), newerDrawing()["visio/theme/theme1.xml"]);
  const std::string page = partOf(back, "/visio/pages/page1.xml");
  for (const char* const expected : {"LocalName=\"Preis\"", "FutureSection", "N=\"Invented\"", "N=\"DataLinked\""})
    EXPECT_NE(page.find(expected), std::string::npos) << expected;
}

TEST(NewerDrawing, NamesWhatASaveLeavesOut) {
  using Words = std::vector<std::string>;
  Parts parts = newerDrawing();
  parts["docProps/thumbnail.emf"] = "picture";
  parts["_xmlsignatures/sig1.xml"] = "<Signature/>";
  parts["customXml/item1.xml"] = "<mine/>";
  std::string& root = parts["_rels/.rels"];
  root.insert(root.find("</Relationships>"),
              "<Relationship Id='rId5' Target='docProps/thumbnail.emf' "
              "Type='http://schemas.openxmlformats.org/package/2006/relationships/metadata/thumbnail'/>");
  std::string& types = parts["[Content_Types].xml"];
  types.insert(types.find("</Types>"),
               "<Default Extension='emf' ContentType='image/x-emf'/><Override PartName='/_xmlsignatures/sig1.xml' "
               "ContentType='application/vnd.openxmlformats-package.digital-signature-xmlsignature+xml'/>");
  TemporaryFolder folder;
  const std::string source = folder.file("new.vsdm");
  writeFile(source, zipOf(parts));
  host::Store store;
  const host::Document& drawing = *store.document(formatFor(source)->open(store, source).document);
  EXPECT_EQ(leftOutBySave(drawing, "a.vsdm"), Words({"the digital signature"}));
  EXPECT_EQ(leftOutBySave(drawing, "a.vsdx"), Words({"the digital signature", "the macros"}));
  Words all = leftOutBySave(drawing, "a.vdx");
  std::ranges::sort(all);
  EXPECT_EQ(all,
            Words({"the digital signature", "the macros", "the preview picture", "what other programs keep in it"}));
  for (const char* const sample : {"network.vsdx", "basic_shapes.vdx", "network_devices.vdx"}) {
    const host::Document& plain = *store.document(formatFor(sample)->open(store, sampleFile(sample)).document);
    EXPECT_EQ(leftOutBySave(plain, sample), Words()) << sample << " in its own format";
  }
}

/// What only packages have is kept in the older format and is in the package again, with what changed.
TEST(NewerDrawing, KeepsWhatOnlyPackagesHaveInTheOlderFormat) {
  Parts parts = newerDrawing();
  const auto replace = [&](const char* part, const std::string& from, const std::string& to) {
    const std::size_t at = parts[part].find(from);
    ASSERT_NE(at, std::string::npos) << from;
    parts[part].replace(at, from.size(), to);
  };
  replace("visio/masters/masters.xml", "Name='Task'", "Name='Task' IsCustomName='1' IsCustomNameU='1' MasterType='2'");
  replace("visio/pages/pages.xml", "Name='Page-1'", "Name='Page-1' IsCustomName='0' NewAttribute='x'");
  replace("visio/pages/page1.xml", "OriginalID='0'", "OriginalID='9' NameU='A' Name='A' IsCustomName='1'");
  replace("visio/document.xml", "Name='No Style'", "Name='No Style' IsCustomName='1'");
  parts["docProps/core.xml"] =
      "<cp:coreProperties xmlns:cp='http://schemas.openxmlformats.org/package/2006/metadata/core-properties' "
      "xmlns:dc='http://purl.org/dc/elements/1.1/'><dc:title>Old</dc:title><cp:lastModifiedBy>Ann</cp:lastModifiedBy>"
      "<dc:language>de-DE</dc:language><x:Mine xmlns:x='urn:mine'>1</x:Mine></cp:coreProperties>";
  parts["docProps/app.xml"] =
      "<Properties xmlns='http://schemas.openxmlformats.org/officeDocument/2006/extended-properties' "
      "xmlns:vt='http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes'><HeadingPairs><vt:vector "
      "size='4' baseType='variant'><vt:variant><vt:lpstr>Zeichenblätter</vt:lpstr></vt:variant><vt:variant><vt:i4>1"
      "</vt:i4></vt:variant><vt:variant><vt:lpstr>Master-Shapes</vt:lpstr></vt:variant><vt:variant><vt:i4>1</vt:i4>"
      "</vt:variant></vt:vector></HeadingPairs><TitlesOfParts><vt:vector size='2' baseType='lpstr'><vt:lpstr>Page-1"
      "</vt:lpstr><vt:lpstr>Task</vt:lpstr></vt:vector></TitlesOfParts><AppVersion>15.0000</AppVersion></Properties>";
  parts["docProps/custom.xml"] =
      "<Properties xmlns='http://schemas.openxmlformats.org/officeDocument/2006/custom-properties' "
      "xmlns:vt='http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes'>"
      "<property fmtid='{D5CDD505-2E9C-101B-9397-08002B2CF9AE}' pid='2' name='IsMetric'><vt:bool>true</vt:bool>"
      "</property><property fmtid='{D5CDD505-2E9C-101B-9397-08002B2CF9AE}' pid='3' name='BuildNumberCreated'>"
      "<vt:i4>1006703189</vt:i4></property></Properties>";
  const std::string office = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
  replace("_rels/.rels", "</Relationships>",
          "<Relationship Id='rId2' Target='docProps/core.xml' "
          "Type='http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties'/>"
          "<Relationship Id='rId3' Target='docProps/app.xml' Type='" +
              office + "extended-properties'/><Relationship Id='rId4' Target='docProps/custom.xml' Type='" + office +
              "custom-properties'/></Relationships>");
  TemporaryFolder folder;
  const std::string source = folder.file("new.vsdx"), file = folder.file("old.vdx"), back = folder.file("back.vsdx");
  writeFile(source, zipOf(parts));
  host::Store store;
  const host::DocumentId newer = formatFor(source)->open(store, source).document;
  ASSERT_TRUE(newer);
  const host::DocumentId older = through(store, newer, file);
  EXPECT_NE(readFile(file).find("<BuildNumberCreated>1006703189</BuildNumberCreated>"), std::string::npos);
  EXPECT_NE(readFile(file).find(R"(<CustomProp Name="IsMetric" PropType="Boolean">true<)"), std::string::npos);
  store.document(older)->properties.title = "New";
  const host::PageId page = store.document(older)->pages.front();
  store.addPage(older, "Page-2");
  through(store, older, back);
  const auto expect = [&](const char* part, std::initializer_list<const char*> expected) {
    const std::string xml = partOf(back, part);
    for (const char* const one : expected) EXPECT_NE(xml.find(one), std::string::npos) << one << " in " << xml;
  };
  expect("/visio/masters/masters.xml", {R"(MasterType="2")", R"(IsCustomName="1")", R"(IsCustomNameU="1")"});
  expect("/visio/pages/pages.xml", {R"(NewAttribute="x")", R"(IsCustomName="0")"});
  expect("/visio/pages/page1.xml", {R"(OriginalID="9")", R"(Name="A" IsCustomName="1")"});
  expect("/visio/document.xml", {R"(Name="No Style" IsCustomName="1")"});
  expect("/docProps/core.xml", {"<dc:title>New<", ">Ann<", ">de-DE<", "urn:mine"});
  expect("/docProps/app.xml", {">Zeichenblätter<", ">Master-Shapes<", ">15.0000<", ">Page-2<"});
  expect("/docProps/custom.xml", {"<vt:bool>true<", "<vt:i4>1006703189<"});
  EXPECT_EQ(partOf(back, "/docProps/custom.xml").find("TimeEdited"), std::string::npos);
  EXPECT_TRUE(store.page(page));

  // A drawing of the older format has its kinds of properties in a package too.
  const std::string old = folder.file("props.vdx"), made = folder.file("props.vsdx"), again = folder.file("again.vdx");
  const std::string properties =
      "<BuildNumberCreated>671351309</BuildNumberCreated><CustomProps><CustomProp Name=\"Cost\" PropType=\"Number\">"
      "2.5</CustomProp><CustomProp Name=\"Due\" PropType=\"Date\">2014-12-05T18:00:00</CustomProp>"
      "<CustomProp Name=\"Free\" PropType=\"Boolean\">1</CustomProp></CustomProps>";
  writeFile(old, "<VisioDocument xmlns='http://schemas.microsoft.com/visio/2003/core'><DocumentProperties>" +
                     properties + "</DocumentProperties><Pages><Page ID='0'/></Pages></VisioDocument>");
  through(store, through(store, formatFor(old)->open(store, old).document, made), again);
  const std::string custom = partOf(made, "/docProps/custom.xml");
  for (const char* const expected :
       {"<vt:r8>2.5<", "<vt:filetime>2014-12-05T18:00:00<", "<vt:bool>1<", "<vt:i4>671351309<"})
    EXPECT_NE(custom.find(expected), std::string::npos) << expected << custom;
  for (const char* const expected :
       {"<BuildNumberCreated>671351309<", "PropType=\"Number\">2.5<", "PropType=\"Date\"", "PropType=\"Boolean\">1<"})
    EXPECT_NE(readFile(again).find(expected), std::string::npos) << expected;
}

}  // namespace
}  // namespace quorvel::formats::testing
