// Scenes as SVG.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string_view>

#include "render/drawing.h"
#include "render/svg/writer.h"

namespace quorvel::render {
namespace {

/// Removes the text between `from` and `to` from every element that begins with `element`.
void leaveOut(std::string& svg, std::string_view element, std::string_view from, std::string_view to) {
  for (std::size_t at = 0; (at = svg.find(element, at)) != std::string::npos; at += element.size()) {
    const std::size_t end = svg.find('>', at), begin = svg.find(from, at);
    if (begin == std::string::npos || begin > end) continue;
    const std::size_t first = begin + from.size();
    svg.erase(first, svg.find(to, first) - first);
  }
}

/// Results of fonts, and pictures, are left out, so that the text is the same on every machine.
std::string normalForm(std::string svg) {
  leaveOut(svg, "<text", " transform=\"", "\"");
  leaveOut(svg, "<text", " font-family=\"", "\"");
  leaveOut(svg, "<tspan", " x=\"", "\"");
  leaveOut(svg, "<tspan", " y=\"", "\"");
  leaveOut(svg, "<image", "base64,", "\"");
  // The paper behind a label is as large as its lines.
  leaveOut(svg, "<path class=\"paper\"", " d=\"", "\"");
  leaveOut(svg, "<path class=\"paper\"", " transform=\"", "\"");
  return svg;
}

void expectFile(const std::string& name, const std::string& actual) {
  const std::string path = QUORVEL_SOURCE_FOLDER "/tests/data/svg/" + name;
  std::ostringstream expected;
  expected << std::ifstream(path).rdbuf();
  if (expected.str() == actual) return;
  std::ofstream(name + ".actual") << actual;
  ADD_FAILURE() << name << " differs; what was drawn is in " << name << ".actual in the current folder";
}

TEST(Svg, OrderHandlingInNormalForm) {
  Drawing drawing;
  const auto check = drawing.addRectangle(1, 2, 1, 0.5);
  drawing.store.sheet(check)->name = "AB01 <check>";
  drawing.set(check, "Rounding", 0.1);
  drawing.set(check, "FillForegnd", "#DDEEFF");
  drawing.setText(check, "Check & confirm");
  drawing.set(check, "Hyperlink.Row_1.Address", "plans/order \"A\".html");
  drawing.set(check, "Hyperlink.Row_1.Description", "The plan");
  const auto group = drawing.addShape(3, 2, 1, 0.5, {}, host::SheetKind::Group);
  const auto ship = drawing.addRectangle(0.5, 0.25, 1, 0.5, group);
  drawing.set(ship, "FillPattern", 3);
  const auto graded = drawing.addRectangle(3, 0.5, 1, 0.5);
  drawing.set(graded, "FillPattern", 25);
  drawing.set(graded, "LinePattern", 2);
  const auto link = drawing.addShape(2, 2, 1, 0.2);
  drawing.addGeometry(link, 1, {{0, 0.1}, {1, 0.1}});
  drawing.set(link, "EndArrow", 4);
  drawing.set(link, "TextBkgnd", "#FFFFFF");
  drawing.setText(link, "yes");
  for (int i = 0; i < 2; ++i) {
    const auto picture = drawing.addShape(1 + i, 0.5, 0.5, 0.5, {}, host::SheetKind::Foreign);
    drawing.store.sheet(picture)->foreign =
        std::make_shared<host::ForeignData>(host::ForeignData{"Bitmap", "PNG", "png", "\x89PNG picture", {}});
    if (i == 0) continue;
    drawing.store.sheet(picture)->foreign = drawing.store.sheet(host::SheetId{picture.value - 1})->foreign;
    drawing.set(picture, "ImgWidth", 1);
    drawing.set(picture, "ImgHeight", 1);
  }
  expectFile("order_handling.svg", normalForm(writeSvg(drawing.scene())));
}

TEST(Svg, LinksWithinTheDrawingAndOnesThatRunScriptsAreNotFollowed) {
  const struct {
    const char *address, *place, *written;
  } cases[] = {
      {"..\\x y.vsd", "Page-2/A01", "<a xlink:href=\"../x%20y.vsd#Page-2/A01\">"},
      {"", "Page-2/A01", " data-link=\"Page-2/A01\""},
      {"javascript:alert(1)", "", "<g data-shape=\"1\" data-name=\"Sheet.1\">"},
  };
  for (const auto& c : cases) {
    Drawing drawing;
    const auto shape = drawing.addRectangle(1, 1, 1, 1);
    drawing.set(shape, "Hyperlink.Row_1.Address", c.address);
    drawing.set(shape, "Hyperlink.Row_1.SubAddress", c.place);
    const std::string svg = writeSvg(drawing.scene());
    EXPECT_NE(svg.find(c.written), std::string::npos) << svg;
    EXPECT_EQ(svg.find("<a ") != std::string::npos, std::string_view(c.written).starts_with("<a")) << svg;
  }
}

TEST(Svg, NumbersAndTextAreKept) {
  const auto number = [](double value, int digits) {
    std::string text;
    svg::appendNumber(text, value, digits);
    return text;
  };
  EXPECT_EQ(number(0.5, 3), "0.5");
  EXPECT_EQ(number(-0.0001, 3), "0");
  EXPECT_EQ(number(100, 0), "100");
  EXPECT_EQ(number(1e300 * 1e300, 3), "0");
  std::string escaped;
  svg::appendEscaped(escaped, "a<b & \"ü\"\x01\xFF");
  EXPECT_EQ(escaped, "a&lt;b &amp; &quot;ü&quot;\xEF\xBF\xBD");
  std::string base64;
  for (const char* bytes : {"", "f", "fo", "foo", "foob"}) svg::appendBase64(base64, bytes), base64 += '|';
  EXPECT_EQ(base64, "|Zg==|Zm8=|Zm9v|Zm9vYg==|");
}

TEST(Svg, MasterSheetShowsEveryMasterWithItsName) {
  Drawing drawing;
  for (const char* name : {"Task", "Task Link"}) {
    const auto master = drawing.store.addMaster(drawing.document, name);
    drawing.page = drawing.store.master(master)->contents;
    drawing.addRectangle(40, 30, 80, 60);
  }
  const auto hidden = drawing.store.addMaster(drawing.document, "Hidden");
  drawing.store.master(hidden)->hidden = true;
  const Scene scene = buildMasterSheet(drawing.store, drawing.document);
  EXPECT_EQ(itemsOf<TextItem>(scene).size(), 2u);
  const auto paths = itemsOf<PathItem>(scene);
  ASSERT_EQ(paths.size(), 2u);
  for (const PathItem* path : paths) {
    const Box box = boundsOf(path->path);
    EXPECT_TRUE(box.left >= 0 && box.right <= scene.width && box.bottom <= scene.height) << "made smaller to fit";
  }
  EXPECT_LT(boundsOf(paths[0]->path).right, boundsOf(paths[1]->path).left);
  EXPECT_TRUE(buildMasterSheet(drawing.store, {}).items.empty());
}

}  // namespace
}  // namespace quorvel::render
