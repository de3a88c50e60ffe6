// What is saved can be opened again, however large it is; what is hostile costs no more than its size.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>

#include "formats/common/carried.h"
#include "formats/drawing_files.h"
#include "formats/vdx/vdx_format.h"
#include "formats/vsdx/vsdx_format.h"
#include "host/cells/cell_name.h"

namespace quorvel::formats::testing {
namespace {

using host::SheetId;
using host::SheetKind;

void putPicture(host::Store& store, host::PageId page, std::string bytes, const std::string& extension) {
  auto picture = std::make_shared<host::ForeignData>();
  *picture = {"Bitmap", extension == "bmp" ? "" : "PNG", extension, std::move(bytes), {}};
  store.sheet(store.addShape(page, {}, SheetKind::Foreign))->foreign = std::move(picture);
}

void putText(host::Store& store, host::PageId page, std::string text) {
  store.sheet(store.addShape(page, {}, SheetKind::Shape))->text =
      std::make_shared<host::TextBody>(host::TextBody{{host::TextPiece::Characters, 0, std::move(text)}});
}

/// A picture as drawing programs export it: 24 bits a pixel, white but for a frame.
std::string flatBitmap(std::size_t width, std::size_t height) {
  std::string pixels(width * height * 3, '\xFF');
  for (std::size_t x = 0; x < width * 3; ++x) pixels[x] = '\0';
  const auto number = [](std::size_t value) {
    std::string bytes;
    for (int i = 0; i < 4; ++i) bytes += static_cast<char>(value >> 8 * i & 0xFF);
    return bytes;
  };
  return "BM" + number(54 + pixels.size()) + number(0) + number(54) + number(40) + number(width) + number(height) +
         std::string("\x01\0\x18\0", 4) + std::string(24, '\0') + pixels;
}

TEST(Limits, FlatPicturesAndLongTextsOpenAgain) {
  TemporaryFolder folder;
  const std::string bitmap = flatBitmap(1600, 1200), letters(6'000'000, 'a');
  for (const char* name : {"map.vsdx", "map.vdx"}) {
    const std::string file = folder.file(name);
    const VsdxFormat package;
    const VdxFormat single;
    const host::DocumentFormat& format =
        package.handles(file) ? static_cast<const host::DocumentFormat&>(package) : single;
    host::Store store;
    const host::DocumentId id = store.addDocument(name);
    const host::PageId page = store.addPage(id, "Page");
    putPicture(store, page, bitmap, "bmp");
    putText(store, page, letters);
    ASSERT_EQ(format.save(store, id, file), "");
    const host::OpenResult opened = format.open(store, file);
    ASSERT_TRUE(opened.document) << opened.error;
    const auto& shapes = store.page(store.document(opened.document)->pages.at(0))->shapes;
    EXPECT_TRUE(store.sheet(shapes.at(0))->foreign->bytes == bitmap) << name;
    EXPECT_TRUE(store.sheet(shapes.at(1))->text->front().text == letters) << name;
  }
}

/// One way in which drawings grow, with limits that a test can reach.
struct Growth {
  const char* what;
  PackageLimits limits;
  int from, to;
  bool endsInPackage, endsInSingleFile;  ///< whether the limit is reached in this format
  std::function<void(host::Store&, host::PageId, int)> grow;
};

const Growth growths[] = {
    {"a picture",
     {.partBytes = 100'000},
     10,
     25,
     true,
     true,
     [](host::Store& store, host::PageId page, int n) {
       putPicture(store, page, std::string(size_t(n) * 5'000, 'x'), "png");
     }},
    {"pictures",
     {.totalBytes = 300'000},
     8,
     18,
     true,
     false,
     [](host::Store& store, host::PageId page, int n) {
       for (int i = 0; i < n; ++i) putPicture(store, page, std::string(20'000, char('a' + i)), "png");
     }},
    {"a text",
     {.partBytes = 100'000},
     45,
     55,
     true,
     true,
     [](host::Store& store, host::PageId page, int n) { putText(store, page, std::string(size_t(n) * 2'000, 'x')); }},
    {"pages",
     {.entries = 60},
     40,
     70,
     true,
     false,
     [](host::Store& store, host::PageId page, int n) {
       for (int i = 0; i < n; ++i) store.addPage(store.page(page)->document, "Page " + std::to_string(i));
     }},
    {"shapes that hardly differ",
     {.xmlWeight = 2'000, .xmlWeightPerByte = 2},
     1,
     12,
     false,
     false,
     [](host::Store& store, host::PageId page, int n) {
       for (int i = 0; i < n * 100; ++i) {
         const SheetId shape = store.addShape(page, {}, SheetKind::Shape);
         for (const char* cell : {"PinX", "PinY", "Width", "Height"})
           store.sheet(shape)->local(*host::parseCellName(cell)).value = host::Value::number(1);
       }
     }},
    {"groups in groups",
     {},
     245,
     260,
     true,
     true,
     [](host::Store& store, host::PageId page, int n) {
       SheetId at;
       for (int i = 0; i < n; ++i) at = store.addShape(page, at, SheetKind::Group);
     }},
};

TEST(Limits, WhatIsSavedNextToALimitOpensAndWhatIsBeyondIsNotSaved) {
  TemporaryFolder folder;
  for (const Growth& growth : growths) {
    const VsdxFormat package(growth.limits);
    const VdxFormat single(growth.limits);
    for (const host::DocumentFormat* format :
         {static_cast<const host::DocumentFormat*>(&package), static_cast<const host::DocumentFormat*>(&single)}) {
      const bool isPackage = format == &package;
      const std::string file = folder.file(isPackage ? "map.vsdx" : "map.vdx");
      int saved = 0, refused = 0;
      for (int n = growth.from; n <= growth.to; ++n) {
        SCOPED_TRACE(std::string(growth.what) + " " + std::to_string(n) + " in " + file);
        host::Store store;
        const host::DocumentId id = store.addDocument("map");
        growth.grow(store, store.addPage(id, "Page"), n);
        std::filesystem::remove(file);
        const std::string wrong = format->save(store, id, file);
        const host::OpenResult again = format->open(store, file);
        if (wrong.empty()) {
          ++saved;
          ASSERT_TRUE(again.document) << again.error;
          const host::Document& document = *store.document(again.document);
          EXPECT_EQ(document.pages.size(), store.document(id)->pages.size());
          EXPECT_EQ(store.page(document.pages[0])->byShapeId.size(),
                    store.page(store.document(id)->pages[0])->byShapeId.size());
        } else {
          ++refused;
          EXPECT_NE(wrong.find("to be opened again; "), std::string::npos) << wrong;
          EXPECT_NE(again.error.find("does not exist"), std::string::npos) << "nothing was written";
        }
      }
      EXPECT_GT(saved, 0) << growth.what << " in " << file;
      EXPECT_EQ(refused > 0, isPackage ? growth.endsInPackage : growth.endsInSingleFile)
          << growth.what << " in " << file;
    }
  }
}

/// What is added to a drawing whose numbers are as high as they may be keeps its own when it is opened again.
TEST(Limits, NumbersBesideTheHighestOpenAgain) {
  TemporaryFolder folder;
  Parts parts = partsWithMaster("<Shapes><Shape ID='5' Type='Shape'/></Shapes>");
  for (auto& [name, text] : parts) {
    for (const auto& [from, to] :
         {std::pair("<Page ID='0'", "<Page ID='1073741824'"), std::pair("<Master ID='2'", "<Master ID='1073741824'")}) {
      if (const std::size_t at = text.find(from); at != std::string::npos) text.replace(at, std::strlen(from), to);
    }
  }
  setPage(parts, "<Shapes><Shape ID='1073741823' Type='Shape'/></Shapes>");
  const VsdxFormat vsdx;
  const VdxFormat vdx;
  const std::string file = folder.file("map.vsdx"), older = folder.file("map.vdx");
  writeFile(file, zipOf(parts));
  host::Store store;
  const host::DocumentId id = vsdx.open(store, file).document;
  ASSERT_TRUE(id);
  host::Document& document = *store.document(id);
  const host::PageId page = document.pages.at(0);
  std::vector<int> numbers{1073741823};
  for (int i = 0; i < 3; ++i) {
    const SheetId shape = store.addShape(page, {}, SheetKind::Shape);
    store.sheet(shape)->data1 = "kept";
    numbers.push_back(store.sheet(shape)->shapeId);
  }
  store.addPage(id, "Added");
  store.addMaster(id, "Added");
  ASSERT_EQ(vsdx.save(store, id, file), "");
  ASSERT_EQ(vdx.save(store, id, older), "");
  for (const host::DocumentId again : {vsdx.open(store, file).document, vdx.open(store, older).document}) {
    ASSERT_TRUE(again);
    const host::Document& read = *store.document(again);
    ASSERT_EQ(read.pages.size(), 2u);
    EXPECT_EQ(store.page(read.pages[1])->name, "Added");
    ASSERT_EQ(read.masters.size(), 2u);
    EXPECT_EQ(store.master(read.masters[1])->name, "Added");
    std::vector<int> found;
    for (const SheetId shape : store.page(read.pages[0])->shapes) found.push_back(store.sheet(shape)->shapeId);
    EXPECT_EQ(found, numbers);
  }
}

TEST(Limits, UnknownPartsCostTheirSizeInTheFile) {
  TemporaryFolder folder;
  const std::string file = folder.file("map.vsdx");
  Parts parts = plainParts();
  const std::string large(48u << 20, '\0'), small = "<thing/>";
  parts["docProps/thumbnail.emf"] = large;
  parts["visio/thing.xml"] = small;
  std::string zip = zipOf(parts);
  writeFile(file, zip);
  host::Store store;
  const VsdxFormat vsdx;
  for (int round = 0; round < 2; ++round) {
    const host::OpenResult opened = vsdx.open(store, file);
    ASSERT_TRUE(opened.document) << opened.error;
    std::uint64_t held = 0, plain = 0;
    for (const CarriedPart& part : carried<CarriedDocument>(store.document(opened.document)->extras)->package->parts) {
      held += part.bytes.held().size();
      plain += part.bytes.size();
    }
    EXPECT_LT(held, large.size() / 200);
    EXPECT_GT(plain, large.size());
    ASSERT_EQ(vsdx.save(store, opened.document, file), "");
    EXPECT_TRUE(partOf(file, "/docProps/thumbnail.emf") == large);
    EXPECT_EQ(partOf(file, "/visio/thing.xml"), small);
  }
  // The single file has them as text, unpacked.
  parts["visio/_rels/document.xml.rels"].insert(
      parts["visio/_rels/document.xml.rels"].find("</Relationships>"),
      "<Relationship Id='rId7' Type='http://example.com/thing' Target='thing.xml'/>");
  writeFile(file, zipOf(parts));
  const host::OpenResult opened = vsdx.open(store, file);
  ASSERT_TRUE(opened.document) << opened.error;
  const VdxFormat vdx;
  ASSERT_EQ(vdx.save(store, opened.document, folder.file("map.vdx")), "");
  const host::OpenResult again = vdx.open(store, folder.file("map.vdx"));
  ASSERT_TRUE(again.document) << again.error;
  ASSERT_EQ(vsdx.save(store, again.document, file), "");
  EXPECT_EQ(partOf(file, "/visio/thing.xml"), small);
}

}  // namespace
}  // namespace quorvel::formats::testing
