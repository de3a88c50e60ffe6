// Open, save, open: drawings of other programs and one with all features keep the same normal form.
#include <gtest/gtest.h>

#include "formats/drawing_files.h"
#include "formats/formats.h"
#include "formats/normal_form.h"
#include "host/cells/cell_name.h"
#include "host/sheet/inheritance.h"

namespace quorvel::formats::testing {
namespace {

using host::Sheet;
using host::SheetId;

class Samples : public ::testing::TestWithParam<const char*> {};

TEST_P(Samples, AreSavedUnchanged) {
  const std::string source = sampleFile(GetParam());
  TemporaryFolder folder;
  const std::string first = folder.file("first" + source.substr(source.rfind('.')));
  const std::string second = folder.file("second" + source.substr(source.rfind('.')));
  const auto& format = *formatFor(source);
  host::Store store;
  const host::OpenResult opened = format.open(store, source);
  ASSERT_TRUE(opened.document) << opened.error;
  ASSERT_EQ(format.save(store, opened.document, first), "");
  EXPECT_EQ(firstDifference(*normalForm(source), *normalForm(first)), "");
  const host::OpenResult again = format.open(store, first);
  ASSERT_TRUE(again.document) << again.error;
  ASSERT_EQ(format.save(store, again.document, second), "");
  EXPECT_TRUE(readFile(first) == readFile(second)) << "equal drawings give equal bytes";
}

INSTANTIATE_TEST_SUITE_P(Drawings, Samples,
                         ::testing::Values("connectors.vsdx", "roadmap.vstx", "shapes.vssx", "flowchart_shapes.vsdx",
                                           "network.vsdx"));

/// A drawing that uses all rare features of the format at once.
Parts everything() {
  Parts parts = partsWithMaster(
      "<Shapes><Shape ID='5' NameU='Task' Name='Task' Type='Group' LineStyle='0' FillStyle='0' TextStyle='0'>"
      "<Cell N='Width' V='1.5'/><Cell N='Height' V='1'/>"
      "<Section N='User'><Row N='Kind'><Cell N='Value' V='step' U='STR'/><Cell N='Prompt' V=''/></Row></Section>"
      "<Section N='Geometry' IX='0'><Cell N='NoFill' V='0'/>"
      "<Row T='RelMoveTo' IX='1'><Cell N='X' V='0'/><Cell N='Y' V='0'/></Row>"
      "<Row T='RelLineTo' IX='2'><Cell N='X' V='1'/><Cell N='Y' V='0'/></Row></Section>"
      "<Section N='Field'><Row IX='0'><Cell N='Value' V='x' U='STR'/></Row></Section>"
      "<Text>Task <fld IX='0'>x</fld></Text><Shapes><Shape ID='6' Type='Shape'><Cell N='PinX' V='0.5' "
      "F='Sheet.5!Width*0.5'/></Shape>"
      "<Shape ID='7' Type='Shape'><Text>band</Text></Shape></Shapes></Shape></Shapes>");
  std::string& document = parts["visio/document.xml"];
  document.insert(document.find("<StyleSheets>"),
                  "<Colors><ColorEntry IX='24' RGB='#7f7F7F'/></Colors>"
                  "<FaceNames><FaceName NameU='Calibri' Panose='2 15'/></FaceNames>");
  document.insert(
      document.find("</StyleSheets>"),
      "<StyleSheet ID='3' Name='Normal' NameU='Normal' IsCustomName='1' LineStyle='0' FillStyle='0' "
      "TextStyle='0'><Cell N='LineColor' V='Themed' F='THEMEVAL()'/>"
      "<Section N='FillGradient'><Row IX='9'><Cell N='GradientStopColor' V='4'/></Row></Section></StyleSheet>");
  document.insert(document.find("</VisioDocument>"),
                  "<DocumentSheet NameU='TheDoc' Name='TheDoc' LineStyle='0'><Cell N='OutputFormat' V='0'/>"
                  "<Section N='User'><Row N='Quorvel_dll_Version'><Cell N='Value' V='2.16'/></Row></Section>"
                  "</DocumentSheet><EventList><EventItem ID='1' EventCode='2' Action='1' Target='' TargetArgs=''/>"
                  "</EventList><HeaderFooter HeaderFooterColor='#000000'><HeaderLeft>&amp;n</HeaderLeft></HeaderFooter>"
                  "<x:Mine xmlns:x='urn:mine' a='1'>text<x:b/></x:Mine>");
  parts["visio/pages/pages.xml"] =
      "<Pages xmlns='http://schemas.microsoft.com/office/visio/2012/main' "
      "xmlns:r='http://schemas.openxmlformats.org/officeDocument/2006/relationships'>"
      "<Page ID='0' NameU='Page-1' Name='AB Order entry' BackPage='4' ViewScale='0.7'><PageSheet LineStyle='0'>"
      "<Cell N='PageWidth' V='11' U='IN'/><Section N='Layer'><Row IX='0'><Cell N='Name' V='VisibleLayer'/>"
      "<Cell N='Visible' V='1'/></Row><Row IX='1'><Cell N='Name' V='InvisibleLayer'/><Cell N='Visible' V='0'/></Row>"
      "</Section><Trigger N='RecalcColor'><RefBy T='Page' ID='0'/></Trigger></PageSheet><Rel r:id='rId1'/></Page>"
      "<Page ID='4' NameU='Back' Name='Back' Background='1'><Rel r:id='rId2'/></Page></Pages>";
  std::string& list = parts["visio/pages/_rels/pages.xml.rels"];
  list.insert(list.find("</Relationships>"),
              "<Relationship Id='rId2' Type='http://schemas.microsoft.com/visio/2010/relationships/page' "
              "Target='/visio/pages/page7.xml'/>");
  setPage(
      parts,
      "<Shapes><Shape ID='12' Name='AB01' NameU='AB01' Type='Group' Master='2' UniqueID='{1}' OriginalID='3'>"
      "<Cell N='PinX' V='2'/><Cell N='LayerMember' V='0;1'/>"
      "<Section N='Property'><Row N='Task_ID' LocalName='Nummer'><Cell N='Value' V='AB01' U='STR'/>"
      "<Cell N='Label' V='ID'/></Row></Section>"
      "<Section N='User'><Row N='kind' Del='1'/></Section><Section N='Geometry' IX='0' Del='1'/>"
      "<Section N='Hyperlink'><Row N='_Hyper'><Cell N='Address' V='https://example.org/?a=1&amp;b=2'/>"
      "<Cell N='SubAddress' V='CD Delivery/CD01'/></Row></Section>"
      "<Section N='Field'><Row IX='0'><Cell N='Value' V='AB01' U='STR' F='Prop.Task_ID'/></Row></Section>"
      "<Section N='Character'><Row IX='0'><Cell N='Size' V='0.125' U='PT'/></Row></Section>"
      "<Section N='FutureSection'><Row N='a'><Cell N='b' V='1'/></Row></Section>"
      "<Text><cp IX='0'/><pp IX='0'/>Take <fld IX='0'>AB01</fld> \n <tp IX='0'/>the order\n</Text>"
      "<Data1>Task</Data1><Data2></Data2>"
      "<Shapes><Shape ID='13' Type='Shape' MasterShape='6'/><Shape ID='4294967295' Del='1' MasterShape='7'/></Shapes>"
      "</Shape>"
      "<Shape ID='14' Type='Foreign'><ForeignData ForeignType='Bitmap' CompressionType='PNG' ExtentX='1'>"
      "<Rel r:id='rId9'/></ForeignData></Shape>"
      "<Shape ID='15' Type='Foreign'><ForeignData ForeignType='Bitmap' CompressionType='PNG' ExtentX='1'>"
      "<Rel r:id='rId9'/></ForeignData></Shape>"
      "<Shape ID='20' Type='Group' Master='2'><Section N='Field'><Row IX='0'><Cell N='Value' V='y' U='STR'/></Row>"
      "</Section><Shapes><Shape ID='21' Type='Shape' MasterShape='6'/>"
      "<Shape ID='22' Type='Shape' MasterShape='7'/></Shapes></Shape>"
      "<Shape ID='17' Type='Shape'><Section N='Field'><Row IX='0'><Cell N='Value' V='z' U='STR'/></Row></Section>"
      "<Text><fld IX='0' Later='1'>z</fld></Text></Shape>"
      "<Shape ID='16' Type='Guide'><Text>a<unknown/>b</Text><Mystery a='1'/></Shape></Shapes>"
      "<Connects><Connect FromSheet='14' FromCell='BeginX' FromPart='9' ToSheet='12' ToCell='PinX' ToPart='3'/>"
      "<Connect FromSheet='15' ToSheet='12' FromCell='EndX'/></Connects>");
  parts["visio/pages/_rels/page1.xml.rels"] =
      "<Relationships xmlns='http://schemas.openxmlformats.org/package/2006/relationships'>"
      "<Relationship Id='rId1' Type='http://schemas.microsoft.com/visio/2010/relationships/master' "
      "Target='../masters/master1.xml'/>"
      "<Relationship Id='rId9' Type='http://schemas.openxmlformats.org/officeDocument/2006/relationships/image' "
      "Target='../media/picture%20one.png'/>"
      "<Relationship Id='rId3' Type='urn:link' Target='https://example.org' TargetMode='External'/></Relationships>";
  parts["visio/pages/page7.xml"] = "<PageContents xmlns='http://schemas.microsoft.com/office/visio/2012/main'/>";
  parts["visio/media/picture one.png"] = "\x89PNG not really";
  parts["visio/theme/theme1.xml"] = "<a:theme xmlns:a='urn:a'>  <a:b/></a:theme>";
  parts["visio/theme/_rels/theme1.xml.rels"] =
      "<Relationships xmlns='http://schemas.openxmlformats.org/package/2006/relationships'/>";
  parts["visio/vbaProject.bin"] = std::string("\0macro\xFF", 7);
  parts["docProps/core.xml"] =
      "<cp:coreProperties xmlns:cp='http://schemas.openxmlformats.org/package/2006/metadata/core-properties' "
      "xmlns:dc='http://purl.org/dc/elements/1.1/'><dc:title>Orders</dc:title><dc:language>en</dc:language>"
      "</cp:coreProperties>";
  std::string& types = parts["[Content_Types].xml"];
  types.insert(types.find("</Types>"),
               "<Default Extension='png' ContentType='image/png'/>"
               "<Override PartName='/visio/pages/page7.xml' ContentType='application/vnd.ms-visio.page+xml'/>"
               "<Override PartName='/visio/theme/theme1.xml' ContentType='application/theme+xml'/>"
               "<Override PartName='/visio/vbaProject.bin' ContentType='application/vnd.ms-office.vbaProject'/>"
               "<Override PartName='/docProps/core.xml' "
               "ContentType='application/vnd.openxmlformats-package.core-properties+xml'/>");
  std::string& links = parts["visio/_rels/document.xml.rels"];
  links.insert(links.find("</Relationships>"),
               "<Relationship Id='rId7' Type='urn:theme' Target='theme/theme1.xml'/>"
               "<Relationship Id='rId8' Type='urn:macros' Target='vbaProject.bin'/>");
  std::string& root = parts["_rels/.rels"];
  root.insert(root.find("</Relationships>"),
              "<Relationship Id='rId2' Target='docProps/core.xml' "
              "Type='http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties'/>");
  const std::size_t drawing = types.find("drawing.main+xml");
  types.replace(drawing, 16, "drawing.macroEnabled.main+xml");
  return parts;
}

class EverythingTest : public ::testing::Test {
 protected:
  void SetUp() override {
    writeFile(file_, zipOf(everything()));
    const host::OpenResult opened = format_.open(store_, file_);
    ASSERT_TRUE(opened.document) << opened.error;
    document_ = opened.document;
  }
  const host::Page& page() { return *store_.page(store_.document(document_)->pages.front()); }
  Sheet& shape(int number) { return *store_.sheet(page().byShapeId.at(number)); }
  static host::CellKey key(const char* name) { return *host::parseCellName(name); }

  TemporaryFolder folder_;
  const std::string file_ = folder_.file("everything.vsdm");
  const host::DocumentFormat& format_ = *formatFor("a.vsdm");
  host::Store store_;
  host::DocumentId document_;
};

TEST_F(EverythingTest, IsSavedUnchanged) {
  const std::string saved = folder_.file("saved.vsdm");
  ASSERT_EQ(format_.save(store_, document_, saved), "");
  EXPECT_EQ(firstDifference(*normalForm(file_), *normalForm(saved)), "");
  EXPECT_EQ(partOf(saved, "/visio/vbaProject.bin"), everything()["visio/vbaProject.bin"]);
  EXPECT_EQ(partOf(saved, "/visio/media/picture one.png"), "\x89PNG not really");
}

TEST_F(EverythingTest, IsInTheEnginesData) {
  const host::Document& document = *store_.document(document_);
  EXPECT_EQ(document.name, "everything.vsdm");
  EXPECT_EQ(document.path + document.name, file_);
  EXPECT_EQ(document.properties.title, "Orders");
  EXPECT_EQ(page().name, "AB Order entry");
  ASSERT_TRUE(page().backPage);
  EXPECT_TRUE(store_.page(page().backPage)->background);

  const Sheet& task = shape(12);
  const host::Master& master = *store_.master(task.master);
  const Sheet& prototype = *store_.sheet(store_.page(master.contents)->shapes.front());
  EXPECT_EQ(task.prototype, prototype.id);
  EXPECT_EQ(shape(13).prototype, prototype.children[0]);
  EXPECT_EQ(task.children.size(), 1u) << "the deleted member does not count";
  EXPECT_EQ(task.data1, "Task");
  EXPECT_EQ(host::cellNumber(store_, task.id, key("Width")), 1.5) << "the master's";
  EXPECT_EQ(host::cellText(store_, task.id, key("Hyperlink._Hyper.Address")), "https://example.org/?a=1&b=2");
  EXPECT_FALSE(host::rowExists(store_, task.id, host::SectionNumber::User, key("User.Kind").row, false));
  ASSERT_TRUE(task.text);
  std::string text;
  for (const host::TextPiece& piece : *task.text) text += piece.text;
  EXPECT_EQ(text, "Take AB01 \n the order\n");
  ASSERT_TRUE(shape(14).foreign);
  EXPECT_EQ(shape(14).foreign->bytes, "\x89PNG not really");
  EXPECT_EQ(shape(14).foreign, shape(15).foreign) << "one picture, held once";
  ASSERT_EQ(page().connects.size(), 2u);
  EXPECT_EQ(page().connects[1].fromCell, "EndX");
}

TEST_F(EverythingTest, SaysWhatItIsByItsEnding) {
  const struct {
    const char *name, *type;
    bool macros, stencil;
  } cases[] = {{"a.vsdx", "visio.drawing.main", false, false},
               {"a.vssx", "visio.stencil.main", false, true},
               {"a.vstx", "visio.template.main", false, false},
               {"A.VSSM", "visio.stencil.macroEnabled.main", true, true}};
  for (const auto& one : cases) {
    const std::string saved = folder_.file(one.name);
    ASSERT_EQ(format_.save(store_, document_, saved), "");
    EXPECT_NE(partOf(saved, "/[Content_Types].xml").find(one.type), std::string::npos) << one.name;
    EXPECT_EQ(!partOf(saved, "/visio/vbaProject.bin").empty(), one.macros) << one.name;
    const host::OpenResult opened = format_.open(store_, saved);
    ASSERT_TRUE(opened.document) << opened.error;
    EXPECT_EQ(store_.document(opened.document)->isStencil, one.stencil);
  }
}

/// A large part is read piece by piece; a small one as a whole. Both give the same drawing.
TEST(LargePart, ReadsLikeASmallOne) {
  std::string shapes;
  for (int i = 1; i <= 5000; ++i)
    shapes +=
        "<Shape ID='" + std::to_string(i) + "' Type='Shape'><!-- </Shape> --><Cell N='PinX' V='" + std::to_string(i) +
        "'/><Section N='User'><Row N='a'><Cell N='Value' V='&lt;/Shapes&gt;' U='STR'/></Row>"
        "</Section><Text><![CDATA[a </Shape> b]]></Text>" +
        (i % 2 ? "<Shapes><Shape ID='" + std::to_string(i + 10000) + "' Name=\"a > b\"/></Shapes>" : "") + "</Shape>";
  Parts parts = plainParts();
  setPage(parts, "<Shapes>" + shapes + "</Shapes><Connects><Connect FromSheet='1' ToSheet='2'/></Connects>");
  TemporaryFolder folder;
  const std::string file = folder.file("large.vsdx"), saved = folder.file("saved.vsdx");
  writeFile(file, zipOf(parts));
  ASSERT_GT(parts["visio/pages/page1.xml"].size(), 1u << 20) << "or this test tests nothing";
  host::Store store;
  const host::OpenResult opened = formatFor(file)->open(store, file);
  ASSERT_TRUE(opened.document) << opened.error;
  ASSERT_EQ(formatFor(file)->save(store, opened.document, saved), "");
  EXPECT_EQ(firstDifference(*normalForm(file), *normalForm(saved)), "");

  std::string& page = parts["visio/pages/page1.xml"];
  page.replace(page.rfind("<Section N='User'>"), 1, " ");
  writeFile(file, zipOf(parts));
  EXPECT_NE(formatFor(file)->open(store, file).error.find("not well-formed"), std::string::npos);
}

}  // namespace
}  // namespace quorvel::formats::testing
