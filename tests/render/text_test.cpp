// How text is laid out and placed. Only what is true for any font: exact positions depend on the fonts of one machine.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "render/drawing.h"
#include "render/scene/drawable.h"
#include "render/text/layout.h"
#include "render/text/text_metrics.h"

namespace quorvel::render {
namespace {

/// A line is as high as its type times 1.2, unless the paragraph says otherwise.
constexpr double lineHeight = 12 * 1.2;

struct TextDrawing : Drawing {
  host::SheetId shape = addShape(2, 1.5, 2, 1);

  explicit TextDrawing(const char* text = "") { setText(shape, text); }
  /// The only text of the scene.
  TextItem item() const {
    const Scene built = scene();
    const auto found = itemsOf<TextItem>(built);
    return found.size() == 1 ? *found[0] : TextItem{std::make_shared<TextLayout>(), {}, {}};
  }
  std::string lines() const {
    std::string all;
    const TextItem text = item();
    for (const TextLine& line : text.layout->lines) {
      for (const TextRun& run : line.runs) all += run.text;
      all += '|';
    }
    return all;
  }
  /// The lines' common box on the page, in points.
  Box box() const {
    const TextItem text = item();
    Box found;
    for (const TextLine& line : text.layout->lines) {
      found.add(text.transform({line.left, line.top}));
      found.add(text.transform({line.left + line.width, line.top + line.height}));
    }
    return found;
  }
};

TEST(Text, BreaksWhereTheBlockEnds) {
  TextDrawing drawing("Check the order against the customer's credit\nDone\n");
  EXPECT_EQ(drawing.lines(), "Check the order against |the customer's credit|Done|");
  drawing.set(drawing.shape, "TxtWidth", 20);
  drawing.set(drawing.shape, "TxtHeight", 1);
  EXPECT_EQ(drawing.lines(), "Check the order against the customer's credit|Done|");
  drawing.set(drawing.shape, "TxtWidth", 0.3);
  const TextItem narrow = drawing.item();
  EXPECT_GT(narrow.layout->lines.size(), 8u) << "words that are too long break too";
  drawing.setText(drawing.shape, "\n \n");
  EXPECT_EQ(drawing.lines(), "") << "blank text is not drawn";
  drawing.setText(drawing.shape, "A\n\nB\n");
  EXPECT_EQ(drawing.lines(), "A||B|");
  drawing.set(drawing.shape, "HideText", 1);
  EXPECT_EQ(drawing.lines(), "");
}

TEST(Text, IsAlignedInItsBlock) {
  TextDrawing drawing("Task");
  // The block is the shape: 72 to 216 points across, 72 to 144 down.
  const Box centred = drawing.box();
  EXPECT_NEAR((centred.left + centred.right) / 2, 144, 0.01);
  EXPECT_NEAR((centred.top + centred.bottom) / 2, 108, 0.01);
  EXPECT_NEAR(centred.height(), lineHeight, 0.01);
  struct Case {
    int horizontal, vertical;
    double Box::*side;
    double expected;
  };
  const Case cases[] = {
      {0, 1, &Box::left, 76}, {2, 1, &Box::right, 216}, {1, 0, &Box::top, 72}, {1, 2, &Box::bottom, 144}};
  for (const Case& each : cases) {
    drawing.set(drawing.shape, "LeftMargin", 4.0 / 72);
    drawing.set(drawing.shape, "Para.HorzAlign", each.horizontal);
    drawing.set(drawing.shape, "VerticalAlign", each.vertical);
    EXPECT_NEAR(drawing.box().*each.side, each.expected, 0.01) << each.horizontal << each.vertical;
  }
  drawing.set(drawing.shape, "TxtPinX", 0.0);
  drawing.set(drawing.shape, "TxtPinY", 0.0);
  drawing.set(drawing.shape, "TxtWidth", 1);
  drawing.set(drawing.shape, "TxtHeight", 0.5);
  drawing.set(drawing.shape, "LeftMargin", 0.0);
  drawing.set(drawing.shape, "Para.HorzAlign", 1);
  drawing.set(drawing.shape, "VerticalAlign", 1);
  EXPECT_NEAR((drawing.box().left + drawing.box().right) / 2, 72, 0.01) << "about the shape's lower left corner";
  EXPECT_NEAR((drawing.box().top + drawing.box().bottom) / 2, 144, 0.01);
}

TEST(Text, BlanksAtTheEndDoNotMoveIt) {
  for (const int alignment : {1, 2}) {
    TextDrawing plain("Task Link"), blank("Task Link   "), broken("Task Link and more of it to break the line"),
        narrow("Task Link");
    for (TextDrawing* each : {&plain, &blank, &broken, &narrow}) {
      each->set(each->shape, "Para.HorzAlign", alignment);
      each->set(each->shape, "TextBkgnd", 3);
    }
    EXPECT_NEAR(plain.box().left, blank.box().left, 1e-6);
    EXPECT_NEAR(plain.box().right, blank.box().right, 1e-6) << "nor do they have a background";
    broken.set(broken.shape, "TxtWidth", 1);
    narrow.set(narrow.shape, "TxtWidth", 1);
    const TextItem item = broken.item();
    EXPECT_EQ(item.layout->lines.at(0).runs.at(0).text, "Task Link ");
    EXPECT_NEAR(item.layout->lines[0].left, narrow.item().layout->lines.at(0).left, 1e-6);
  }
}

TEST(Text, RunsDownward) {
  TextDrawing drawing("Check\nDone");
  drawing.set(drawing.shape, "TextDirection", 1);
  drawing.set(drawing.shape, "Para.HorzAlign", 0.0);
  drawing.set(drawing.shape, "VerticalAlign", 0.0);
  const TextItem item = drawing.item();
  const TextLine &first = item.layout->lines.at(0), &second = item.layout->lines.at(1);
  const auto place = [&](const TextLine& line) { return item.transform({line.left, line.top}); };
  EXPECT_NEAR(place(first).x, 216, 1e-6) << "the first line at the right";
  EXPECT_NEAR(place(first).y, 72, 1e-6) << "from the top";
  EXPECT_NEAR(place(second).x, 216 - lineHeight, 1e-6);
  EXPECT_GT(item.transform({10, 0}).y, item.transform({0, 0}).y);
  drawing.set(drawing.shape, "Height", 20.0 / 72);
  EXPECT_GT(drawing.item().layout->lines.size(), 2u) << "broken where the block ends below";

  TextDrawing mixed("ab\u7530\u4E2D\u3000\uFF08");
  mixed.set(mixed.shape, "TextDirection", 1);
  const Scene scene = mixed.scene();
  std::string upright;
  double last = -1;
  for (const TextItem* each : itemsOf<TextItem>(scene)) {
    if (std::abs(each->transform.b) > 1e-9) continue;
    upright += each->layout->lines.at(0).runs.at(0).text;
    const double y = each->transform({0, 0}).y;
    EXPECT_GT(y, last);
    last = y;
  }
  EXPECT_TRUE(upright.starts_with("\u7530\u4E2D")) << upright;
  EXPECT_EQ(upright.find("\uFF08"), std::string::npos) << "brackets are rotated with the line";
}

TEST(Text, IsLeftOutFarFromThePage) {
  for (const double far : {1e5, 1e30, 1e200, -1e200}) {
    TextDrawing drawing("Task");
    drawing.addGeometry(drawing.shape, 1, {{0, 0}, {far, 0}, {far, 1}, {0, 0}});
    drawing.set(drawing.shape, "TxtPinX", far);
    const Scene scene = drawing.scene();
    EXPECT_TRUE(itemsOf<TextItem>(scene).empty()) << far;
    const Box box = boundsOf(itemsOf<PathItem>(scene).at(0)->path);
    EXPECT_TRUE(box.left >= -farthestPlace && box.right <= farthestPlace) << far;
    drawing.set(drawing.store.page(drawing.page)->sheet, "PageWidth", std::abs(far));
    EXPECT_LE(drawing.scene().width, farthestPlace) << far;
  }
}

TEST(Text, TurnsWithItsShapeAndStaysReadableWhenFlipped) {
  TextDrawing drawing("Task");
  drawing.set(drawing.shape, "Angle", std::numbers::pi / 2);
  EXPECT_NEAR(drawing.item().transform.b, -1, 1e-9) << "a quarter turn to the left reads upward";
  drawing.set(drawing.shape, "TxtAngle", -std::numbers::pi / 2);
  EXPECT_NEAR(drawing.item().transform.a, 1, 1e-9);
  drawing.set(drawing.shape, "Angle", 0.0);
  drawing.set(drawing.shape, "TxtAngle", 0.0);
  drawing.set(drawing.shape, "FlipX", 1);
  const Matrix flipped = drawing.item().transform;
  EXPECT_NEAR(flipped.a, 1, 1e-9);
  EXPECT_GT(flipped.determinant(), 0);
  EXPECT_NEAR((drawing.box().left + drawing.box().right) / 2, 144, 0.01);
}

TEST(Text, KeepsItsSizeInAScaledDrawing) {
  TextDrawing drawing("Task");
  const Box plain = drawing.box();
  const auto sheet = drawing.store.page(drawing.page)->sheet;
  drawing.set(sheet, "DrawingScale", 2);
  const Box scaled = drawing.box();
  EXPECT_NEAR(scaled.width(), plain.width(), 0.01);
  EXPECT_NEAR(scaled.height(), plain.height(), 0.01);
}

TEST(Text, RunsTakeTheirFormat) {
  TextDrawing drawing;
  using host::TextPiece;
  drawing.store.sheet(drawing.shape)->text =
      std::make_shared<host::TextBody>(host::TextBody{{TextPiece::CharacterRun, 0, ""},
                                                      {TextPiece::Characters, 0, "big "},
                                                      {TextPiece::CharacterRun, 1, ""},
                                                      {TextPiece::Characters, 0, "bold"},
                                                      {TextPiece::CharacterRun, 2, ""},
                                                      {TextPiece::Characters, 0, "up\n"},
                                                      {TextPiece::ParagraphRun, 1, ""},
                                                      {TextPiece::Characters, 0, "next"}});
  drawing.set(drawing.shape, "Char.Size[1]", 0.25);
  drawing.set(drawing.shape, "Char.Style[2]", 1 + 4);
  drawing.set(drawing.shape, "Char.Color[2]", 2);
  drawing.set(drawing.shape, "Char.Case[2]", 1);
  drawing.set(drawing.shape, "Char.Pos[3]", 1);
  drawing.set(drawing.shape, "Para.HorzAlign[2]", 0.0);
  drawing.set(drawing.shape, "Para.SpLine[2]", 0.5);
  drawing.set(drawing.shape, "Para.SpBefore[2]", 0.125);
  const TextItem item = drawing.item();
  const TextLayout& layout = *item.layout;
  ASSERT_EQ(layout.lines.size(), 2u);
  ASSERT_EQ(layout.lines[0].runs.size(), 3u);
  const auto& runs = layout.lines[0].runs;
  EXPECT_EQ(runs[1].text, "BOLD");
  const TextStyle& bold = layout.styles[std::size_t(runs[1].style)];
  EXPECT_TRUE(bold.bold && bold.underline && !bold.italic);
  EXPECT_EQ(bold.colour.rgb, 0xFF0000u);
  EXPECT_EQ(layout.styles[std::size_t(runs[0].style)].size, 18);
  EXPECT_LT(runs[2].baseline, runs[0].baseline);
  EXPECT_LT(layout.styles[std::size_t(runs[2].style)].size, 12);
  EXPECT_NEAR(runs[1].x, runs[0].x + runs[0].width, 1e-6);
  EXPECT_NEAR(layout.lines[0].height, 18 * 1.2, 1e-6) << "the largest type sets the line's height";
  EXPECT_NEAR(layout.lines[1].top - layout.lines[0].top - layout.lines[0].height, 9, 1e-6);
  EXPECT_NEAR(layout.lines[1].height, 36, 1e-6);
  EXPECT_EQ(layout.lines[1].left, 0);
}

/// Many runs in one paragraph, all of one font: only the colours differ.
TEST(Text, RunsOfOneFaceKeepTheirColours) {
  constexpr int runCount = 300;
  TextDrawing drawing;
  host::TextBody body;
  for (int i = 0; i < runCount; ++i) {
    body.push_back({host::TextPiece::CharacterRun, i % 2, ""});
    body.push_back({host::TextPiece::Characters, 0, i % 2 ? "ab " : "cd "});
  }
  drawing.store.sheet(drawing.shape)->text = std::make_shared<host::TextBody>(std::move(body));
  drawing.set(drawing.shape, "Char.Color[1]", 2);
  drawing.set(drawing.shape, "Char.Color[2]", 4);
  const TextItem item = drawing.item();
  int seen = 0;
  for (const TextLine& line : item.layout->lines) {
    for (const TextRun& run : line.runs) {
      EXPECT_EQ(run.text.substr(0, 2), seen % 2 ? "ab" : "cd");
      EXPECT_EQ(item.layout->styles[std::size_t(run.style)].colour.rgb, seen % 2 ? 0x0000FFu : 0xFF0000u);
      ++seen;
    }
  }
  EXPECT_EQ(seen, runCount);
}

TEST(Text, IsIndentedAfterBulletsAndFillsJustifiedLines) {
  TextDrawing drawing("Check the order against the customer's credit");
  drawing.set(drawing.shape, "Para.HorzAlign", 0.0);
  drawing.set(drawing.shape, "Para.IndLeft", 0.25);
  drawing.set(drawing.shape, "Para.IndFirst", -0.25);
  drawing.set(drawing.shape, "Para.Bullet", 1);
  const TextItem bulleted = drawing.item();
  const auto& lines = bulleted.layout->lines;
  ASSERT_GE(lines.size(), 2u);
  EXPECT_EQ(lines[0].runs[0].text, "•");
  EXPECT_NEAR(lines[0].runs[0].x, 0, 1e-6);
  EXPECT_NEAR(lines[0].runs[1].x, 18, 1e-6);
  EXPECT_NEAR(lines[1].runs[0].x, 18, 1e-6);
  drawing.set(drawing.shape, "Para.Bullet", 0.0);
  drawing.set(drawing.shape, "Para.IndFirst", 0.0);
  drawing.set(drawing.shape, "Para.HorzAlign", 3);
  const TextItem justified = drawing.item();
  EXPECT_NEAR(justified.layout->lines[0].runs[0].width, 144 - 18, 0.5);
  EXPECT_TRUE(justified.layout->lines[0].runs[0].stretched);
  EXPECT_FALSE(justified.layout->lines.back().runs[0].stretched);
}

TEST(Text, BackgroundIsBehindTheLinesOnly) {
  TextDrawing drawing("Yes");
  EXPECT_EQ(drawing.item().background.opacity, 0);
  drawing.set(drawing.shape, "TextBkgnd", 3);
  EXPECT_EQ(drawing.item().background, (Colour{0xFF0000, 1})) << "a colour's number plus one";
  drawing.set(drawing.shape, "TextBkgnd", "#ABCDEF");
  drawing.set(drawing.shape, "TextBkgndTrans", 0.25);
  EXPECT_EQ(drawing.item().background, (Colour{0xABCDEF, 0.75}));
  drawing.set(drawing.shape, "TextBkgnd", 255);
  EXPECT_EQ(drawing.item().background.opacity, 0);
}

TEST(TextEngine, LaysEqualTextsOutOnce) {
  Drawing drawing;
  for (int i = 0; i < 50; ++i) drawing.setText(drawing.addShape(1, 1, 2, 1), i % 2 ? "odd" : "even");
  TextEngine engine;
  SceneOptions options;
  options.textEngine = &engine;
  drawing.scene(options);
  drawing.scene(options);
  EXPECT_EQ(engine.layoutCount(), 2u);
}

TEST(PangoTextMetrics, AgreesWithTheLayout) {
  TextDrawing drawing("Check the order against the customer's credit\nDone");
  const PangoTextMetrics metrics;
  const auto wide = metrics.measure(drawing.store, drawing.shape, -1),
             narrow = metrics.measure(drawing.store, drawing.shape, 2);
  EXPECT_NEAR(wide.height, 2 * lineHeight / 72, 1e-6);
  EXPECT_NEAR(narrow.height, 3 * lineHeight / 72, 1e-6);
  EXPECT_GT(wide.width, 2);
  EXPECT_LE(narrow.width, 2.0001);
  EXPECT_NEAR(metrics.measure(drawing.store, drawing.shape, wide.width).height, wide.height, 1e-6)
      << "text fits into the width that it was measured to need";
  const auto empty = metrics.measure(drawing.store, drawing.addShape(1, 1, 1, 1), -1);
  EXPECT_EQ(empty.width, 0);
  EXPECT_NEAR(empty.height, lineHeight / 72, 1e-6) << "boxes that grow with their text count on one line";
  EXPECT_EQ(metrics.measure(drawing.store, {}, -1).width, 0);

  const auto widthOf = [&](const char* text) {
    TextDrawing letters(text);
    return metrics.measure(letters.store, letters.shape, -1).width;
  };
  const double blank = 2 * widthOf("x") - widthOf("xx");
  EXPECT_GT(blank, 0.01);
  EXPECT_NEAR(widthOf("x x"), 2 * widthOf("x"), 1e-4) << "the end counts as a blank";
  EXPECT_NEAR(widthOf("AV"), widthOf("A") + widthOf("V") - blank, 1e-4) << "no kerning";
  EXPECT_NEAR(widthOf("fi"), widthOf("f") + widthOf("i") - blank, 1e-4) << "no ligatures";
}

}  // namespace
}  // namespace quorvel::render
