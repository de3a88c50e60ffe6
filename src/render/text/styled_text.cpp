#include "render/text/styled_text.h"

#include <glib.h>

#include <algorithm>
#include <map>

#include "base/text.h"
#include "host/recalc/drawn_field.h"
#include "host/text/text.h"
#include "render/cells/colours.h"
#include "render/cells/fill.h"
#include "render/text/fonts.h"

namespace quorvel::render {
namespace {

using host::SectionNumber;

std::string upperCase(const std::string& text) {
  gchar* upper = g_utf8_strup(text.data(), gssize(text.size()));
  std::string result = upper;
  g_free(upper);
  return result;
}

std::string initialCapitals(const std::string& text) {
  std::string result;
  bool inWord = false;
  for (std::size_t at = 0; at < text.size();) {
    const char32_t codePoint = decodeNext(text, at);
    appendUtf8(result, inWord ? codePoint : g_unichar_totitle(codePoint));
    inWord = g_unichar_isalnum(codePoint) || codePoint == '\'';
  }
  return result;
}

std::string_view bulletOf(int number) {
  static constexpr std::string_view bullets[] = {"", "•", "○", "■", "□", "❖", "▶", "✔"};
  return number > 0 && number < int(std::size(bullets)) ? bullets[number] : std::string_view();
}

class Reader {
 public:
  Reader(const PageContext& page, const ShapeCells& cells) : page_(page), cells_(cells) {}

  StyledText read(const host::TextBody& body) {
    text_.tabStop = std::max(1.0, cells_.number(objectKeys().DefaultTabStop, 0.5) * 72);
    for (const host::TextPiece& piece : body) {
      switch (piece.kind) {
        case host::TextPiece::CharacterRun:
          character_ = piece.index;
          break;
        case host::TextPiece::ParagraphRun:
          paragraph_ = piece.index;
          break;
        case host::TextPiece::TabRun:
          break;
        case host::TextPiece::Characters:
          add(piece.text);
          break;
        case host::TextPiece::Field:
          add(fieldTextOf(piece));
          break;
      }
    }
    const bool blank = std::all_of(text_.paragraphs.begin(), text_.paragraphs.end(), isEmpty);
    if (blank) text_.paragraphs.clear();
    return std::move(text_);
  }

 private:
  static bool isEmpty(const Paragraph& paragraph) {
    return std::all_of(paragraph.spans.begin(), paragraph.spans.end(),
                       [](const TextSpan& span) { return trimmed(span.text).empty(); });
  }

  /// A field whose row was deleted keeps the text that it last showed.
  std::string fieldTextOf(const host::TextPiece& piece) const {
    const auto row = host::RowKey::index(static_cast<std::uint32_t>(std::max(piece.index, 0)));
    if (!host::rowExists(page_.store, cells_.sheet(), SectionNumber::TextField, row, false)) return piece.text;
    return page_.front ? host::fieldTextBehind(page_.store, cells_.sheet(), piece.index, page_.front)
                       : host::fieldText(page_.store, cells_.sheet(), piece.index);
  }

  /// A line end begins a paragraph only when something follows it.
  void add(std::string_view text) {
    const int format = formatOf(character_);
    while (true) {
      const std::size_t end = text.find('\n');
      if (text_.paragraphs.empty() || ended_) {
        text_.paragraphs.push_back({paragraphFormat(), {}});
        ended_ = false;
      }
      addSpan(text.substr(0, end), format);
      if (end == std::string_view::npos) return;
      ended_ = true;
      text.remove_prefix(end + 1);
      if (text.empty()) return;
    }
  }

  void addSpan(std::string_view text, int format) {
    std::string shown(text);
    std::erase(shown, '\r');
    const int letterCase = cases_[format];
    if (letterCase == 1) shown = upperCase(shown);
    if (letterCase == 2) shown = initialCapitals(shown);
    std::vector<TextSpan>& spans = text_.paragraphs.back().spans;
    if (!spans.empty() && (spans.back().format == format || shown.empty()))
      spans.back().text += shown;
    else
      spans.push_back({std::move(shown), format});
  }

  int formatOf(int row) {
    const auto known = formatOfRow_.find(row);
    if (known != formatOfRow_.end()) return known->second;
    int letterCase = 0;
    const CharacterFormat format = characterFormat(row, letterCase);
    text_.formats.push_back(format);
    const int index = int(text_.formats.size()) - 1;
    cases_[index] = letterCase;
    formatOfRow_[row] = index;
    return index;
  }

  CharacterFormat characterFormat(int row, int& letterCase) {
    const ColumnKeys& columns = columnKeys();
    const auto at = [&](host::Column column) {
      return host::CellKey{SectionNumber::Character, host::RowKey::index(std::uint32_t(std::max(row, 0))), column};
    };
    CharacterFormat format;
    TextStyle& style = format.style;
    const host::Value font = cells_.value(at(columns.CharacterFont)), colour = cells_.value(at(columns.CharacterColor)),
                      bits = cells_.value(at(columns.CharacterStyle));
    const ThemeFont* themed = nullptr;
    std::uint32_t themedRgb = 0;
    if (isThemed(colour) || isThemed(bits)) themed = themedFont(themedRgb);
    style.family = installedFamily(familyOf(font));
    style.size = std::clamp(cells_.number(at(columns.CharacterSize), 1.0 / 6) * 72, 0.1, 1600.0);
    style.colour.rgb = colourOf(page_.document, colour).or_(themedRgb);
    style.colour.opacity = 1 - std::clamp(cells_.number(at(columns.CharacterColorTrans)), 0.0, 1.0);
    const int styleBits = isThemed(bits) ? (themed ? themed->style : 0) : int(bits.asNumber().or_(0));
    style.bold = styleBits & 1;
    style.italic = styleBits & 2;
    style.underline = styleBits & 4;
    style.smallCaps = styleBits & 8;
    style.doubleUnderline = cells_.flag(at(columns.CharacterDblUnderline));
    style.strikethrough = cells_.flag(at(columns.CharacterStrikethru));
    style.letterSpacing = cells_.number(at(columns.CharacterLetterspace)) * 72;
    letterCase = cells_.integer(at(columns.CharacterCase));
    const int position = cells_.integer(at(columns.CharacterPos));
    format.position = position == 1   ? CharacterFormat::Raised
                      : position == 2 ? CharacterFormat::Lowered
                                      : CharacterFormat::OnLine;
    return format;
  }

  std::string familyOf(const host::Value& font) const {
    if (isThemed(font)) return page_.theme ? page_.theme->fontFamily : std::string("Calibri");
    if (font.isText()) return std::string(font.textView());
    // Older drawings number their fonts.
    const double number = font.asNumber().or_(-1);
    if (number >= 0 && number < double(page_.document.fonts.size()))
      return page_.document.fonts[std::size_t(number)].name;
    return "Arial";
  }

  const ThemeFont* themedFont(std::uint32_t& rgb) const {
    if (!page_.theme) return nullptr;
    const ObjectKeys& keys = objectKeys();
    const bool connector = cells_.integer(keys.QuickStyleType) == 0 && cells_.held(keys.BeginX);
    const std::vector<ThemeFont>& fonts = connector ? page_.theme->connectorFonts : page_.theme->fonts;
    const int given = cells_.integer(keys.QuickStyleFontMatrix, 100);
    const int matrix = connector && given >= 100 ? 1 : quickStyleIndex(page_, given, &Theme::VariationStyle::font);
    const std::uint32_t own =
        page_.theme->quickColour(cells_.integer(keys.QuickStyleFontColor, 100), page_.variationColour);
    if (matrix < 1 || matrix > int(fonts.size())) return nullptr;
    const ThemeFont& font = fonts[std::size_t(matrix - 1)];
    rgb = page_.theme->resolve(font.colour, own);
    // Text without a fill behind it is on the page, and must be distinguished from it.
    constexpr int varyText = 2;
    constexpr double readable = 1.0 / 6;
    if (cells_.integer(keys.QuickStyleVariation) & varyText) {
      const double page = luminance(page_.theme->background);
      for (std::uint32_t other : {own, page_.theme->colours[0], page_.theme->colours[1]})
        if (std::abs(luminance(rgb) - page) < readable) rgb = other;
    }
    return &font;
  }

  ParagraphFormat paragraphFormat() const {
    const ColumnKeys& columns = columnKeys();
    const auto at = [&](host::Column column) {
      return host::CellKey{SectionNumber::Paragraph, host::RowKey::index(std::uint32_t(std::max(paragraph_, 0))),
                           column};
    };
    ParagraphFormat format;
    format.indentFirst = cells_.number(at(columns.ParagraphIndFirst)) * 72;
    format.indentLeft = cells_.number(at(columns.ParagraphIndLeft)) * 72;
    format.indentRight = cells_.number(at(columns.ParagraphIndRight)) * 72;
    const double spacing = cells_.number(at(columns.ParagraphSpLine), -1.2);
    format.lineSpacing = spacing > 0 ? spacing * 72 : spacing;
    format.spaceBefore = cells_.number(at(columns.ParagraphSpBefore)) * 72;
    format.spaceAfter = cells_.number(at(columns.ParagraphSpAfter)) * 72;
    const int alignment = cells_.integer(at(columns.ParagraphHorzAlign), 1);
    format.alignment = alignment == 0   ? ParagraphFormat::Left
                       : alignment == 2 ? ParagraphFormat::Right
                       : alignment >= 3 ? ParagraphFormat::Justified
                                        : ParagraphFormat::Centre;
    if (const int bullet = cells_.integer(at(columns.ParagraphBullet))) {
      format.bullet = cells_.text(at(columns.ParagraphBulletStr));
      if (format.bullet.empty() || format.bullet == "0") format.bullet = bulletOf(bullet);
      // Negative: a share of the text's size, which is what 0 gives too.
      const double size = cells_.number(at(columns.ParagraphBulletFontSize), -1);
      if (size > 0) format.bulletSize = size * 72;
    }
    return format;
  }

  const PageContext& page_;
  const ShapeCells& cells_;
  StyledText text_;
  std::map<int, int> formatOfRow_, cases_;
  int character_ = 0, paragraph_ = 0;
  bool ended_ = false;
};

void put(std::string& key, double number) { key.append(reinterpret_cast<const char*>(&number), sizeof number); }

}  // namespace

StyledText styledTextOf(const PageContext& page, const ShapeCells& cells) {
  const host::TextBody* body = host::textOf(page.store, cells.sheet());
  if (!body || body->empty()) return {};
  return Reader(page, cells).read(*body);
}

std::string StyledText::key() const {
  std::string key;
  for (const CharacterFormat& format : formats) {
    const TextStyle& style = format.style;
    key += style.family;
    for (double number : {style.size, double(style.colour.rgb), style.colour.opacity, style.letterSpacing})
      put(key, number);
    for (bool flag :
         {style.bold, style.italic, style.underline, style.doubleUnderline, style.strikethrough, style.smallCaps})
      key += flag ? '1' : '0';
    key += char('0' + format.position);
  }
  put(key, tabStop);
  for (const Paragraph& paragraph : paragraphs) {
    const ParagraphFormat& format = paragraph.format;
    for (double number : {format.indentFirst, format.indentLeft, format.indentRight, format.lineSpacing,
                          format.spaceBefore, format.spaceAfter, format.bulletSize, double(format.alignment)})
      put(key, number);
    key += format.bullet;
    for (const TextSpan& span : paragraph.spans) {
      key += '\x01';
      key += std::to_string(span.format);
      key += '\x02';
      key += span.text;
    }
    key += '\x03';
  }
  return key;
}

}  // namespace quorvel::render
