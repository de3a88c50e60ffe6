// Lengths of other programs' drawings, as scripts read them: the number and the unit are those that the file says.
#include <gtest/gtest.h>

#include "formats/drawing_files.h"
#include "formats/formats.h"
#include "formats/package/relationships.h"
#include "formats/package/xml_reading.h"
#include "host/automation/in_memory_host.h"

namespace quorvel::formats::testing {
namespace {

class LengthsInSamples : public ::testing::TestWithParam<const char*> {
 protected:
  LengthsInSamples() : running_({.formats = allFormats()}) {}

  /// Compares the cells of the Shape elements below with those of the host's page.
  void compare(pugi::xml_node parent, const Page& page) {
    for (const pugi::xml_node child : parent) {
      if (localName(child) == "Shape" && !child.attribute("Del"))
        compareShape(child, page.Shapes().ItemFromID(child.attribute("ID").as_int()));
      compare(child, page);
    }
  }

  void compareShape(pugi::xml_node element, const Shape& shape) {
    const std::string_view names[] = {"Width", "Height", "PinX", "PinY", "LocPinX", "BeginX", "LeftMargin"};
    for (const pugi::xml_node cell : element) {
      const std::string name = isSingleFile_ ? std::string(localName(cell)) : cell.attribute("N").value();
      if (isSingleFile_ && localName(cell) == "XForm") compareShape(cell, shape);
      if (std::ranges::find(names, name) == std::end(names)) continue;
      const std::string value = isSingleFile_ ? cell.text().get() : cell.attribute("V").value();
      const std::string unit = cell.attribute(isSingleFile_ ? "Unit" : "U").value();
      if (value.empty()) continue;
      const double inches = std::stod(value);
      const Cell read = shape.Cells(name);
      const std::string where = shape.Name().or_("no shape") + " " + name + " = " + value + unit;
      const auto near = [&](Maybe<double> number, double expected) {
        ASSERT_TRUE(number) << where;
        EXPECT_NEAR(*number, expected, 1e-9 * std::max(1.0, std::abs(expected))) << where;
      };
      near(read.ResultIU(), inches);
      near(read.Result(65), inches);
      near(read.Result(50), inches * 72);
      near(read.Result(70), inches * 25.4);
      const std::string suffix = unit == "MM" ? " mm" : unit == "PT" ? " pt." : " in.";
      EXPECT_TRUE(read.ResultStr(0).or_("").ends_with(suffix)) << where << ": " << read.ResultStr(0).or_("");
      EXPECT_TRUE(read.ResultStr(65).or_("").ends_with(" in.")) << where;
      ++compared_;
    }
  }

  host::InMemoryHost running_;
  bool isSingleFile_ = false;
  int compared_ = 0;
};

TEST_P(LengthsInSamples, AreWhatTheFileSays) {
  const std::string file = sampleFile(GetParam());
  isSingleFile_ = file.ends_with(".vdx");
  const Document document = running_.app().Documents().Open(file);
  ASSERT_TRUE(document);
  std::string xml = isSingleFile_ ? readFile(file) : partOf(file, "/visio/pages/pages.xml");
  pugi::xml_document list;
  ASSERT_EQ(parseXml(list, xml), "");
  Relationships relationships;
  std::string links = isSingleFile_ ? std::string() : partOf(file, "/visio/pages/_rels/pages.xml.rels");
  if (!isSingleFile_) {
    ASSERT_EQ(relationships.parse("/visio/pages/pages.xml", links), "");
  }
  const pugi::xml_node pages = isSingleFile_ ? childNamed(list.document_element(), "Pages") : list.document_element();
  int number = 0;
  for (const pugi::xml_node entry : pages) {
    if (localName(entry) != "Page") continue;
    const Page page = document.Pages().Item(++number);
    if (isSingleFile_) {
      compare(entry, page);
      continue;
    }
    std::string part = partOf(file, relationships.withId(attributeNamed(childNamed(entry, "Rel"), "id"))->part);
    pugi::xml_document contents;
    ASSERT_EQ(parseXml(contents, part), "");
    compare(contents.document_element(), page);
  }
  EXPECT_GT(compared_, 5);
}

INSTANTIATE_TEST_SUITE_P(Drawings, LengthsInSamples,
                         ::testing::Values("connectors.vsdx", "roadmap.vstx", "network.vsdx", "basic_shapes.vdx",
                                           "network_devices.vdx"));

}  // namespace
}  // namespace quorvel::formats::testing
