// Pictures that shapes carry.
#include <gtest/gtest.h>

#include "render/build/image.h"
#include "render/build/metafile.h"
#include "render/drawing.h"

namespace quorvel::render {
namespace {

void put(std::string& bytes, std::initializer_list<std::uint32_t> numbers) {
  for (std::uint32_t number : numbers)
    for (int shift = 0; shift < 32; shift += 8) bytes += char(number >> shift & 255);
}

/// A metafile of 100 by 50 pixels, a pixel being a tenth of a millimetre.
std::string metafile(std::initializer_list<std::initializer_list<std::uint32_t>> records) {
  std::string bytes;
  put(bytes, {1, 88, 0, 0, 100, 50, 0, 0, 1000, 500, 0x464D4520, 0x10000, 0, 0, 0, 0, 0, 0, 1000, 1000, 100, 100});
  for (const auto& record : records) {
    put(bytes, {*record.begin(), std::uint32_t(4 + 4 * record.size())});
    for (auto at = record.begin() + 1; at != record.end(); ++at) put(bytes, {*at});
  }
  put(bytes, {14, 20, 0, 0, 20});
  return bytes;
}

const std::string& sample() {
  static const std::string bytes = metafile({
      {38, 1, 0, 2, 0, 0x000000FF},  // a red pen, 2 wide
      {39, 2, 0, 0x00FF0000, 0},     // a blue brush
      {37, 1},
      {37, 2},
      {86, 0, 0, 0, 0, 3, 0, 100, 50u << 16},  // a triangle: (0, 0), (100, 0), (0, 50)
      {33},
      {10, 10, 0},        // the window moves
      {37, 0x80000005u},  // no brush
      {43, 10, 0, 60, 25},
      {34, 0xFFFFFFFFu},
      {42, 0, 0, 100, 50},
  });
  return bytes;
}

TEST(Picture, MetafilesBecomePaths) {
  const std::vector<PathItem> items = metafilePaths(sample());
  ASSERT_EQ(items.size(), 3u);
  EXPECT_EQ(textOf(items[0].path), "M0 0L1 0L0 1Z");
  EXPECT_EQ(std::get<Colour>(items[0].fill).rgb, 0x0000FFu);
  EXPECT_EQ(items[0].stroke.colour.rgb, 0xFF0000u);
  EXPECT_EQ(textOf(items[1].path), "M0 0L0.5 0L0.5 0.5L0 0.5Z");
  EXPECT_TRUE(std::holds_alternative<std::monostate>(items[1].fill));
  EXPECT_TRUE(std::holds_alternative<Colour>(items[2].fill)) << "the state came back";
  EXPECT_NEAR(items[2].path.bounds().width(), 1, 1e-9);
}

TEST(Picture, DamagedMetafilesEndQuietly) {
  for (std::size_t size = 0; size < sample().size(); ++size) metafilePaths(sample().substr(0, size));
  for (std::size_t at = 88; at < sample().size(); ++at) {
    std::string damaged = sample();
    damaged[at] = char(0xFF);
    metafilePaths(damaged);
  }
}

TEST(Picture, ContentTellsTheFormat) {
  const auto typeOf = [](std::string bytes, const char* type = "Bitmap") {
    return pictureOf({type, "", "", std::move(bytes), {}}).mediaType;
  };
  EXPECT_EQ(typeOf("\x89PNG\r\n"), "image/png");
  EXPECT_EQ(typeOf("\xFF\xD8\xFF\xE0"), "image/jpeg");
  EXPECT_EQ(typeOf("GIF89a"), "image/gif");
  EXPECT_EQ(typeOf("no picture"), "");
  // Without a file header: 40 bytes of header, two colours, one row of pixels.
  std::string bitmap;
  put(bitmap, {40, 8, 1, 1 | 1u << 16, 0, 4, 0, 0, 0, 0, 0x000000, 0xFFFFFF, 0xAA});
  const Picture picture = pictureOf({"Bitmap", "DIB", "dib", bitmap, {}});
  ASSERT_EQ(picture.mediaType, "image/bmp");
  EXPECT_EQ(picture.bytes->size(), bitmap.size() + 14);
  EXPECT_EQ(int((*picture.bytes)[10]), 14 + 40 + 8) << "where the pixels begin";
}

TEST(Picture, FillsItsPlaceOrIsCut) {
  Drawing drawing;
  const auto shape = drawing.addShape(2, 1.5, 2, 1, {}, host::SheetKind::Foreign);
  const auto show = [&](std::string bytes) {
    drawing.store.sheet(shape)->foreign =
        std::make_shared<host::ForeignData>(host::ForeignData{"Bitmap", "", "", std::move(bytes), {}});
    return drawing.scene();
  };
  const Scene whole = show("\x89PNG");
  const ImageItem& image = *itemsOf<ImageItem>(whole).at(0);
  EXPECT_EQ(image.transform({0, 0}), (Point{72, 72}));
  EXPECT_EQ(image.transform({1, 1}), (Point{216, 144}));
  EXPECT_TRUE(image.clip.isEmpty());
  drawing.set(shape, "ImgWidth", 4);
  drawing.set(shape, "ImgOffsetX", -1);
  const Scene cut = show("\x89PNG");
  EXPECT_EQ(itemsOf<ImageItem>(cut).at(0)->transform({0, 0}).x, 0);
  EXPECT_EQ(itemsOf<ImageItem>(cut).at(0)->clip.bounds().width(), 144);
  const Scene framed = show("unknown"), drawn = show(sample());
  EXPECT_EQ(itemsOf<PathItem>(framed).size(), 1u) << "a frame stands for what cannot be drawn";
  EXPECT_EQ(itemsOf<PathItem>(drawn).size(), 3u);
}

}  // namespace
}  // namespace quorvel::render
