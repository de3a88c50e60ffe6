// Single-file drawings: open, save, open gives the same normal form, and what they contain is in the engine's data.
#include <gtest/gtest.h>

#include "formats/drawing_files.h"
#include "formats/formats.h"
#include "formats/normal_form.h"
#include "host/cells/cell_name.h"
#include "host/sheet/inheritance.h"
#include "host/text/text.h"

namespace quorvel::formats::testing {
namespace {

using host::Sheet;
using host::SheetId;

const host::DocumentFormat& vdx() { return *formatFor("a.vdx"); }

class SingleFileSamples : public ::testing::TestWithParam<const char*> {};

TEST_P(SingleFileSamples, AreSavedUnchanged) {
  const std::string source = sampleFile(GetParam());
  TemporaryFolder folder;
  const std::string first = folder.file("first.vdx"), second = folder.file("second.vdx");
  host::Store store;
  const host::OpenResult opened = vdx().open(store, source);
  ASSERT_TRUE(opened.document) << opened.error;
  ASSERT_EQ(vdx().save(store, opened.document, first), "");
  EXPECT_EQ(firstDifference(*normalForm(source), *normalForm(first)), "");
  const host::OpenResult again = vdx().open(store, first);
  ASSERT_TRUE(again.document) << again.error;
  ASSERT_EQ(vdx().save(store, again.document, second), "");
  EXPECT_TRUE(readFile(first) == readFile(second)) << "equal drawings give equal bytes";
}

INSTANTIATE_TEST_SUITE_P(Drawings, SingleFileSamples, ::testing::Values("basic_shapes.vdx", "network_devices.vdx"));

/// A drawing that uses all rare features of the format at once.
const char* const everything =
    "<?xml version='1.0' encoding='utf-8'?>"
    "<VisioDocument xmlns='http://schemas.microsoft.com/visio/2003/core' key='A0' start='190' version='11.0'"
    " xmlns:vx='http://schemas.microsoft.com/visio/2006/extension' xml:space='preserve'>"
    "<DocumentProperties><Title>Orders</Title><Template>C:\\maps\\Map.vst</Template><HyperlinkBase href='maps/'/>"
    "<BuildNumberCreated>7</BuildNumberCreated><CustomProps><CustomProp Name='Owner' PropType='String'>Ann</CustomProp>"
    "</CustomProps><TimeCreated>2006-05-04T03:02:01</TimeCreated></DocumentProperties>"
    "<DocumentSettings TopPage='0' DefaultLineStyle='3'><GlueSettings>9</GlueSettings><ProtectShapes>1</ProtectShapes>"
    "</DocumentSettings><Colors><ColorEntry IX='24' RGB='#7f7F7F'/></Colors>"
    "<PrintSetup><PaperSize>9</PaperSize></PrintSetup>"
    "<FaceNames><FaceName ID='4' Name='Arial' Panos='2 11'/><FaceName ID='7' Name='Georgia'/></FaceNames>"
    "<StyleSheets><StyleSheet ID='0' NameU='No Style'>"
    "<Char IX='0'><Font F='0'>4</Font><Color>0</Color><Style>0</Style><Case>0</Case><Pos>0</Pos>"
    "<FontScale>1</FontScale><Size Unit='IN'>0.16666666666666666</Size><DblUnderline Unit='BOOL'>0</DblUnderline>"
    "<Overline Unit='BOOL'>0</Overline><Strikethru Unit='BOOL'>0</Strikethru><Highlight>0</Highlight>"
    "<DoubleStrikethrough Unit='BOOL'>0</DoubleStrikethrough><RTLText Unit='BOOL'>0</RTLText>"
    "<UseVertical Unit='BOOL'>0</UseVertical><Letterspace Unit='IN'>0</Letterspace><ColorTrans>0</ColorTrans>"
    "<AsianFont>0</AsianFont><ComplexScriptFont>0</ComplexScriptFont><LocalizeFont>0</LocalizeFont>"
    "<ComplexScriptSize>-1</ComplexScriptSize><LangID>0</LangID></Char>"
    "</StyleSheet>"
    "<StyleSheet ID='3' NameU='Normal' LineStyle='0'><Line><LineWeight F='0.01DT'>0.01</LineWeight></Line>"
    "<Fill><FillForegnd>#ffffff</FillForegnd></Fill><vx:Fill><vx:FillForegnd F='THEME(&quot;FillColor&quot;)'>#ffffff"
    "</vx:FillForegnd></vx:Fill></StyleSheet></StyleSheets>"
    "<DocumentSheet NameU='TheDoc' LineStyle='0'><User NameU='Version' ID='4'><Value Unit='STR'>2&#13;3</Value>"
    "<Prompt F='No Formula'/></User></DocumentSheet>"
    "<Masters><Master ID='2' NameU='Task' Name='Aufgabe' Prompt='Drag me' IconSize='1'><PageSheet><PageProps>"
    "<PageWidth Unit='IN'>3</PageWidth></PageProps></PageSheet><Shapes><Shape ID='5' Type='Group' LineStyle='3'>"
    "<XForm><Width>1.5</Width><Height>1</Height></XForm><User NameU='Kind' ID='1'><Value Unit='STR'>step</Value></User>"
    "<Prop ID='3'><Value Unit='STR'>&#xe000;</Value><Label>Cost</Label></Prop>"
    "<Geom IX='0'><NoFill>0</NoFill><MoveTo IX='1'><X F='Width*0'>0</X><Y>0</Y></MoveTo>"
    "<LineTo IX='2'><X F='Width'>1.5</X><Y>1</Y></LineTo></Geom><Text>Task</Text>"
    "<Shapes><Shape ID='6' Type='Shape'/><Shape ID='7' Type='Shape'/></Shapes></Shape></Shapes>"
    "<Icon>AAEC Aw==</Icon></Master><MasterShortcut ID='9' NameU='Far' ShortcutURL='other.vss'/></Masters>"
    "<Pages><Page ID='0' NameU='Page-1' Name='AB Order entry' BackPage='4' ViewScale='0.7'><PageSheet>"
    "<Layer IX='0'><Name>Flow</Name><Visible>1</Visible></Layer></PageSheet><Shapes>"
    "<Shape ID='12' NameU='AB01' Type='Group' Master='2' UniqueID='{1}'>"
    "<XForm Del='0'><PinX Unit='MM' F='50.8MM'>2</PinX><Width Err='#DIV/0!' F='1/0'>1.5</Width>"
    "<Angle F='Inh'>0</Angle></XForm><Misc><Comment F='Inh'/></Misc><LayerMem><LayerMember>0</LayerMember></LayerMem>"
    "<Line><LineColor F='Not (a formula'>3</LineColor></Line><Fill><FillForegnd>2<SolutionXML "
    "Name='s'><q/></SolutionXML>"
    "</FillForegnd></Fill><vx:Protection><vx:LockThemeColors>1</vx:LockThemeColors></vx:Protection>"
    "<x:Mine xmlns:x='urn:mine' a='1'>kept</x:Mine>"
    "<User NameU='Kind' ID='1' Del='1'/><Prop ID='3'><Value Unit='STR'>12 EUR</Value></Prop>"
    "<Prop NameU='When' Name='Wann' ID='8'><Value Unit='DATE'>2006-05-04T00:00:00</Value><Type>5</Type></Prop>"
    "<Act IX='0'><Menu>Show</Menu><Action F='SETF(&quot;User.a&quot;,1)'>0</Action></Act>"
    "<ConnectionABCD IX='0'><X>0.5</X><A>1</A><D>7</D></ConnectionABCD><Connection NameU='Out' ID='2'><X>1</X>"
    "</Connection><Hyperlink NameU='Row_1' ID='1'><Address>https://example.org/?a=1&amp;b=2</Address></Hyperlink>"
    "<Field IX='0'><Value Unit='STR' F='Prop.Row_3'>12 EUR</Value><Format Unit='STR'>@</Format></Field>"
    "<Char IX='0'><Font>7</Font><Color F='Inh'>0</Color><Style F='Inh'>0</Style><Case F='Inh'>0</Case>"
    "<Pos F='Inh'>0</Pos><FontScale F='Inh'>1</FontScale><Size Unit='PT'>0.125</Size>"
    "<DblUnderline Unit='BOOL' F='Inh'>0</DblUnderline><Overline Unit='BOOL' F='Inh'>0</Overline>"
    "<Strikethru Unit='BOOL' F='Inh'>0</Strikethru><Highlight F='Inh'>0</Highlight>"
    "<DoubleStrikethrough Unit='BOOL' F='Inh'>0</DoubleStrikethrough><RTLText Unit='BOOL' F='Inh'>0</RTLText>"
    "<UseVertical Unit='BOOL' F='Inh'>0</UseVertical><Letterspace Unit='IN' F='Inh'>0</Letterspace>"
    "<ColorTrans F='Inh'>0</ColorTrans><AsianFont F='Inh'>0</AsianFont>"
    "<ComplexScriptFont F='Inh'>0</ComplexScriptFont><LocalizeFont F='Inh'>0</LocalizeFont>"
    "<ComplexScriptSize F='Inh'>-1</ComplexScriptSize><LangID F='Inh'>0</LangID></Char>"
    "<Para IX='0'><IndFirst Unit='IN' F='Inh'>0</IndFirst><IndLeft Unit='IN' F='Inh'>0</IndLeft>"
    "<IndRight Unit='IN' F='Inh'>0</IndRight><SpLine Unit='IN' F='Inh'>-1.2</SpLine>"
    "<SpBefore Unit='IN' F='Inh'>0</SpBefore><SpAfter Unit='IN' F='Inh'>0</SpAfter><HorzAlign>0</HorzAlign>"
    "<Bullet F='Inh'>0</Bullet><BulletStr F='Inh'/><BulletFont F='Inh'>0</BulletFont>"
    "<LocalizeBulletFont F='Inh'>0</LocalizeBulletFont><BulletFontSize Unit='IN' F='Inh'>-1</BulletFontSize>"
    "<TextPosAfterBullet Unit='IN' F='Inh'>0</TextPosAfterBullet><Flags>0</Flags></Para>"
    "<Tabs IX='0'><Tab IX='0'><Position>1</Position><Alignment>2</Alignment>"
    "</Tab></Tabs><Geom IX='0'><LineTo IX='2'><X F='Inh'>1.5</X></LineTo></Geom><Geom IX='1' Del='1'/>"
    "<Text><cp IX='0'/><pp IX='0'/>Take <fld IX='0'>12 EUR</fld> \n the order\n</Text><Data1>Task</Data1><Data2/>"
    "<Shapes><Shape ID='13' MasterShape='6'/><Shape ID='4294967295' Del='1' MasterShape='7'/></Shapes></Shape>"
    "<Shape ID='14' Type='Foreign'><ForeignData ForeignType='Bitmap' "
    "ExtentX='1'>KAAAAAEAAAABAAAAAQAYAAAAAAAEAAAAAAAAAAAA"
    "AAAAAAAAAAAAAP8AAAA=</ForeignData></Shape>"
    "<Shape ID='15' Type='Foreign'><ForeignData ForeignType='Ink'>no base64!</ForeignData></Shape></Shapes>"
    "<Connects><Connect FromSheet='14' FromCell='BeginX' FromPart='9' ToSheet='12' ToCell='PinX' ToPart='3'/>"
    "<Connect FromSheet='15' FromCell='EndX' ToSheet='12' ToCell='PinX'/></Connects></Page>"
    "<Page ID='4' NameU='Back' Background='1'/></Pages>"
    "<Windows><Window ID='0' WindowType='Drawing'/></Windows>"
    "<EventList><EventItem ID='1' EventCode='2' Action='1' Enabled='1' Target='' TargetArgs=''/></EventList>"
    "<HeaderFooter HeaderFooterColor='#000000'><HeaderLeft>&amp;n</HeaderLeft></HeaderFooter>"
    "<VBProjectData>AAEC</VBProjectData><SolutionXML Name='a'><b xmlns='urn:b'/></SolutionXML>"
    "<SolutionXML Name='c'>d</SolutionXML><vx:DataRecordSets NextID='2'/></VisioDocument>";

class SingleFile : public ::testing::Test {
 protected:
  void SetUp() override {
    writeFile(file_, everything);
    const host::OpenResult opened = vdx().open(store_, file_);
    ASSERT_TRUE(opened.document) << opened.error;
    document_ = opened.document;
  }
  const host::Page& page() { return *store_.page(store_.document(document_)->pages.front()); }
  Sheet& shape(int number) { return *store_.sheet(page().byShapeId.at(number)); }
  static host::CellKey key(const char* name) { return *host::parseCellName(name); }
  std::string text(int number, const char* name) { return host::cellText(store_, shape(number).id, key(name)); }
  std::string saved(const char* name) {
    EXPECT_EQ(vdx().save(store_, document_, folder_.file(name)), "");
    return readFile(folder_.file(name));
  }

  TemporaryFolder folder_;
  const std::string file_ = folder_.file("everything.vdx");
  host::Store store_;
  host::DocumentId document_;
};

TEST_F(SingleFile, IsSavedUnchanged) {
  saved("saved.vdx");
  EXPECT_EQ(firstDifference(*normalForm(file_), *normalForm(folder_.file("saved.vdx"))), "");
}

TEST_F(SingleFile, IsInTheEnginesData) {
  const host::Document& document = *store_.document(document_);
  EXPECT_EQ(document.properties.title, "Orders");
  EXPECT_EQ(document.properties.templateName, "Map.vst");
  EXPECT_EQ(document.properties.hyperlinkBase, "maps/");
  EXPECT_EQ(document.properties.timeCreated, "2006-05-04T03:02:01Z");
  EXPECT_EQ(document.properties.custom.at("Owner"), "Ann");
  EXPECT_EQ(store_.sheet(document.defaultLineStyle)->name, "Normal");
  EXPECT_EQ(store_.page(page().backPage)->name, "Back");
  const host::Master& master = *store_.master(shape(12).master);
  EXPECT_EQ(master.name, "Aufgabe");
  const Sheet& prototype = *store_.sheet(store_.page(master.contents)->shapes.front());
  EXPECT_EQ(shape(12).prototype, prototype.id);
  EXPECT_EQ(shape(13).prototype, prototype.children[0]);
  EXPECT_EQ(shape(12).children.size(), 1u) << "the deleted member does not count";

  EXPECT_EQ(host::cellNumber(store_, shape(12).id, key("Height")), 1) << "the master's";
  EXPECT_EQ(text(12, "PinX"), "50.8 mm");
  EXPECT_EQ(text(12, "Prop.Row_3"), "12 EUR") << "a row without a name is named by its number";
  EXPECT_EQ(text(12, "Prop.Row_3.Label"), "Cost");
  EXPECT_EQ(host::cellValue(store_, prototype.id, key("Prop.Row_3")), host::Value::text(""));
  EXPECT_EQ(text(12, "Hyperlink.Row_1.Address"), "https://example.org/?a=1&b=2");
  EXPECT_EQ(text(12, "Char.Font"), "Georgia");
  EXPECT_EQ(text(12, "LockThemeColors"), "1");
  EXPECT_EQ(text(12, "Actions.Menu[1]"), "Show");
  EXPECT_EQ(text(12, "Connections.D[1]"), "7");
  EXPECT_EQ(host::cellNumber(store_, shape(12).id, {host::SectionNumber::Tab, host::RowKey::index(0), 1}), 1);
  EXPECT_FALSE(host::rowExists(store_, shape(12).id, host::SectionNumber::User, key("User.Kind").row, false));
  const Sheet& normal = *store_.sheet(store_.styleNamed(document_, "Normal"));
  EXPECT_EQ(host::formulaText(*normal.findLocal(key("FillForegnd"))), "THEME(\"FillColor\")");
  EXPECT_EQ(host::shownText(store_, shape(12).id), "Take 12 EUR \n the order");
  ASSERT_TRUE(shape(14).foreign);
  EXPECT_TRUE(shape(14).foreign->bytes.starts_with("BM")) << "viewers need the header that the file leaves out";
  EXPECT_FALSE(shape(15).foreign);
  EXPECT_EQ(page().connects[1].fromCell, "EndX");
}

TEST_F(SingleFile, HasWhatTheEngineChanged) {
  shape(12).local(key("FillForegnd")).value = host::Value::number(5);
  shape(12).local(key("PinX")) = {};
  shape(12).local(key("PinX")).value = host::Value::number(3, host::Unit::Inches);
  shape(12).local(key("Char.Font")).value = host::Value::text("Papyrus");
  Sheet& normal = *store_.sheet(store_.styleNamed(document_, "Normal"));
  host::Cell& themed = *normal.findLocal(key("FillForegnd"));
  themed.formula = nullptr;
  themed.value = host::Value::colour(0x102030);
  store_.document(document_)->properties.title = "Bills & <orders>";
  store_.document(document_)->properties.custom = {{"Place", "here"}};
  const host::Atom name = host::intern("New");
  host::Row& row = shape(12).section(host::SectionNumber::Property).rows.emplace_back();
  row.key = host::RowKey::named(name);
  row.name = name;
  row.at(2).value = host::Value::text("Label");
  host::Row& link = store_.sheet(shape(12).prototype)->section(host::SectionNumber::Hyperlink).rows.emplace_back();
  link.key = host::RowKey::index(0);
  link.at(key("Hyperlink.Row_1.Address").column).value = host::Value::text("inherited");

  const std::string xml = saved("changed.vdx");
  for (const char* const expected : {
           "<FillForegnd>5<SolutionXML Name=\"s\"><q/></SolutionXML></FillForegnd>",
           "<PinX Unit=\"IN\">3</PinX>",
           "<FaceName ID=\"4\" Name=\"Arial\" Panos=\"2 11\"/>",
           "<FaceName ID=\"8\" Name=\"Papyrus\"/>",
           "<Font>8</Font>",
           "<FillForegnd>#102030</FillForegnd>",
           "<Title>Bills &amp; &lt;orders&gt;</Title>",
           "<CustomProp Name=\"Place\" PropType=\"String\">here</CustomProp>",
           "<Hyperlink ID=\"1\"><Address>inherited</Address></Hyperlink>",
           "<Hyperlink NameU=\"Row_101\" ID=\"101\"><Address>",  // read as another row than the inherited one
           "<Prop NameU=\"New\" ID=\"9\"><Label>Label</Label></Prop>",
       })
    EXPECT_NE(xml.find(expected), std::string::npos) << expected;
  for (const char* const absent : {"<vx:FillForegnd", "Owner", "key=\"A0\"", "start=\"190\""})
    EXPECT_EQ(xml.find(absent), std::string::npos) << absent;
}

TEST_F(SingleFile, IsAStencilByItsEnding) {
  for (const auto& [name, stencil] : {std::pair("a.vsx", true), std::pair("A.VTX", false), std::pair("a.vdx", false)}) {
    saved(name);
    const host::OpenResult opened = vdx().open(store_, folder_.file(name));
    ASSERT_TRUE(opened.document) << opened.error;
    EXPECT_EQ(store_.document(opened.document)->isStencil, stencil) << name;
  }
  EXPECT_NE(vdx().save(store_, document_, folder_.file("a.vsdx")), "");
  EXPECT_FALSE(std::filesystem::exists(folder_.file("a.vsdx")));
}

TEST(SingleFileHarm, IsRefusedOrOpened) {
  TemporaryFolder folder;
  const std::string file = folder.file("map.vdx");
  const auto errorOf = [&](const std::string& bytes) {
    writeFile(file, bytes);
    host::Store store;
    const std::string error = vdx().open(store, file).error;
    EXPECT_EQ(store.documents().empty(), !error.empty());
    return error;
  };
  const std::string root = "<VisioDocument xmlns='http://schemas.microsoft.com/visio/2003/core'>";
  std::string groups;
  for (int i = 0; i < 5000; ++i) groups += "<Shape><Shapes>";
  for (int i = 0; i < 5000; ++i) groups += "</Shapes></Shape>";
  EXPECT_NE(errorOf("<!DOCTYPE a [<!ENTITY x SYSTEM 'file:///etc/passwd'>]>" + root + "&x;</VisioDocument>")
                .find("document type"),
            std::string::npos);
  EXPECT_NE(errorOf(root + "<Pages><Page ID='0'><Shapes>" + groups + "</Shapes></Page></Pages></VisioDocument>")
                .find("too deep"),
            std::string::npos);
  EXPECT_EQ(
      errorOf(root + "<StyleSheets><StyleSheet ID='0' LineStyle='1'/><StyleSheet ID='1' LineStyle='0'/>"
                     "</StyleSheets><Masters><Master ID='1'><Shapes><Shape ID='1' Master='1'/></Shapes></Master>"
                     "<Master ID='1'/></Masters><Pages><Page ID='0' BackPage='0'><Shapes><Shape ID='-3'><Geom IX='"
                     "999'/><Geom IX='0'><LineTo IX='-1'/><Ellipse IX='99999999999'/></Geom><Char IX='2000000'/>"
                     "<Tabs><Tab IX='70'/></Tabs><Prop/><User ID=''/></Shape></Shapes></Page></Pages>"
                     "<Document xmlns='http://schemas.microsoft.com/office/visio/2012/main'>"
                     "<Part Name='/visio/../../x' ContentType='a'>AAAA</Part></Document></VisioDocument>"),
      "");
  // Sections of a hundred thousand rows in the worst order take time proportional to their size.
  std::string rows;
  for (int i = 100'000; i > 0; --i)
    rows += "<Char IX='" + std::to_string(i) + "'/><User NameU='a" + std::to_string(i) + "'/>";
  EXPECT_EQ(errorOf(root + "<DocumentSheet>" + rows + "</DocumentSheet></VisioDocument>"), "");

  const std::string drawing = everything;
  for (std::size_t at = 0; at < drawing.size(); at += 89) {
    std::string bytes = drawing;
    bytes[at] = static_cast<char>(bytes[at] ^ 0x15);
    errorOf(bytes);
    EXPECT_NE(errorOf(drawing.substr(0, at)), "");
  }
}

}  // namespace
}  // namespace quorvel::formats::testing
