#include "render/text/vertical.h"

#include <glib.h>

#include "base/text.h"

namespace quorvel::render {
namespace {

/// Of wide letters, which fill a square: brackets and dashes turn with the line.
bool standsUpright(char32_t letter) {
  const GUnicodeType type = g_unichar_type(letter);
  return type != G_UNICODE_OPEN_PUNCTUATION && type != G_UNICODE_CLOSE_PUNCTUATION &&
         type != G_UNICODE_DASH_PUNCTUATION && letter != U'\u30FC';
}

/// Then all letters take the same space.
bool isAllWide(const std::string& text) {
  for (std::size_t at = 0; at < text.size();)
    if (!g_unichar_iswide(decodeNext(text, at))) return false;
  return !text.empty();
}

/// A letter of one width on one line, turned back about the middle of its square.
TextItem turnedBack(const TextItem& text, const TextStyle& style, TextRun run, const TextLine& line) {
  const double middle = line.top + line.height / 2;
  TextItem item;
  item.transform = text.transform * Matrix::translation(run.x + run.width / 2, middle) * Matrix{0, -1, 1, 0, 0, 0} *
                   Matrix::translation(-run.width / 2, -line.height / 2);
  auto layout = std::make_shared<TextLayout>();
  layout->styles = {style};
  layout->width = run.width;
  layout->height = line.height;
  run.x = 0;
  run.style = 0;
  run.baseline -= line.top;
  const double width = run.width;
  layout->lines.push_back({{std::move(run)}, 0, 0, width, line.height});
  item.layout = std::move(layout);
  return item;
}

}  // namespace

std::vector<TextItem> uprightLetters(TextItem& text) {
  std::vector<TextItem> found;
  auto rest = std::make_shared<TextLayout>(*text.layout);
  for (TextLine& line : rest->lines) {
    std::vector<TextRun> turned;
    for (TextRun& run : line.runs) {
      if (!isAllWide(run.text)) {
        turned.push_back(std::move(run));
        continue;
      }
      const double advance = run.width / double(g_utf8_strlen(run.text.data(), gssize(run.text.size())));
      double x = run.x;
      for (std::size_t from = 0, to = 0; from < run.text.size(); from = to, x += advance) {
        const char32_t letter = decodeNext(run.text, to);
        TextRun single{run.text.substr(from, to - from), run.style, x, run.baseline, advance, false};
        if (standsUpright(letter))
          found.push_back(turnedBack(text, rest->styles[std::size_t(run.style)], std::move(single), line));
        else
          turned.push_back(std::move(single));
      }
    }
    line.runs = std::move(turned);
  }
  if (!found.empty()) text.layout = std::move(rest);
  return found;
}

}  // namespace quorvel::render
