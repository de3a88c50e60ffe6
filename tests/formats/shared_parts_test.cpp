// What packages have as parts and single files as elements is converted in both directions: windows, print setup,
// solutions' data, data recordsets, events, headers, comments, guides.
#include <gtest/gtest.h>

#include "formats/drawing_files.h"
#include "formats/formats.h"

namespace quorvel::formats::testing {
namespace {

/// Opens the file and saves it under the other name, in a store of its own.
void convert(const std::string& from, const std::string& to) {
  host::Store store;
  const host::OpenResult opened = formatFor(from)->open(store, from);
  ASSERT_TRUE(opened.document) << opened.error;
  ASSERT_EQ(formatFor(to)->save(store, opened.document, to), "");
}

void expectPieces(const std::string& text, std::initializer_list<std::string_view> pieces) {
  for (const std::string_view piece : pieces) EXPECT_NE(text.find(piece), std::string::npos) << piece << "\n" << text;
}

const char* const window =
    "<Window ID=\"0\" WindowType=\"Drawing\" ContainerType=\"Page\" Page=\"0\" ViewScale=\"2\"><ShowGrid>1</ShowGrid>"
    "<SnapAngles><SnapAngle>0.5</SnapAngle></SnapAngles><TabSplitterPos>0.33</TabSplitterPos></Window>";
const char* const records =
    "<xml xmlns:z=\"#RowsetSchema\" xmlns:rs=\"urn:schemas-microsoft-com:rowset\"><rs:data><z:row "
    "c0=\"AB01\"/></rs:data>"
    "</xml>";
const char* const columns =
    "DataColumns><{}DataColumn ColumnNameID=\"c0\" Name=\"ID\" Label=\"Task\"/></{}DataColumns><{}RowMap RowID=\"1\" "
    "PageID=\"0\" ShapeID=\"1\"/>";

std::string prefixed(std::string text, const std::string& prefix) {
  for (std::size_t at; (at = text.find("{}")) != std::string::npos;) text.replace(at, 2, prefix);
  return text;
}

class SharedParts : public ::testing::Test {
 protected:
  TemporaryFolder folder_;
  const std::string older_ = folder_.file("older.vdx"), newer_ = folder_.file("newer.vsdx");
};

TEST_F(SharedParts, OfASingleFileAreInThePackage) {
  writeFile(
      older_,
      "<VisioDocument xmlns=\"http://schemas.microsoft.com/visio/2003/core\" "
      "xmlns:vx=\"http://schemas.microsoft.com/visio/2006/extension\" xmlns:m=\"urn:mine\">"
      "<PrintSetup><PageLeftMargin Unit=\"MM\">0.5</PageLeftMargin><PrintLandscape>1</PrintLandscape>"
      "<PrintScale>0.75</PrintScale><PaperSize>9</PaperSize></PrintSetup>"
      "<DocumentSheet NameU=\"TheDoc\"><Reviewer IX=\"0\"><Name>Ann</Name><ReviewerID>1</ReviewerID></Reviewer>"
      "</DocumentSheet>"
      "<Pages><Page ID=\"0\" NameU=\"Page-1\"><PageSheet><PrintProps><PageLeftMargin>0.1</PageLeftMargin></PrintProps>"
      "<Annotation IX=\"0\"><X>1</X><Y>2</Y><ReviewerID>1</ReviewerID><Comment>Check &amp; sign</Comment></Annotation>"
      "</PageSheet><Shapes><Shape ID=\"1\" Type=\"Guide\"><XForm><PinX>0</PinX><PinY>3</PinY></XForm></Shape></Shapes>"
      "</Page><Page ID=\"1\" NameU=\"Page-2\"/></Pages>"
      "<Windows ClientWidth=\"800\">" +
          std::string(window) +
          "</Windows><EventList><EventItem ID=\"1\" EventCode=\"2\" Action=\"1\" Enabled=\"1\" Target=\"a\" "
          "TargetArgs=\"b\"/></EventList><HeaderFooter><HeaderLeft>&amp;n</HeaderLeft></HeaderFooter>"
          "<SolutionXML Name=\"first\"><m:orders m:open=\"2\"/></SolutionXML><SolutionXML Name=\"next\">plain"
          "</SolutionXML><vx:DataConnections NextID=\"2\"><vx:DataConnection ID=\"1\" FileName=\"a.xls\"/>"
          "</vx:DataConnections><vx:DataRecordSets NextID=\"2\"><vx:DataRecordSet ID=\"1\" "
          "Name=\"Orders\"><vx:ADOData>" +
          records + "</vx:ADOData><vx:" + prefixed(columns, "vx:") +
          "</vx:DataRecordSet></vx:DataRecordSets></VisioDocument>");
  convert(older_, newer_);
  expectPieces(partOf(newer_, "/visio/windows.xml"),
               {"xmlns=\"http://schemas.microsoft.com/office/visio/2012/main\"", "ClientWidth=\"800\"", window});
  expectPieces(partOf(newer_, "/visio/_rels/document.xml.rels"),
               {"relationships/windows", "relationships/solutions", "relationships/recordsets", "data/recordsets.xml"});
  expectPieces(partOf(newer_, "/visio/solutions/solutions.xml"), {"<Solution Name=\"first\"><Rel r:id=\"rId1\"/>"});
  expectPieces(partOf(newer_, "/visio/solutions/solution1.xml"),
               {"xmlns:m=\"urn:mine\"", "<m:orders m:open=\"2\"/></SolutionXML>"});
  expectPieces(partOf(newer_, "/visio/data/connections.xml"), {"<DataConnection ID=\"1\" FileName=\"a.xls\"/>"});
  expectPieces(partOf(newer_, "/visio/data/recordsets.xml"),
               {"<DataRecordSet ID=\"1\" Name=\"Orders\"><Rel r:id=\"rId1\"/>", "<" + prefixed(columns, "")});
  expectPieces(partOf(newer_, "/visio/data/recordset1.xml"), {records});
  expectPieces(partOf(newer_, "/visio/document.xml"),
               {"<EventItem ID=\"1\"", "<HeaderLeft>&amp;n</HeaderLeft>", "<Section N=\"Reviewer\">"});
  const std::string pages = partOf(newer_, "/visio/pages/pages.xml");
  expectPieces(pages, {"<Section N=\"Annotation\">", "V=\"Check &amp; sign\"", "<Cell N=\"PageLeftMargin\" V=\"0.1\"/>",
                       // The second page has no values of its own, so that the document's are used.
                       "<Cell N=\"PageLeftMargin\" V=\"0.5\" U=\"MM\"/>", "<Cell N=\"ScaleY\" V=\"0.75\"/>",
                       "<Cell N=\"PrintPageOrientation\" V=\"2\"/>", "<Cell N=\"PaperKind\" V=\"9\"/>"});
  expectPieces(partOf(newer_, "/visio/pages/page1.xml"), {"Type=\"Guide\""});

  const std::string back = folder_.file("back.vdx");
  convert(newer_, back);
  expectPieces(readFile(back), {window, "<SolutionXML Name=\"first\"", "<m:orders m:open=\"2\"/></SolutionXML>",
                                "<SolutionXML Name=\"next\"", ">plain</SolutionXML>", "Name=\"Orders\"><vx:ADOData>",
                                records, "<vx:" + prefixed(columns, "vx:"), "FileName=\"a.xls\"", "<EventItem ID=\"1\"",
                                "<HeaderLeft>&amp;n</HeaderLeft>", "<Comment>Check &amp; sign</Comment>",
                                "Type=\"Guide\"", "<Name>Ann</Name>"});
  EXPECT_EQ(readFile(back).find("<Part "), std::string::npos) << "the elements contain all";
}

TEST_F(SharedParts, OfAPackageAreInTheSingleFileAndBack) {
  Parts parts = plainParts();
  std::string& rels = parts["visio/_rels/document.xml.rels"];
  std::string& types = parts["[Content_Types].xml"];
  const auto add = [&](const std::string& kind, const std::string& name, const std::string& bytes) {
    if (!kind.empty())
      rels.insert(rels.find("</Relationships>"), "<Relationship Id='" + kind +
                                                     "' Type='http://schemas.microsoft.com/visio/2010/relationships/" +
                                                     kind + "' Target='" + name + "'/>");
    types.insert(types.find("</Types>"),
                 "<Override PartName='/visio/" + name + "' ContentType='application/vnd.ms-visio." + kind + "+xml'/>");
    parts["visio/" + name] = bytes;
  };
  const std::string main = " xmlns='http://schemas.microsoft.com/office/visio/2012/main'";
  const std::string r = " xmlns:r='http://schemas.openxmlformats.org/officeDocument/2006/relationships'";
  const std::string link =
      "<Relationships xmlns='http://schemas.openxmlformats.org/package/2006/relationships'>"
      "<Relationship Id='r5' Type='urn:t' Target='";
  add("windows", "windows.xml", "<Windows" + main + " ClientWidth='800'>" + window + "</Windows>");
  add("solutions", "solutions/solutions.xml",
      "<Solutions" + main + r + "><Solution Name='s'><Rel r:id='r5'/></Solution></Solutions>");
  add("", "solutions/solution1.xml", "<orders xmlns='urn:mine'>7</orders>");
  parts["visio/solutions/_rels/solutions.xml.rels"] = link + "solution1.xml'/></Relationships>";
  add("recordsets", "data/recordsets.xml",
      "<DataRecordSets" + main + r + " NextID='2'><DataRecordSet ID='1' Name='Orders'><Rel r:id='r5'/><" +
          prefixed(columns, "") + "</DataRecordSet></DataRecordSets>");
  add("", "data/recordset1.xml", records);
  parts["visio/data/_rels/recordsets.xml.rels"] = link + "recordset1.xml'/></Relationships>";
  add("comments", "comments.xml", "<Comments" + main + "><AuthorList/></Comments>");
  writeFile(newer_, zipOf(parts));

  convert(newer_, older_);
  expectPieces(readFile(older_),
               {std::string("<Windows ClientWidth=\"800\">") + window,
                "<SolutionXML Name=\"s\"><orders xmlns=\"urn:mine\">7</orders></SolutionXML>",
                "<vx:DataRecordSets xmlns:vx=\"http://schemas.microsoft.com/visio/2006/extension\" NextID=\"2\">",
                std::string("<vx:ADOData>") + records + "</vx:ADOData>"});
  const std::string back = folder_.file("back.vsdx");
  convert(older_, back);
  for (const auto& [name, bytes] : parts) {
    if (name.find("solution") != std::string::npos || name.find("data/") != std::string::npos ||
        name.find("comments") != std::string::npos) {
      EXPECT_EQ(partOf(back, "/" + name), bytes) << name;
    }
  }
  expectPieces(partOf(back, "/visio/windows.xml"), {window});
}

}  // namespace
}  // namespace quorvel::formats::testing
