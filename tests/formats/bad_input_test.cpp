// Files that are no drawings or are hostile: one sentence, an unchanged store, nothing written.
#include <gtest/gtest.h>

#include <ctime>

#include "base/text.h"
#include "formats/drawing_files.h"
#include "formats/formats.h"
#include "formats/vsdx/vsdx_format.h"

namespace quorvel::formats::testing {
namespace {

std::string replaced(std::string text, const std::string& part, const std::string& by) {
  const std::size_t at = text.find(part);
  EXPECT_NE(at, std::string::npos) << part;
  return text.replace(at, part.size(), by);
}

/// Opens the bytes as a drawing; the error, after checking that it is one sentence and the store is as it was.
std::string errorOf(const std::string& bytes, const std::string& name = "map.vsdx") {
  TemporaryFolder folder;
  const std::string file = folder.file(name);
  writeFile(file, bytes);
  host::Store store;
  const host::OpenResult result = formatFor(file)->open(store, file);
  EXPECT_FALSE(result.document);
  EXPECT_TRUE(store.documents().empty());
  EXPECT_TRUE(result.error.starts_with(file + " ")) << result.error;
  EXPECT_TRUE(result.error.ends_with(".")) << result.error;
  EXPECT_EQ(result.error.find('\n'), std::string::npos);
  EXPECT_NE(result.error.find("; "), std::string::npos) << "no advice: " << result.error;
  EXPECT_EQ(folder.count(), 1u);
  return result.error;
}

TEST(BadInput, SaysWhatTheFileIsInstead) {
  const std::string compound = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1" + std::string(600, '\0');
  std::string encrypted = compound;
  for (const char c : std::string("EncryptedPackage")) encrypted += {c, '\0'};
  const std::string drawing = zipOf(plainParts());
  const struct {
    std::string bytes, name, expected;
  } cases[] = {
      {"", "map.vsdx", "is empty"},
      {"Dear reader", "map.vsdx", "no zip package"},
      {compound, "map.vsdx", "old binary format"},
      {compound, "map.vsd", "old binary format"},
      {encrypted, "map.vsdx", "is encrypted"},
      {"<?xml version='1.0'?><VisioDocument/>", "map.vsdx", "older release"},
      {"<?xml version='1.0'?><VisioDocument/>", "map.vdx", "without a drawing"},
      {"<?xml version='1.0'?><html xmlns='http://www.w3.org/1999/xhtml'/>", "map.vsx", "without a drawing"},
      {"", "map.vtx", "damaged"},
      {"Dear reader", "map.vdx", "damaged"},
      {drawing, "map.vdx", "no XML drawing"},
      {compound, "map.vdx", "no XML drawing"},
      {zipOf({{"readme.txt", "hello"}}), "map.vsdx", "without a drawing"},
      {zipOf({{"[Content_Types].xml", plainParts()["[Content_Types].xml"]}}), "map.vsdx", "without a drawing"},
      {drawing.substr(0, drawing.size() - 1), "map.vsdx", "cut short"},
      {drawing.substr(0, drawing.size() / 2), "map.vsdx", "cut short"},
      {drawing.substr(0, 40), "map.vsdx", "cut short"},
  };
  for (const auto& one : cases)
    EXPECT_NE(errorOf(one.bytes, one.name).find(one.expected), std::string::npos) << one.expected;

  host::Store store;
  EXPECT_NE(formatFor("nowhere.vsdx")->open(store, "nowhere.vsdx").error.find("does not exist"), std::string::npos);
  EXPECT_NE(formatFor("a.vsdx")->open(store, std::filesystem::temp_directory_path().string()).error.find("is a folder"),
            std::string::npos);
}

TEST(BadInput, RefusesDamagedAndHarmfulPackages) {
  const auto changed = [](const std::string& part, const std::string& text) {
    Parts parts = plainParts();
    parts[part] = text;
    return zipOf(parts);
  };
  Parts withoutPage = plainParts();
  withoutPage.erase("visio/pages/page1.xml");
  Parts outside = plainParts();
  outside["../../outside.xml"] = "<a/>";
  Parts entity = plainParts();
  entity["visio/document.xml"] =
      "<!DOCTYPE a [<!ENTITY x SYSTEM 'file:///etc/passwd'>]><VisioDocument>&x;</VisioDocument>";
  Parts pageOutside = plainParts();
  pageOutside["visio/pages/_rels/pages.xml.rels"] =
      replaced(pageOutside["visio/pages/_rels/pages.xml.rels"], "page1.xml", "../../../../etc/passwd");
  std::string deep;
  for (int i = 0; i < 100'000; ++i) deep += "<a>";
  for (int i = 0; i < 100'000; ++i) deep += "</a>";
  std::string groups;
  for (int i = 0; i < 5'000; ++i) groups += "<Shape><Shapes>";
  for (int i = 0; i < 5'000; ++i) groups += "</Shapes></Shape>";
  Parts tooDeep = plainParts();
  setPage(tooDeep, "<Shapes>" + groups + "</Shapes>");

  const struct {
    std::string bytes, expected;
  } cases[] = {
      {zipOf(withoutPage), "page1.xml is missing"},
      {zipOf(outside), "outside of itself"},
      {zipOf(entity), "document type"},
      {zipOf(pageOutside), "leads to no part"},
      {changed("visio/document.xml", "<VisioDocument"), "not well-formed"},
      {changed("visio/pages/page1.xml", "<PageContents>" + deep + "</PageContents>"), "too deep"},
      {zipOf(tooDeep), "too deep"},
  };
  for (const auto& one : cases) EXPECT_NE(errorOf(one.bytes).find(one.expected), std::string::npos) << one.expected;
}

/// The zip with a number of `width` bytes changed in the directory's entry of that name.
std::string withDirectory(std::string zip, const std::string& name, std::size_t offset, std::size_t width,
                          std::uint64_t number) {
  const std::size_t at = zip.rfind(name) - 46;
  EXPECT_EQ(zip.substr(at, 4), "PK\x01\x02");
  for (std::size_t i = 0; i < width; ++i) zip[at + offset + i] = static_cast<char>(number >> 8 * i & 0xFF);
  return zip;
}

/// Small files that would use all memory, and directories with wrong sizes.
TEST(BadInput, RefusesWhatUnpacksWithoutEnd) {
  const std::string part = "visio/thing.bin";
  Parts parts = plainParts();
  parts[part] = std::string(100'000, 'x');
  const std::string plain = zipOf(parts);
  constexpr std::size_t flags = 8, method = 10, checksum = 16, packedSize = 20, size = 24;
  Parts twice = parts;
  twice["Visio/THING.bin"] = "other";
  Parts emptyElements = plainParts(), emptyShapes = plainParts();
  std::string elements;
  for (int i = 0; i < 2'000'000; ++i) elements += "<a/>";
  setPage(emptyElements, elements);
  elements.clear();
  for (int i = 0; i < 300'000; ++i) elements += "<Shape/>";
  setPage(emptyShapes, "<Shapes>" + elements + "</Shapes>");

  const struct {
    std::string bytes, expected;
  } cases[] = {
      {withDirectory(plain, part, size, 4, 99'999), "do not unpack"},
      {withDirectory(plain, part, size, 4, 100'001), "do not unpack"},
      {withDirectory(plain, part, size, 4, 0x7FFF'FFFF), "far more than a drawing needs"},
      {withDirectory(plain, part, packedSize, 4, 60), "do not unpack"},
      {withDirectory(plain, part, packedSize, 4, plain.size()), "on top of each other"},
      {withDirectory(plain, part, checksum, 4, 1), "do not unpack"},
      {withDirectory(plain, part, method, 2, 12), "packed in a way that drawings are not"},
      {withDirectory(plain, part, flags, 2, 1), "password"},
      {zipOf(twice), "twice"},
      {zipOf(emptyElements), "far more than a drawing needs"},
      {zipOf(emptyShapes), "far more than a drawing needs"},
  };
  for (const auto& one : cases) EXPECT_NE(errorOf(one.bytes).find(one.expected), std::string::npos) << one.expected;
}

/// Reading time is proportional to the file, also where rows have no number and a section is in pieces.
TEST(BadInput, LongSectionsOfEmptyRowsTakeNoLongTime) {
  std::string rows, pieces;
  for (int i = 0; i < 100'000; ++i) rows += "<Row/>";
  for (int i = 0; i < 30'000; ++i) pieces += "<Section N='User'><Row/></Section>";
  for (const std::string& sections :
       {"<Section N='Geometry' IX='0'>" + rows + "</Section>", "<Section N='User'>" + rows + "</Section>" + pieces}) {
    Parts parts = plainParts();
    setPage(parts, "<Shapes><Shape ID='1'>" + sections + "</Shape></Shapes>");
    TemporaryFolder folder;
    const std::string file = folder.file("map.vsdx");
    writeFile(file, zipOf(parts));
    host::Store store;
    const std::clock_t start = std::clock();
    EXPECT_TRUE(formatFor(file)->open(store, file).document);
    EXPECT_LT(double(std::clock() - start) / CLOCKS_PER_SEC, 3);
  }
}

/// With any single wrong byte, the file opens or is refused; the program never crashes.
TEST(BadInput, SurvivesAnyFlippedByteAndAnyCut) {
  const std::string drawing = readFile(sampleFile("connectors.vsdx"));
  TemporaryFolder folder;
  const std::string file = folder.file("map.vsdx");
  for (std::size_t at = 0; at < drawing.size(); at += 311) {
    std::string bytes = drawing;
    bytes[at] = static_cast<char>(bytes[at] ^ 0x41);
    writeFile(file, bytes);
    host::Store store;
    const host::OpenResult result = formatFor(file)->open(store, file);
    EXPECT_NE(result.error.empty(), !result.document);
    writeFile(file, drawing.substr(0, at));
    EXPECT_FALSE(formatFor(file)->open(store, file).error.empty());
  }
}

/// Links in a circle are cut when the file is read, so that following them always ends.
TEST(BadInput, CutsCirclesOfStylesMastersAndBackgrounds) {
  Parts parts = partsWithMaster("<Shapes><Shape ID='1' Type='Shape' Master='2'/></Shapes>");
  parts["visio/document.xml"] =
      replaced(parts["visio/document.xml"], "<StyleSheet ID='0' NameU='No Style' Name='No Style'/>",
               "<StyleSheet ID='0' Name='a' LineStyle='1'/><StyleSheet ID='1' Name='b' LineStyle='0' FillStyle='1'/>");
  parts["visio/pages/pages.xml"] =
      replaced(parts["visio/pages/pages.xml"], "<Page ID='0'", "<Page ID='0' BackPage='0' Background='1'");
  setPage(parts, "<Shapes><Shape ID='1' Master='2'/><Shape ID='1'/><Shape ID='-4'/><Shape ID='4294967295'/></Shapes>");
  TemporaryFolder folder;
  const std::string file = folder.file("map.vsdx");
  writeFile(file, zipOf(parts));
  host::Store store;
  const host::OpenResult result = formatFor(file)->open(store, file);
  ASSERT_TRUE(result.document) << result.error;
  const host::Document& document = *store.document(result.document);
  const auto follow = [&](host::SheetId at, host::SheetId host::Sheet::*link) {
    int steps = 0;
    for (; at && steps < 10; at = store.sheet(at)->*link) ++steps;
    return steps;
  };
  for (const host::SheetId style : document.styles) {
    EXPECT_LT(follow(style, &host::Sheet::lineStyle), 10);
    EXPECT_LT(follow(style, &host::Sheet::fillStyle), 10);
  }
  const host::Page& page = *store.page(document.pages.front());
  EXPECT_FALSE(page.backPage);
  ASSERT_EQ(page.shapes.size(), 4u);
  EXPECT_LT(follow(page.shapes.front(), &host::Sheet::prototype), 10);
  EXPECT_EQ(page.byShapeId.size(), 4u) << "shapes of one number get numbers of their own";
}

TEST(BadInput, BoundsAreThoseOfTheLimits) {
  TemporaryFolder folder;
  const std::string file = folder.file("map.vsdx");
  writeFile(file, zipOf(plainParts()));
  for (const PackageLimits& limits :
       {PackageLimits{.entries = 3}, PackageLimits{.partBytes = 100}, PackageLimits{.totalBytes = 1000},
        PackageLimits{.xmlWeight = 10, .xmlWeightPerByte = 0}}) {
    host::Store store;
    EXPECT_FALSE(VsdxFormat(limits).open(store, file).error.empty());
    EXPECT_TRUE(store.documents().empty());
  }
  // A picture that many shapes show in different ways is unpacked for each.
  Parts parts = plainParts();
  parts["visio/media/image1.png"] = std::string(50'000, 'x');
  parts["visio/pages/_rels/page1.xml.rels"] =
      "<Relationships xmlns='http://schemas.openxmlformats.org/package/2006/relationships'><Relationship Id='rId1' "
      "Type='http://schemas.openxmlformats.org/officeDocument/2006/relationships/image' "
      "Target='../media/image1.png'/></Relationships>";
  std::string shapes;
  for (int i = 1; i <= 20; ++i)
    shapes += "<Shape ID='" + std::to_string(i) + "' Type='Foreign'><ForeignData ForeignType='Bitmap' ObjectWidth='" +
              std::to_string(i) + "'><Rel r:id='rId1'/></ForeignData></Shape>";
  setPage(parts, "<Shapes>" + shapes + "</Shapes>");
  const std::string pictures = folder.file("pictures.vsdx");
  writeFile(pictures, zipOf(parts));
  host::Store store;
  EXPECT_TRUE(VsdxFormat().open(store, pictures).document);
  EXPECT_NE(VsdxFormat({.totalBytes = 500'000}).open(store, pictures).error.find("far more than a drawing needs"),
            std::string::npos);
  ZipPackage package;
  EXPECT_EQ(package.open(file), "");
}

}  // namespace
}  // namespace quorvel::formats::testing
