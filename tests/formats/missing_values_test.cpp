// Cells for which a file has only the formula get their value when the file is opened, in both formats.
#include <gtest/gtest.h>

#include "formats/drawing_files.h"
#include "formats/formats.h"
#include "host/cells/cell_name.h"
#include "host/sheet/inheritance.h"

namespace quorvel::formats::testing {
namespace {

struct Opened {
  host::Store store;
  host::DocumentId document;
  explicit Opened(const std::string& file) {
    const host::OpenResult result = formatFor(file)->open(store, file);
    EXPECT_TRUE(result.document) << result.error;
    document = result.document;
  }
  std::string text(int shape, const std::string& cell) {
    const host::Page& page = *store.page(store.document(document)->pages.front());
    return host::cellText(store, page.byShapeId.at(shape), *host::parseCellName(cell));
  }
};

TEST(MissingValues, AreThoseOfTheFormulas) {
  Parts parts = partsWithMaster(
      "<Shapes><Shape ID='5' Type='Group'><Cell N='Width' V='2'/><Cell N='LocPinX' F='Width*0.5'/>"
      "<Shapes><Shape ID='6' Type='Shape'><Cell N='Width' F='Sheet.5!Width*0.25'/></Shape></Shapes></Shape></Shapes>");
  setPage(parts,
          "<Shapes><Shape ID='1' Type='Shape'><Cell N='LocPinX' F='User.half'/><Cell N='Width' V='3'/>"
          "<Cell N='TxtWidth' F='TEXTWIDTH(TheText)'/><Cell N='LocPinY' V='7' F='Width*1'/>"
          "<Cell N='TxtPinX' F='Sheet.9!LocPinX+1'/><Cell N='TxtPinY' F='NOSUCHFUNCTION(1)'/>"
          "<Section N='User'><Row N='half'><Cell N='Value' F='Width*0.5'/></Row>"
          "<Row N='a'><Cell N='Value' F='User.b+1'/></Row><Row N='b'><Cell N='Value' F='User.a+1'/></Row></Section>"
          "<Text>A label of some length</Text></Shape>"
          "<Shape ID='9' Type='Group' Master='2'><Cell N='Width' V='8'/><Shapes>"
          "<Shape ID='10' Type='Shape' MasterShape='6'/></Shapes></Shape></Shapes>");
  TemporaryFolder folder;
  const std::string file = folder.file("map.vsdx");
  writeFile(file, zipOf(parts));
  Opened opened(file);
  EXPECT_EQ(opened.text(1, "User.half"), "1.5 in.");
  EXPECT_EQ(opened.text(1, "LocPinX"), "1.5 in.");
  EXPECT_EQ(opened.text(1, "LocPinY"), "7 in.") << "a value of the file is used";
  EXPECT_EQ(opened.text(9, "LocPinX"), "4 in.") << "the instance's own half, not the master's";
  EXPECT_EQ(opened.text(10, "Width"), "2 in.");
  EXPECT_EQ(opened.text(1, "TxtPinX"), "5 in.");
  EXPECT_EQ(opened.text(1, "User.a"), "#CIRCLE!");
  const host::Sheet& label =
      *opened.store.sheet(opened.store.page(opened.store.document(opened.document)->pages.front())->byShapeId.at(1));
  EXPECT_GT(host::cellNumber(opened.store, label.id, *host::parseCellName("TxtWidth")), 1);
  ASSERT_EQ(formatFor(file)->save(opened.store, opened.document, file), "");
  EXPECT_NE(partOf(file, "/visio/pages/page1.xml").find(R"(<Cell N="LocPinX" F="User.half"/>)"), std::string::npos)
      << "is saved unchanged";

  const std::string single = folder.file("map.vdx");
  writeFile(single,
            "<VisioDocument xmlns='http://schemas.microsoft.com/visio/2003/core'><Pages><Page ID='0'><Shapes>"
            "<Shape ID='1' Type='Shape'><XForm><LocPinX F='Width*0.5'/><Width>3</Width></XForm>"
            "<TextXForm><TxtWidth F='LocPinX*4'/></TextXForm></Shape></Shapes></Page></Pages></VisioDocument>");
  Opened other(single);
  EXPECT_EQ(other.text(1, "LocPinX"), "1.5 in.");
  EXPECT_EQ(other.text(1, "TxtWidth"), "6 in.");
}

TEST(MissingValues, OfAnInstanceFollowItsOwnTextAndCells) {
  Parts parts = partsWithMaster(
      "<Shapes><Shape ID='5' Type='Group'><Cell N='Width' V='2' F='GUARD(EndX-BeginX)'/><Cell N='BeginX' V='1'/>"
      "<Cell N='EndX' V='3'/><Cell N='TxtWidth' V='0.1' F='TEXTWIDTH(TheText)'/><Cell N='TxtPinX' V='1' F='Width*0.5'/>"
      "<Section N='Actions'><Row N='a'><Cell N='Checked' V='1' F='Width&gt;1'/></Row></Section>"
      "<Shapes><Shape ID='6' Type='Shape'><Cell N='Width' V='0.5' F='Sheet.5!Width*0.25'/>"
      "<Cell N='LocPinX' V='0.25' F='Width*0.5'/></Shape></Shapes></Shape></Shapes>");
  const std::string instances =
      "<Shapes><Shape ID='9' Type='Group' Master='2'><Cell N='BeginX' V='2'/><Cell N='EndX' V='10'/>"
      "<Cell N='TxtPinX' V='7' F='Inh'/><Text>A label of some length</Text>"
      "<Shapes><Shape ID='10' Type='Shape' MasterShape='6'/></Shapes></Shape>"
      "<Shape ID='11' Type='Group' Master='2'><Cell N='EndX' V='3.0000000001'/></Shape></Shapes>";
  setPage(parts, instances);
  TemporaryFolder folder;
  const std::string file = folder.file("map.vsdx");
  writeFile(file, zipOf(parts));
  Opened opened(file);
  EXPECT_EQ(opened.text(9, "Width"), "8 in.");
  EXPECT_EQ(opened.text(10, "Width"), "2 in.") << "through the group";
  EXPECT_EQ(opened.text(10, "LocPinX"), "1 in.");
  EXPECT_EQ(opened.text(9, "TxtPinX"), "7 in.") << "a value of the file is used";
  EXPECT_EQ(opened.text(11, "Width"), "2 in.") << "a rounded number is the same number";
  const auto shape = [&](int id) {
    return opened.store.page(opened.store.document(opened.document)->pages.front())->byShapeId.at(id);
  };
  EXPECT_GT(host::cellNumber(opened.store, shape(9), *host::parseCellName("TxtWidth")), 1);
  EXPECT_EQ(opened.store.sheet(shape(11))->findLocal(*host::parseCellName("Width")), nullptr);

  const std::string before = partOf(file, "/visio/pages/page1.xml");
  ASSERT_EQ(formatFor(file)->save(opened.store, opened.document, file), "");
  EXPECT_EQ(partOf(file, "/visio/pages/page1.xml").find("N=\"Width\""), std::string::npos)
      << "a save adds no cell: " << before;
}

}  // namespace
}  // namespace quorvel::formats::testing
