// Scenes as PNG and PDF: everything is painted at the scene's place, and the links and titles of a PDF.
#include <cairo.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "render/drawing.h"
#include "render/pdf/writer.h"
#include "render/png/writer.h"
#include "render/svg/writer.h"

namespace quorvel::render {
namespace {

/// The pixels of a PNG file, read back.
class Pixels {
 public:
  explicit Pixels(const std::string& png) : rest_(png) {
    surface_ = cairo_image_surface_create_from_png_stream(
        [](void* self, unsigned char* target, unsigned count) {
          std::string_view& rest = static_cast<Pixels*>(self)->rest_;
          if (rest.size() < count) return CAIRO_STATUS_READ_ERROR;
          std::memcpy(target, rest.data(), count);
          rest.remove_prefix(count);
          return CAIRO_STATUS_SUCCESS;
        },
        this);
  }
  ~Pixels() { cairo_surface_destroy(surface_); }
  int width() const { return cairo_image_surface_get_width(surface_); }
  int height() const { return cairo_image_surface_get_height(surface_); }
  /// 0xRRGGBB; the place is in points of the scene, which has as many pixels.
  std::uint32_t at(int x, int y) const {
    std::uint32_t pixel = 0;
    const auto* row = cairo_image_surface_get_data(surface_) + y * cairo_image_surface_get_stride(surface_);
    std::memcpy(&pixel, row + 4 * x, 4);
    return pixel & 0xFFFFFF;
  }

 private:
  std::string_view rest_;
  cairo_surface_t* surface_;
};

Scene sceneOf(const char* title, double width, double height) {
  Scene scene;
  scene.title = title;
  scene.width = width;
  scene.height = height;
  return scene;
}

PathItem box(double left, double top, double right, double bottom, Fill fill) {
  PathItem item{{}, std::move(fill), {}};
  item.path.addRectangle(left, top, right, bottom);
  return item;
}

TEST(Png, PaintsWhereTheSceneSays) {
  Scene scene = sceneOf("Page-1", 100, 50);
  scene.items.push_back(box(10, 10, 20, 20, Colour{0xFF0000}));
  // Two subpaths that overlap leave a hole.
  PathItem ring = box(30, 10, 50, 30, Colour{0x00FF00});
  ring.path.addRectangle(35, 15, 45, 25);
  scene.items.push_back(ring);
  Gradient gradient{false, {60, 0}, {80, 0}, 0, {{0, {0x000000}}, {1, {0x0000FF}}}};
  scene.items.push_back(box(60, 10, 80, 30, gradient));
  // A solid hatch ground shows between the lines; a stroke of no dashes and a broken picture stop nothing.
  scene.items.push_back(box(84, 10, 96, 30, Pattern{2, {0x000000}, {0xFFFF00}}));
  PathItem line = box(10, 40, 90, 45, {});
  line.stroke = {true, {0x800080}, 2, LineCap::Butt, {0, 0}};
  ImageItem broken{"image/png", std::make_shared<const std::string>("no picture"), Matrix::scaling(20, 20), {}, 1};
  scene.items.insert(scene.items.begin(), {line, broken});

  const Pixels pixels(writePng(scene, 72));
  ASSERT_EQ(pixels.width(), 100);
  ASSERT_EQ(pixels.height(), 50);
  EXPECT_EQ(pixels.at(15, 15), 0xFF0000u);
  EXPECT_EQ(pixels.at(5, 5), 0xFFFFFFu) << "the paper";
  EXPECT_EQ(pixels.at(32, 20), 0x00FF00u);
  EXPECT_EQ(pixels.at(40, 20), 0xFFFFFFu) << "the hole";
  EXPECT_LT(pixels.at(62, 20), pixels.at(78, 20)) << "the blue grows";
  int yellow = 0, dark = 0;
  for (int y = 11; y < 29; ++y) {
    yellow += pixels.at(90, y) == 0xFFFF00;
    dark += (pixels.at(90, y) >> 16) < 0xC0;
  }
  EXPECT_GT(yellow, 0);
  EXPECT_GT(dark, 0);
  EXPECT_EQ(pixels.at(50, 40), 0x800080u);

  const Pixels twice(writePng(scene, 144));
  EXPECT_EQ(twice.width(), 200);
  EXPECT_EQ(Pixels(writePng(sceneOf("", 1e6, 10), 300)).width(), 16000) << "a page of fourteen metres gets fewer";
}

/// A box with a soft shadow, a line that changes its colour, and one that shows within a clip only.
Scene softScene() {
  Scene scene = sceneOf("Page-1", 100, 50);
  PathItem shadow = box(20, 10, 40, 40, Colour{0x0000FF});
  shadow.stroke = {true, {0x0000FF}, 2, LineCap::Round, {}};
  shadow.blur = 3;
  PathItem line;
  line.path.moveTo({50, 25});
  line.path.lineTo({70, 25});
  line.stroke = {true, {}, 4, LineCap::Butt, {}};
  line.stroke.gradient =
      std::make_shared<const Gradient>(Gradient{false, {50, 25}, {70, 25}, 0, {{0, {0xFF0000}}, {1, {0x00FF00}}}});
  ClipBegin clip;
  clip.path.addRectangle(75, 0, 100, 50);
  clip.path.addRectangle(80, 20, 90, 30);
  scene.items = {shadow, line, clip, box(70, 5, 98, 45, Colour{0xFF00FF}), ClipEnd{}, box(72, 1, 74, 3, Colour{0})};
  return scene;
}

TEST(Png, SoftShadowsLineGradientsAndClips) {
  const Pixels pixels(writePng(softScene(), 72));
  const auto paleness = [&](int x) { return pixels.at(x, 25) >> 16; };
  EXPECT_LT(paleness(30), 8u) << "full in the middle";
  for (int x = 12; x < 30; ++x) EXPECT_GE(paleness(x), paleness(x + 1)) << "fades outward, at " << x;
  EXPECT_NEAR(paleness(19), 128, 45) << "half at its edge";
  EXPECT_GT(paleness(9), 250u);
  EXPECT_GT(pixels.at(52, 25) >> 16, 0xD0u);
  EXPECT_GT(pixels.at(67, 25) >> 8 & 0xFF, 0xD0u);
  EXPECT_EQ(pixels.at(77, 25), 0xFF00FFu);
  EXPECT_EQ(pixels.at(72, 25), 0xFFFFFFu) << "outside the clip";
  EXPECT_EQ(pixels.at(85, 25), 0xFFFFFFu) << "in its hole";
  EXPECT_EQ(pixels.at(73, 2), 0x000000u) << "the clip has ended";
}

TEST(Png, PicturesAreInTheirBoxAndTextInItsColour) {
  Scene source = sceneOf("", 2, 1);
  source.items = {box(0, 0, 1, 1, Colour{0xFF0000}), box(1, 0, 2, 1, Colour{0x0000FF})};
  const auto picture = std::make_shared<const std::string>(writePng(source, 72));
  Scene scene = sceneOf("", 100, 50);
  ImageItem image{"image/png", picture, {40, 0, 0, 20, 10, 10}, {}, 1};
  image.clip.addRectangle(10, 10, 50, 20);
  scene.items.push_back(image);
  auto layout = std::make_shared<TextLayout>();
  layout->styles.push_back({"Liberation Sans", 30, {0x008000}, true});
  layout->lines.push_back({{{"H", 0, 0, 30, 22, false}}, 0, 0, 22, 36});
  scene.items.push_back(TextItem{layout, Matrix::translation(60, 5), {0xFFFF00, 1}});

  const Pixels pixels(writePng(scene, 72));
  EXPECT_EQ(pixels.at(14, 14), 0xFF0000u);
  EXPECT_EQ(pixels.at(46, 14), 0x0000FFu);
  EXPECT_EQ(pixels.at(14, 25), 0xFFFFFFu) << "clipped away";
  EXPECT_EQ(pixels.at(5, 14), 0xFFFFFFu);
  EXPECT_EQ(pixels.at(61, 7), 0xFFFF00u) << "the paper behind the line";
  EXPECT_EQ(pixels.at(64, 25), 0x008000u) << "the letter's left stem ends at the baseline";
}

std::size_t count(const std::string& text, std::string_view part) {
  std::size_t found = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++found;
  return found;
}

TEST(Pdf, PagesLinksAndPlacesInTheDocument) {
  const auto shape = [](const char* name, const char* link) { return ShapeBegin{{}, 1, name, link, ""}; };
  Scene first = sceneOf("Page-1", 200, 100), second = sceneOf("It's (2)", 300, 150);
  first.items = {shape("group", "https://example.org/plan"),
                 box(10, 10, 40, 40, Colour{0xFF0000}),
                 shape("member", "#it's (2)/a01"),
                 box(20, 20, 30, 30, Colour{0x00FF00}),
                 ShapeEnd{},
                 box(12, 12, 14, 14, Colour{0x0000FF}),
                 ShapeEnd{},
                 shape("lost", "#No such page/A09"),
                 box(70, 50, 80, 60, Colour{}),
                 ShapeEnd{},
                 shape("hostile", "http://x/)/S/JavaScript/JS(app.alert(1))\\"),
                 box(85, 50, 95, 60, Colour{}),
                 ShapeEnd{}};
  second.items = {shape("A01", "#Page-1"), box(110, 90, 140, 140, Colour{0xFF0000}), ShapeEnd{}};
  const Scene pages[] = {first, second};
  const std::string pdf = writePdf(pages, "A map");
  EXPECT_TRUE(pdf.starts_with("%PDF-"));
  EXPECT_EQ(count(pdf, "/Type /Page") - count(pdf, "/Type /Pages"), 2u);
  EXPECT_EQ(count(pdf, "/URI (https://example.org/plan)"), 2u) << "before and behind its member's own link";
  EXPECT_EQ(count(pdf, "/Subtype /Link"), 5u) << "not the lost one";
  EXPECT_EQ(count(pdf, "/URI (http://x/%29/S/JavaScript/JS%28app.alert%281%29%29%5C)"), 1u) << "no end of the string";
  EXPECT_EQ(count(pdf, "/XYZ 74 96 0]"), 1u) << "half an inch above and to the left of A01, from the bottom";
  EXPECT_EQ(count(pdf, "/Type /Outlines"), 1u);
  EXPECT_EQ(writePdf({}, "").substr(0, 5), "%PDF-") << "no pages: an empty document and no crash";
}

TEST(Pdf, SoftShadowsLineGradientsAndClipsAsInSvg) {
  const Scene scene = softScene();
  const std::string pdf = writePdf({&scene, 1}, ""), svg = writeSvg(scene);
  EXPECT_GE(count(pdf, "/SMask"), 1u) << "the shadow's outline";
  EXPECT_GE(count(pdf, "/ShadingType 2"), 1u);
  EXPECT_EQ(count(svg, "stroke=\"url(#"), 1u);
  EXPECT_EQ(count(svg, "filter=\"url(#"), 1u);
  EXPECT_EQ(count(svg, "<feGaussianBlur stdDeviation=\"3\"/>"), 1u);
  EXPECT_EQ(count(svg, "<g clip-path="), 1u);
  EXPECT_EQ(count(svg, "<g"), count(svg, "</g>"));
}

TEST(Pdf, TextThatTheFontLibraryRefusesIsLeftOut) {
  const auto layout = [](double size) {
    auto text = std::make_shared<TextLayout>();
    text->styles.push_back({"Liberation Sans", size, {0x008000}, true});
    text->lines.push_back({{{"Hi", 0, 0, 30, 22, false}}, 0, 0, 22, 36});
    return text;
  };
  for (const double scale : {1e4, 1e6, 1e8, 1e20, 1e200, 1e308 * 10, -1e6, 0.0, 1e-300}) {
    Scene scene = sceneOf("Page-1", 100, 50);
    scene.items = {ShapeBegin{{}, 1, "A01", "https://example.org", ""},
                   TextItem{layout(30), Matrix::translation(10, 5) * Matrix::scaling(scale, scale), {0xFFFF00, 1}},
                   ShapeEnd{},
                   TextItem{layout(30), Matrix::translation(scale, 5), {0xFFFF00, 1}},
                   TextItem{layout(scale), {}, {}},
                   box(80, 10, 90, 20, Colour{0xFF0000})};
    const Scene pages[] = {scene, scene};
    EXPECT_TRUE(writePdf(pages, "").starts_with("%PDF-")) << scale;
    const std::string png = writePng(scene, 72);
    if (png.empty()) {
      ADD_FAILURE() << scale;
      continue;
    }
    EXPECT_EQ(Pixels(png).at(85, 15), 0xFF0000u) << scale;
  }
}

}  // namespace
}  // namespace quorvel::render
