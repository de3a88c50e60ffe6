// Images in shapes.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "render/drawing.h"
#include "render/images/image.h"
#include "render/pdf/writer.h"
#include "render/png/writer.h"

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

/// The same of 16 bits, its window from the header that places it.
std::string olderMetafile(std::initializer_list<std::vector<std::uint16_t>> records) {
  std::string bytes;
  const auto put16 = [&](std::uint32_t number) { bytes += {char(number & 255), char(number >> 8 & 255)}; };
  for (const std::uint32_t each : {0xCDD7u, 0x9AC6u, 0u, 0u, 0u, 100u, 50u, 96u, 0u, 0u, 0u}) put16(each);
  for (const std::uint32_t each : {1u, 9u, 0x300u, 0u, 0u, 0u, 0u, 0u, 0u}) put16(each);
  for (const auto& record : records) {
    put16(std::uint32_t(record.size() + 2));
    put16(0);
    for (const std::uint16_t each : record) put16(each);
  }
  for (const std::uint32_t each : {3u, 0u, 0u}) put16(each);
  return bytes;
}

const std::string& olderSample() {
  static const std::string bytes = olderMetafile({
      {0x02FA, 0, 2, 0, 0x00FF, 0},  // a red pen, 2 wide
      {0x02FC, 0, 0, 0x00FF, 0},     // a blue brush
      {0x012D, 0},
      {0x012D, 1},
      {0x01F0, 0},           // the first place is free,
      {0x02FC, 1, 0, 0, 0},  // so this one, which paints nothing, gets it
      {0x0324, 3, 0, 0, 100, 0, 0, 50},
      {0x012D, 0},
      {0x0418, 50, 100, 0, 0},
      {0x02FB, std::uint16_t(-10), 0, 0, 0, 700, 0, 0, 0, 0, 0x6153, 0x736E, 0},
      {0x012D, 2},
      {0x0A32, 25, 10, 2, 0, 0x6948, 10, 10},  // "Hi", each letter 10 wide
  });
  return bytes;
}

struct Metafiles : testing::Test {
  TextEngine text;
  std::vector<SceneItem> items(const std::string& bytes) {
    return imageOf({"MetaFile", "", "", bytes, {}}, text).items;
  }
  /// The corners of the first line on the unit square.
  static Box placeOf(const TextItem& item) {
    const TextLine& line = item.layout->lines.at(0);
    Box box;
    box.add(item.transform({line.left, line.runs.at(0).baseline}));
    box.add(item.transform({line.left + line.width, line.top}));
    return box;
  }
};

TEST_F(Metafiles, BecomePaths) {
  const std::vector<SceneItem> found = items(sample());
  ASSERT_EQ(found.size(), 3u);
  const auto& triangle = std::get<PathItem>(found[0]);
  EXPECT_EQ(textOf(triangle.path), "M0 0L1 0L0 1Z");
  EXPECT_EQ(std::get<Colour>(triangle.fill).rgb, 0x0000FFu);
  EXPECT_EQ(triangle.stroke.colour.rgb, 0xFF0000u);
  const auto& rectangle = std::get<PathItem>(found[1]);
  EXPECT_EQ(textOf(rectangle.path), "M0 0L0.5 0L0.5 0.5L0 0.5Z");
  EXPECT_TRUE(std::holds_alternative<std::monostate>(rectangle.fill));
  const auto& ellipse = std::get<PathItem>(found[2]);
  EXPECT_TRUE(std::holds_alternative<Colour>(ellipse.fill)) << "the state is restored";
  EXPECT_NEAR(boundsOf(ellipse.path).width(), 1, 1e-9);
}

TEST_F(Metafiles, ShowTextsAndBitmaps) {
  const std::uint32_t upsideDown = 0xFFFFFFCEu;  // -50
  const std::vector<SceneItem> found = items(metafile({
      {82, 1, 0xFFFFFFF6u, 0, 0, 0, 700, 0, 0, 0, 0x610053u, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0},
      {37, 1},
      {24, 0x0000FF},
      {22, 24},
      {84, 0, 0, 0, 0, 1, 0, 0, 10, 25, 2, 76, 0, 0, 0, 0, 0, 80, 'H' | 'i' << 16, 10, 10},
      // A bitmap of two pixels: the left one over the lower half.
      {81,           0, 0, 0, 0, 0, 25, 0,        0,        1, 1,   80, 48, 128, 8, 0, 0xCC0020, 100, 25, 40, 2, 1,
       1 | 1u << 16, 0, 4, 0, 0, 0, 0,  0x000000, 0xFFFFFF, 0, 0xAA},
      // The same text with the axis upward stays upright.
      {9, 100, upsideDown},
      {11, 100, 50},
      {10, 0, 50},
      {84, 0, 0, 0, 0, 1, 0, 0, 10, 25, 2, 76, 0, 0, 0, 0, 0, 80, 'H' | 'i' << 16, 10, 10},
  }));
  ASSERT_EQ(found.size(), 3u);
  const auto& text = std::get<TextItem>(found[0]);
  EXPECT_EQ(text.layout->styles.at(0).colour.rgb, 0xFF0000u);
  EXPECT_TRUE(text.layout->styles.at(0).bold);
  for (const SceneItem* each : {&found[0], &found[2]}) {
    const Box place = placeOf(std::get<TextItem>(*each));
    EXPECT_NEAR(place.left, 0.1, 1e-9);
    EXPECT_NEAR(place.width(), 0.2, 1e-9) << "as wide as in the font of its program";
    EXPECT_NEAR(place.bottom, 0.5, 1e-9) << "is on its base line";
    EXPECT_GT(place.height(), 0.15);
  }
  const auto& image = std::get<ImageItem>(found[1]);
  EXPECT_EQ(image.mediaType, "image/bmp");
  EXPECT_EQ(image.transform({0, 0}), (Point{0, 0.5}));
  EXPECT_EQ(image.transform({0.5, 1}), (Point{1, 1})) << "half the bitmap fills the place";
  EXPECT_EQ(boundsOf(image.clip).right, 1);
}

TEST_F(Metafiles, AreClippedByTheirCalls) {
  const std::initializer_list<std::uint32_t> box = {43, 0, 0, 100, 50};
  const std::vector<SceneItem> found = items(metafile({
      {30, 0, 0, 100, 50},  // the picture's frame cuts nothing
      box,
      {33},
      {30, 10, 10, 60, 40},
      {29, 20, 20, 30, 30},
      box,
      box,
      {34, 0xFFFFFFFFu},
      {59},
      {43, 0, 0, 50, 25},
      {60},
      {67, 5},  // the path alone
      box,
      {75, 48, 5, 32, 1, 1, 16, 0, 0, 0, 0, 10, 10, 20, 20},  // a region of one rectangle
      {26, 10, 0},
      box,
      {75, 0, 5},
      box,
  }));
  std::string order;
  std::vector<std::string> clips;
  for (const SceneItem& item : found) {
    if (const auto* clip = std::get_if<ClipBegin>(&item)) clips.push_back(textOf(clip->path));
    order += std::holds_alternative<ClipBegin>(item) ? '(' : std::holds_alternative<ClipEnd>(item) ? ')' : '#';
  }
  EXPECT_EQ(order, "#((##))(#)(#)#");
  ASSERT_EQ(clips.size(), 4u);
  EXPECT_EQ(clips[0], "M0.1 0.2L0.6 0.2L0.6 0.8L0.1 0.8Z");
  EXPECT_TRUE(clips[1].ends_with("ZM0.2 0.4L0.3 0.4L0.3 0.6L0.2 0.6Z")) << "all but the rectangle: " << clips[1];
  EXPECT_EQ(clips[2], "M0 0L0.5 0L0.5 0.5L0 0.5Z");
  EXPECT_EQ(clips[3], "M0.2 0.2L0.3 0.2L0.3 0.4L0.2 0.4Z") << "moved";

  const std::vector<SceneItem> older = items(olderMetafile({
      {0x0416, 40, 60, 10, 10},
      {0x041B, 50, 100, 0, 0},
      {0x012C, 0},
      {0x041B, 50, 100, 0, 0},
  }));
  ASSERT_EQ(older.size(), 4u);
  EXPECT_EQ(textOf(std::get<ClipBegin>(older[0]).path), "M0.1 0.2L0.6 0.2L0.6 0.8L0.1 0.8Z");
  EXPECT_TRUE(std::holds_alternative<ClipEnd>(older[2]));
}

TEST_F(Metafiles, OfSixteenBitsAreReadToo) {
  const std::vector<SceneItem> found = items(olderSample());
  ASSERT_EQ(found.size(), 3u);
  EXPECT_EQ(textOf(std::get<PathItem>(found[0]).path), "M0 0L1 0L0 1Z");
  EXPECT_EQ(std::get<Colour>(std::get<PathItem>(found[0]).fill).rgb, 0x0000FFu);
  EXPECT_EQ(std::get<PathItem>(found[1]).stroke.colour.rgb, 0xFF0000u);
  EXPECT_TRUE(std::holds_alternative<std::monostate>(std::get<PathItem>(found[1]).fill));
  const Box place = placeOf(std::get<TextItem>(found[2]));
  EXPECT_NEAR(place.left, 0.1, 1e-9);
  EXPECT_NEAR(place.width(), 0.2, 1e-9);
  EXPECT_NEAR(place.top, 0.5, 1e-9) << "is below its place";
}

/// The extent of a letter of several hundred kilometres is beyond the range of a font's outlines.
TEST_F(Metafiles, LeaveOutTextThatCannotBeDrawn) {
  for (const std::uint32_t height : {0x80000001u, 0x7FFFFFFFu, 0xFFF00000u, 0x00010000u, 0xFFFFFFF6u}) {
    Drawing drawing;
    const auto shape = drawing.addShape(2, 1.5, 2, 1, {}, host::SheetKind::Foreign);
    const std::string bytes = metafile({
        {82, 1, height, 0, 0, 0, 700, 0, 0, 0, 0x610053u, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0},
        {37, 1},
        {84, 0, 0, 0, 0, 1, 0, 0, 10, 25, 2, 76, 0, 0, 0, 0, 0, 80, 'H' | 'i' << 16, 10, 10},
        {43, 10, 0, 60, 25},
    });
    drawing.store.sheet(shape)->foreign =
        std::make_shared<host::ForeignData>(host::ForeignData{"MetaFile", "", "", bytes, {}});
    const Scene scene = drawing.scene();
    EXPECT_EQ(itemsOf<PathItem>(scene).size(), 1u) << height;
    EXPECT_EQ(itemsOf<TextItem>(scene).size(), height == 0xFFFFFFF6u ? 1u : 0u) << height;
    EXPECT_TRUE(writePdf({&scene, 1}, "").starts_with("%PDF-")) << height;
    EXPECT_FALSE(writePng(scene, 72).empty()) << height;
  }
}

/// One drawing that an office program wrote as both kinds.
TEST_F(Metafiles, OfAnotherMakerShowTheSame) {
  for (const char* name : {"order.emf", "order.wmf"}) {
    std::ifstream file(std::string(QUORVEL_SOURCE_FOLDER "/tests/data/pictures/") + name, std::ios::binary);
    const std::vector<SceneItem> found = items({std::istreambuf_iterator<char>(file), {}});
    std::vector<std::uint32_t> fills;
    std::string texts;
    for (const SceneItem& item : found) {
      if (const auto* path = std::get_if<PathItem>(&item)) {
        if (const auto* fill = std::get_if<Colour>(&path->fill)) fills.push_back(fill->rgb);
        const Box bounds = boundsOf(path->path);
        EXPECT_TRUE(bounds.left > -0.01 && bounds.top > -0.01 && bounds.right < 1.01 && bounds.bottom < 1.01) << name;
      } else if (const auto* text = std::get_if<TextItem>(&item)) {
        texts += text->layout->lines.at(0).runs.at(0).text;
        EXPECT_NEAR(placeOf(*text).bottom, 0.3, 0.05) << name;
      }
    }
    EXPECT_EQ(texts, "Order é") << name;
    EXPECT_EQ(fills.front(), 0xFFCC00u) << name;
    EXPECT_TRUE(std::ranges::count(fills, 0x88CCFFu) > 0) << name;
  }
}

TEST_F(Metafiles, EndWithoutAnErrorWhereTheyAreDamaged) {
  for (const std::string* whole : {&sample(), &olderSample()}) {
    for (std::size_t size = 0; size < whole->size(); ++size) items(whole->substr(0, size));
    for (std::size_t at = 0; at < whole->size(); ++at) {
      std::string damaged = *whole;
      damaged[at] = char(0xFF);
      items(damaged);
    }
  }
}

TEST(Picture, ContentDecidesTheFormat) {
  TextEngine text;
  const auto typeOf = [&](std::string bytes, const char* type = "Bitmap") {
    return imageOf({type, "", "", std::move(bytes), {}}, text).mediaType;
  };
  EXPECT_EQ(typeOf("\x89PNG\r\n"), "image/png");
  EXPECT_EQ(typeOf("\xFF\xD8\xFF\xE0"), "image/jpeg");
  EXPECT_EQ(typeOf("GIF89a"), "image/gif");
  EXPECT_EQ(typeOf("no picture"), "");
  // Without a file header: 40 bytes of header, two colours, one row of pixels.
  std::string bitmap;
  put(bitmap, {40, 8, 1, 1 | 1u << 16, 0, 4, 0, 0, 0, 0, 0x000000, 0xFFFFFF, 0xAA});
  const Picture picture = imageOf({"Bitmap", "DIB", "dib", bitmap, {}}, text);
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
  EXPECT_EQ(boundsOf(itemsOf<ImageItem>(cut).at(0)->clip).width(), 144);
  const Scene framed = show("unknown"), drawn = show(sample());
  EXPECT_EQ(itemsOf<PathItem>(framed).size(), 1u) << "a frame replaces what cannot be drawn";
  EXPECT_EQ(itemsOf<PathItem>(drawn).size(), 3u);
  ASSERT_EQ(itemsOf<ClipBegin>(drawn).size(), 1u) << "what is outside the frame is cut, of metafiles too";
  EXPECT_EQ(boundsOf(itemsOf<ClipBegin>(drawn)[0]->path).width(), 144);
  EXPECT_EQ(itemsOf<ClipEnd>(drawn).size(), 1u);
}

}  // namespace
}  // namespace quorvel::render
