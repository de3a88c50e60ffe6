// What other programs refuse or misread in written drawings, and drawings whose writer chose its own prefixes.
#include <gtest/gtest.h>

#include <pugixml.hpp>

#include "formats/drawing_files.h"
#include "formats/formats.h"
#include "formats/store_text.h"
#include "host/cells/cell_name.h"
#include "host/sheet/inheritance.h"

namespace quorvel::formats::testing {
namespace {

host::DocumentId opened(host::Store& store, const std::string& file) {
  const host::OpenResult result = formatFor(file)->open(store, file);
  EXPECT_TRUE(result.document) << result.error;
  return result.document;
}

void expectPieces(const std::string& text, std::initializer_list<const char*> pieces) {
  for (const char* const piece : pieces) EXPECT_NE(text.find(piece), std::string::npos) << piece << "\n" << text;
}

/// The text with prefixes of its own in place of what its root or an outer element declares.
std::string withPrefixes(const std::string& xml) {
  pugi::xml_document document;
  document.load_string(xml.c_str(), pugi::parse_default | pugi::parse_ws_pcdata);
  pugi::xml_node root = document.document_element();
  const std::string own = root.attribute("xmlns").value();
  root.remove_attribute("xmlns");
  root.append_attribute("xmlns:own") = own.c_str();
  struct Walker : pugi::xml_tree_walker {
    bool for_each(pugi::xml_node& node) override {
      if (node.type() != pugi::node_element) return true;
      if (std::string_view(node.name()).find(':') == std::string_view::npos)
        node.set_name(("own:" + std::string(node.name())).c_str());
      for (pugi::xml_attribute attribute : node.attributes()) {
        if (std::string_view(attribute.name()) == "xmlns:r") attribute.set_name("xmlns:links");
        if (std::string_view(attribute.name()) == "r:id") attribute.set_name("links:id");
      }
      return true;
    }
  } walker;
  walker.for_each(root);
  root.traverse(walker);
  std::ostringstream out;
  document.save(out, "", pugi::format_raw);
  return out.str();
}

/// The package with all parts that hold a drawing's own XML rewritten.
std::string prefixedPackage(const std::string& file) {
  ZipPackage package;
  EXPECT_EQ(package.open(file), "");
  std::vector<ZipEntry> entries;
  for (const std::string& name : package.names()) {
    std::string bytes;
    EXPECT_TRUE(package.read(name, bytes));
    const bool isOwn =
        bytes.find("xmlns=\"http://schemas.microsoft.com/office/visio/2012/main\"") != std::string::npos ||
        bytes.find("xmlns='http://schemas.microsoft.com/office/visio/2012/main'") != std::string::npos;
    entries.push_back({name.substr(1), isOwn ? withPrefixes(bytes) : bytes});
  }
  return makeZip(entries);
}

/// Prefixes that a file of one XML text uses and does not declare.
std::vector<std::string> undeclared(const std::string& xml) {
  pugi::xml_document document;
  document.load_string(xml.c_str());
  struct Walker : pugi::xml_tree_walker {
    std::vector<std::string> found;
    bool for_each(pugi::xml_node& node) override {
      const auto look = [&](std::string_view name) {
        const std::size_t colon = name.find(':');
        if (colon == std::string_view::npos || name.starts_with("xml")) return;
        const std::string declaration = "xmlns:" + std::string(name.substr(0, colon));
        for (pugi::xml_node at = node; at; at = at.parent()) {
          if (at.attribute(declaration.c_str())) return;
        }
        found.emplace_back(name);
      };
      look(node.name());
      for (const pugi::xml_attribute attribute : node.attributes()) look(attribute.name());
      return true;
    }
  } walker;
  document.traverse(walker);
  return walker.found;
}

class OwnPrefixes : public ::testing::TestWithParam<const char*> {};

TEST_P(OwnPrefixes, MeanTheSameInEveryFile) {
  TemporaryFolder folder;
  const std::string plain = sampleFile(GetParam());
  const std::string ending = plain.substr(plain.rfind('.'));
  const std::string source = folder.file("prefixed" + ending), again = folder.file("again" + ending);
  writeFile(source, prefixedPackage(plain));
  host::Store store;
  const host::DocumentId first = opened(store, plain), second = opened(store, source);
  EXPECT_EQ(StoreText(store).of(second), StoreText(store).of(first));
  ASSERT_EQ(formatFor(again)->save(store, second, again), "");
  EXPECT_EQ(StoreText(store).of(opened(store, again)), StoreText(store).of(first));

  ASSERT_EQ(formatFor("a.vdx")->save(store, first, folder.file("plain.vdx")), "");
  ASSERT_EQ(formatFor("a.vdx")->save(store, second, folder.file("prefixed.vdx")), "");
  const std::string single = readFile(folder.file("prefixed.vdx"));
  EXPECT_EQ(undeclared(single), std::vector<std::string>());
  // The parts that are kept unread differ; everything before them is the same.
  const std::string expected = readFile(folder.file("plain.vdx"));
  const auto own = [](const std::string& xml) { return xml.substr(0, xml.find("<Part Name")); };
  EXPECT_EQ(own(single).size(), own(expected).size());
  EXPECT_TRUE(own(single) == own(expected));
}

INSTANTIATE_TEST_SUITE_P(Drawings, OwnPrefixes,
                         ::testing::Values("connectors.vsdx", "roadmap.vstx", "shapes.vssx", "flowchart_shapes.vsdx",
                                           "network.vsdx"));

/// A master with four vertices and two connection points; the page's shape hides some of both.
Parts hidingDrawing() {
  Parts parts = partsWithMaster(
      "<Shapes><Shape ID='5' Type='Shape' LineStyle='0' FillStyle='0' TextStyle='0'><Cell N='Width' V='1'/>"
      "<Cell N='Height' V='1'/><Section N='Connection'><Row T='Connection' IX='0'><Cell N='X' V='0'/></Row>"
      "<Row T='Connection' IX='1'><Cell N='X' V='1'/></Row></Section>"
      "<Section N='Geometry' IX='0'><Row T='MoveTo' IX='1'><Cell N='X' V='0'/><Cell N='Y' V='0'/></Row>"
      "<Row T='LineTo' IX='2'><Cell N='X' V='1'/><Cell N='Y' V='0'/></Row>"
      "<Row T='RelLineTo' IX='3'><Cell N='X' V='1'/><Cell N='Y' V='1'/></Row>"
      "<Row T='ArcTo' IX='4'><Cell N='X' V='0'/><Cell N='Y' V='0'/><Cell N='A' "
      "V='0.1'/></Row></Section></Shape></Shapes>");
  setPage(parts,
          "<Shapes><Shape ID='1' Type='Shape' Master='2'><Section N='Connection'><Row T='Connection' IX='1' Del='1'/>"
          "</Section><Section N='Geometry' IX='0'><Row IX='2'><Cell N='X' V='2'/></Row><Row IX='3' Del='1'/>"
          "<Row IX='4' Del='1'/></Section></Shape></Shapes>");
  parts["visio/pages/_rels/page1.xml.rels"] =
      "<Relationships xmlns='http://schemas.openxmlformats.org/package/2006/relationships'>"
      "<Relationship Id='rId1' Type='http://schemas.microsoft.com/visio/2010/relationships/master' "
      "Target='../masters/master1.xml'/></Relationships>";
  return parts;
}

TEST(WrittenRows, OfGeometryHaveTheirKindAlsoWhenDeleted) {
  TemporaryFolder folder;
  const std::string source = folder.file("a.vsdx"), saved = folder.file("saved.vsdx"), older = folder.file("a.vdx");
  writeFile(source, zipOf(hidingDrawing()));
  host::Store store;
  const host::DocumentId document = opened(store, source);
  ASSERT_EQ(formatFor(saved)->save(store, document, saved), "");
  expectPieces(partOf(saved, "/visio/pages/page1.xml"),
               {"<Row IX=\"2\" T=\"LineTo\"><Cell N=\"X\" V=\"2\"/></Row>", "<Row IX=\"3\" T=\"RelLineTo\" Del=\"1\"/>",
                "<Row IX=\"4\" T=\"ArcTo\" Del=\"1\"/>", "<Row IX=\"1\" Del=\"1\"/></Section>"});
  ASSERT_EQ(formatFor(older)->save(store, document, older), "");
  expectPieces(readFile(older), {"<LineTo IX=\"3\" Del=\"1\"/>", "<ArcTo IX=\"4\" Del=\"1\"/>"});
}

TEST(WrittenRelationships, TakeNoIdThatIsStillUsed) {
  // The page's picture is missing; its data and an unknown table use ids without a target.
  Parts parts = hidingDrawing();
  std::string& page = parts["visio/pages/page1.xml"];
  page.insert(page.find("</Shapes>"),
              "<Shape ID='9' Type='Foreign'><ForeignData ForeignType='Bitmap' CompressionType='PNG'><Rel r:id='rId1'/>"
              "</ForeignData></Shape><Shape ID='8' Type='Shape'><Mystery r:id='rId2'/></Shape>");
  parts.erase("visio/pages/_rels/page1.xml.rels");
  std::string& document = parts["visio/document.xml"];
  document.insert(document.find("</VisioDocument>"), "<x:Table xmlns:x='urn:x' r:id='rId3'/>");
  std::string& masters = parts["visio/masters/masters.xml"];
  masters.insert(masters.find("<Rel "), "<x:Table xmlns:x='urn:x' r:id='rId2'/>");
  TemporaryFolder folder;
  folder.expectRemarks("leads nowhere");
  const std::string source = folder.file("a.vsdx"), saved = folder.file("saved.vsdx");
  writeFile(source, zipOf(parts));
  host::Store store;
  const host::DocumentId read = opened(store, source);
  // Ids that a page from another file carries have no meaning there.
  host::Page& other = *store.page(store.addPage(read, "Other"));
  const host::SheetId copy = store.addShape(other.id, {}, host::SheetKind::Foreign);
  const host::Page& first = *store.page(store.document(read)->pages.front());
  store.sheet(copy)->extras = store.sheet(first.byShapeId.at(9))->extras;
  auto added = std::make_shared<host::ForeignData>();
  added->type = "Bitmap";
  added->extension = "png";
  added->bytes = "\x89PNG";
  store.sheet(first.byShapeId.at(8))->foreign = added;
  ASSERT_EQ(formatFor(saved)->save(store, read, saved), "");

  const std::string links = partOf(saved, "/visio/pages/_rels/page1.xml.rels");
  EXPECT_EQ(links.find("\"rId1\""), std::string::npos) << links;
  EXPECT_EQ(links.find("\"rId2\""), std::string::npos) << links;
  expectPieces(links, {"master1.xml", "image1.png"});
  EXPECT_EQ(partOf(saved, "/visio/_rels/document.xml.rels").find("\"rId3\""), std::string::npos);
  EXPECT_EQ(partOf(saved, "/visio/masters/_rels/masters.xml.rels").find("\"rId2\""), std::string::npos);
  EXPECT_EQ(partOf(saved, "/visio/pages/page2.xml").find("r:id"), std::string::npos);
}

TEST(WrittenSingleFile, HasAllThatOtherReadersExpect) {
  Parts parts = hidingDrawing();
  std::string& styles = parts["visio/document.xml"];
  styles.replace(
      styles.find("Name='No Style'/>"), 17,
      "Name='No Style'><Cell N='VerticalAlign' V='1'/><Cell N='LangID' V='en-US'/>"
      "<Section N='Character'><Row IX='0'><Cell N='Size' V='0.125'/><Cell N='Color' V='Themed' F='THEMEVAL()'/>"
      "<Cell N='LangID' V='de-DE'/></Row></Section></StyleSheet>");
  std::string& page = parts["visio/pages/page1.xml"];
  page.insert(page.find("</Shapes>"),
              "<Shape ID='2' Type='Shape' LineStyle='0' FillStyle='0' TextStyle='0'><Cell N='LeftMargin' V='0.5'/>"
              "<Cell N='LangID' V='xx-YY'/><Section N='Character'><Row IX='0'><Cell N='Style' V='17'/></Row></Section>"
              "<Section N='Paragraph'><Row IX='0'><Cell N='HorzAlign' V='0'/></Row></Section></Shape>"
              "<Shape ID='3' Type='Shape'/>");
  TemporaryFolder folder;
  const std::string source = folder.file("a.vsdx"), older = folder.file("a.vdx"), back = folder.file("back.vsdx");
  writeFile(source, zipOf(parts));
  host::Store store;
  const host::DocumentId document = opened(store, source);
  ASSERT_EQ(formatFor(older)->save(store, document, older), "");
  const std::string xml = readFile(older);
  expectPieces(xml, {"<Shape ID=\"3\" Type=\"Shape\"></Shape>", "<VerticalAlign F=\"Inh\">1</VerticalAlign>",
                     "<Style>17</Style>", "F=\"Inh\">0.125</Size>", "<Color F=\"Inh\">0</Color>",
                     "<LangID F=\"Inh\">1031</LangID>", "<LangID>1033</LangID>", "<LangID>0</LangID>",
                     "<HorzAlign>0</HorzAlign>", "<SpLine Unit=\"IN\" F=\"Inh\">-1.2</SpLine>"});

  // What was only written because the format needs complete rows still inherits from the style.
  const host::DocumentId read = opened(store, older);
  const host::Page& again = *store.page(store.document(read)->pages.front());
  const host::Sheet& shape = *store.sheet(again.byShapeId.at(2));
  EXPECT_EQ(shape.findLocal(*host::parseCellName("VerticalAlign")), nullptr);
  EXPECT_EQ(host::cellText(store, shape.id, *host::parseCellName("Char.LangID")), "de-DE");
  ASSERT_EQ(formatFor(back)->save(store, read, back), "");
  expectPieces(partOf(back, "/visio/document.xml"),
               {"<Cell N=\"LangID\" V=\"en-US\"/>", "<Cell N=\"LangID\" V=\"de-DE\"/>"});
}

TEST(WrittenPictures, CarryTheirSizeAndNoNeedlessMark) {
  std::string metafile(88, '\0');
  metafile[0] = 1;
  metafile[24] = 10;
  metafile[32] = 110;
  metafile[36] = 50;
  host::Store store;
  const host::DocumentId document = store.addDocument("Drawing1");
  const host::PageId page = store.addPage(document, "Page-1");
  for (const auto& [type, compression, extension, bytes] :
       {std::tuple("EnhMetaFile", "", "emf", metafile), std::tuple("Bitmap", "DIB", "bmp", std::string("BM")),
        std::tuple("Bitmap", "PNG", "png", std::string("\x89PNG"))}) {
    auto picture = std::make_shared<host::ForeignData>();
    picture->type = type;
    picture->compression = compression;
    picture->extension = extension;
    picture->bytes = bytes;
    store.sheet(store.addShape(page, {}, host::SheetKind::Foreign))->foreign = std::move(picture);
  }
  TemporaryFolder folder;
  const std::string file = folder.file("pictures.vsdx"), older = folder.file("pictures.vdx");
  ASSERT_EQ(formatFor(file)->save(store, document, file), "");
  expectPieces(
      partOf(file, "/visio/pages/page1.xml"),
      {"<ForeignData ForeignType=\"EnhMetaFile\" MappingMode=\"8\" ExtentX=\"100\" ExtentY=\"50\">",
       "<ForeignData ForeignType=\"Bitmap\"><Rel", "<ForeignData ForeignType=\"Bitmap\" CompressionType=\"PNG\">"});
  expectPieces(partOf(file, "/docProps/app.xml"), {"<vt:lpstr>Pages</vt:lpstr>", "<vt:lpstr>Page-1</vt:lpstr>"});
  ASSERT_EQ(formatFor(older)->save(store, document, older), "");
  expectPieces(readFile(older), {"ExtentX=\"100\" ExtentY=\"50\""});
}

TEST(WrittenTimes, HaveTheirTypeOnlyWhereItIsKnown) {
  TemporaryFolder folder;
  const std::string older = folder.file("a.vdx"), back = folder.file("back.vsdx");
  host::Store store;
  const host::DocumentId document = opened(store, sampleFile("connectors.vsdx"));
  ASSERT_EQ(formatFor(older)->save(store, document, older), "");
  const std::string xml = readFile(older);
  expectPieces(xml, {"<dcterms:created>"});
  EXPECT_EQ(xml.find("W3CDTF"), std::string::npos) << "a type that the schema of single files does not have";
  ASSERT_EQ(formatFor(back)->save(store, opened(store, older), back), "");
  expectPieces(partOf(back, "/docProps/core.xml"),
               {"<dcterms:created xsi:type=\"dcterms:W3CDTF\">", "<dcterms:modified xsi:type=\"dcterms:W3CDTF\">"});
}

TEST(ShippedDrawings, HaveAllThatAStrictReaderExpects) {
  for (const char* const name : {"Quorvel.vssx", "Quorvel.vstx", "Samples/Order handling.vsdx"}) {
    const std::string file = std::string(QUORVEL_SOURCE_FOLDER) + "/data/" + name;
    EXPECT_EQ(tools::checkPackage(file, tools::Strictness::Complete), std::vector<std::string>()) << name;
  }
}

}  // namespace
}  // namespace quorvel::formats::testing
