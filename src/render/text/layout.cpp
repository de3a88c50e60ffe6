#include "render/text/layout.h"

#include <algorithm>
#include <cmath>

#include "base/maybe.h"
#include "base/text.h"
#include "render/text/pango_text.h"

namespace quorvel::render {
namespace {

constexpr double unitsPerPoint = PANGO_SCALE;
/// Raised and lowered text: its size, and the place of its baseline, as shares of the text's size.
constexpr double smallSize = 0.62, raisedBy = 0.34, loweredBy = 0.14;
constexpr std::size_t rememberedTexts = 20000;

double drawnSize(const CharacterFormat& format) {
  return format.position == CharacterFormat::OnLine ? format.style.size : format.style.size * smallSize;
}
double baselineShift(const CharacterFormat& format) {
  switch (format.position) {
    case CharacterFormat::Raised:
      return -raisedBy * format.style.size;
    case CharacterFormat::Lowered:
      return loweredBy * format.style.size;
    default:
      return 0;
  }
}

PangoFontDescriptionPointer describe(const CharacterFormat& format) { return fontOf(format.style, drawnSize(format)); }

/// Points that the blanks at a line's end take.
double trailingBlanks(const PangoLayoutLine* line, const std::string& characters) {
  std::size_t end = std::size_t(line->start_index + line->length);
  const std::size_t begin = std::size_t(line->start_index);
  std::size_t last = end;
  while (last > begin && (characters[last - 1] == ' ' || characters[last - 1] == '\t')) --last;
  if (last == end) return 0;
  double width = 0;
  for (GSList* run = line->runs; run; run = run->next) {
    const auto* item = static_cast<const PangoGlyphItem*>(run->data);
    const std::size_t from = std::size_t(item->item->offset);
    for (int i = 0; i < item->glyphs->num_glyphs; ++i)
      if (from + std::size_t(item->glyphs->log_clusters[i]) >= last)
        width += item->glyphs->glyphs[i].geometry.width / unitsPerPoint;
  }
  return width;
}

/// The span of a run. Each span has a font of its own in the layout, so that no run reaches over its end.
class SpanPlaces {
 public:
  void add(std::size_t end, int format) { ends_.emplace_back(end, format); }
  /// Format of the span that holds the byte.
  int formatAt(std::size_t byte) const {
    const auto place = std::ranges::upper_bound(ends_, byte, {}, &std::pair<std::size_t, int>::first);
    return place == ends_.end() ? 0 : place->second;
  }

 private:
  std::vector<std::pair<std::size_t, int>> ends_;  ///< in order: the byte behind the span, its format
};

struct Heights {
  double ascent = 0, descent = 0, size = 0;
  void add(double up, double down, double typeSize) {
    ascent = std::max(ascent, up);
    descent = std::max(descent, down);
    size = std::max(size, typeSize);
  }
};

}  // namespace

struct TextEngine::Pango {
  PangoContextPointer context = newPangoContext();
  using FaceHeights = std::pair<double, double>;         ///< ascent and descent, points
  std::unordered_map<std::string, FaceHeights> metrics;  ///< by description of the face

  FaceHeights heightsOf(const CharacterFormat& format) {
    const PangoFontDescriptionPointer font = describe(format);
    gchar* name = pango_font_description_to_string(font.get());
    const auto [place, isNew] = metrics.try_emplace(name);
    g_free(name);
    if (isNew) place->second = measure(font.get());
    return place->second;
  }
  FaceHeights measure(const PangoFontDescription* description) const;

  /// Heights of the formats of one text, looked up once for each.
  class HeightsOfFormats {
   public:
    HeightsOfFormats(Pango& pango, const StyledText& text) : pango_(pango), text_(text), known_(text.formats.size()) {}
    FaceHeights at(std::size_t format) {
      Maybe<FaceHeights>& known = known_[format];
      if (!known) known = pango_.heightsOf(text_.formats[format]);
      return *known;
    }

   private:
    Pango& pango_;
    const StyledText& text_;
    std::vector<Maybe<FaceHeights>> known_;
  };

  void setParagraph(const StyledText& text, HeightsOfFormats& heights, const Paragraph& paragraph, double width,
                    TextLayout& result, double& top);
};

/// What pango_context_get_metrics gives, without the widths, for which it would take a sample text apart. The sample
/// matters only where the face lacks letters of it: the heights then are those of the replacements too.
TextEngine::Pango::FaceHeights TextEngine::Pango::measure(const PangoFontDescription* description) const {
  PangoLanguage* const language = pango_context_get_language(context.get());
  const std::unique_ptr<PangoFontset, GObjectUnref> faces(
      pango_context_load_fontset(context.get(), description, language));
  PangoFont* first = nullptr;
  const auto takeFirst = [](PangoFontset*, PangoFont* font, gpointer place) -> gboolean {
    *static_cast<PangoFont**>(place) = font;
    return TRUE;
  };
  if (faces) pango_fontset_foreach(faces.get(), takeFirst, &first);
  const auto covers = [&](std::string_view sample) {
    for (std::size_t at = 0; at < sample.size();)
      if (!pango_font_has_char(first, decodeNext(sample, at))) return false;
    return true;
  };
  if (first && covers(pango_language_get_sample_string(language))) {
    PangoRectangle logical;
    pango_font_get_glyph_extents(first, PANGO_GLYPH_EMPTY, nullptr, &logical);
    return {-logical.y / unitsPerPoint, (logical.y + logical.height) / unitsPerPoint};
  }
  PangoFontMetrics* const found = pango_context_get_metrics(context.get(), description, nullptr);
  const FaceHeights heights{pango_font_metrics_get_ascent(found) / unitsPerPoint,
                            pango_font_metrics_get_descent(found) / unitsPerPoint};
  pango_font_metrics_unref(found);
  return heights;
}

void TextEngine::Pango::setParagraph(const StyledText& text, HeightsOfFormats& heightsOfFormats,
                                     const Paragraph& paragraph, double width, TextLayout& result, double& top) {
  const ParagraphFormat& format = paragraph.format;
  std::string characters;
  SpanPlaces places;
  PangoAttrList* attributes = pango_attr_list_new();
  const auto addAttribute = [&](PangoAttribute* attribute, std::size_t from) {
    attribute->start_index = guint(from);
    attribute->end_index = guint(characters.size());
    pango_attr_list_insert(attributes, attribute);
  };
  for (const TextSpan& span : paragraph.spans) {
    const std::size_t from = characters.size();
    characters += span.text;
    const CharacterFormat& character = text.formats[std::size_t(span.format)];
    addAttribute(pango_attr_font_desc_new(describe(character).get()), from);
    addAttribute(pango_attr_font_features_new(fontFeatures), from);
    places.add(characters.size(), span.format);
    if (character.style.letterSpacing != 0)
      addAttribute(pango_attr_letter_spacing_new(int(character.style.letterSpacing * unitsPerPoint)), from);
  }

  PangoLayout* layout = pango_layout_new(context.get());
  pango_layout_set_text(layout, characters.data(), int(characters.size()));
  pango_layout_set_attributes(layout, attributes);
  pango_attr_list_unref(attributes);
  pango_layout_set_wrap(layout, PANGO_WRAP_WORD_CHAR);
  // A first line further left than the others hangs: the block then begins where the first line does. A bullet is
  // in the hanging part, or before the first line where none is, and the first line's text follows it.
  const double hanging = std::max(0.0, -format.indentFirst);
  const int firstFormat = paragraph.spans.empty() ? 0 : paragraph.spans.front().format;
  const double typeSize = text.formats[std::size_t(firstFormat)].style.size;
  const bool bulleted = !format.bullet.empty();
  const double bulletWidth =
      bulleted ? std::max(hanging, (format.bulletSize > 0 ? format.bulletSize : typeSize) * 0.7) : 0;
  const double left = format.indentLeft - (bulleted ? 0 : hanging);
  const double firstIndent =
      bulleted ? std::max(0.0, format.indentFirst) + bulletWidth - hanging : std::max(0.0, format.indentFirst);
  const double otherIndent = bulleted ? 0 : hanging;
  double available = -1;
  if (width >= 0) {
    available = std::max(1.0, width - left - format.indentRight);
    // Blocks as wide as their text are common, and the width may come from a program that measured a little less.
    constexpr double roundedWidths = 0.1;
    pango_layout_set_width(layout, int((available + roundedWidths) * unitsPerPoint));
    pango_layout_set_indent(layout, int((firstIndent - otherIndent) * unitsPerPoint));
    pango_layout_set_justify(layout, format.alignment == ParagraphFormat::Justified);
  }
  PangoTabArray* tabs = pango_tab_array_new(1, FALSE);
  pango_tab_array_set_tab(tabs, 0, PANGO_TAB_LEFT, int(text.tabStop * unitsPerPoint));
  pango_layout_set_tabs(layout, tabs);
  pango_tab_array_free(tabs);

  top += format.spaceBefore;
  bool first = true;
  for (GSList* at = pango_layout_get_lines_readonly(layout); at; at = at->next, first = false) {
    const auto* source = static_cast<PangoLayoutLine*>(at->data);
    TextLine line;
    Heights heights;
    double x = 0;
    for (GSList* run = source->runs; run; run = run->next) {
      const auto* glyphs = static_cast<PangoGlyphItem*>(run->data);
      const PangoItem* item = glyphs->item;
      const int formatIndex = places.formatAt(std::size_t(item->offset));
      const CharacterFormat& character = text.formats[std::size_t(formatIndex)];
      const double runWidth = pango_glyph_string_get_width(glyphs->glyphs) / unitsPerPoint;
      const auto [ascent, descent] = heightsOfFormats.at(std::size_t(formatIndex));
      const double shift = baselineShift(character);
      heights.add(ascent - shift, descent + shift, character.style.size);
      std::string piece = characters.substr(std::size_t(item->offset), std::size_t(item->length));
      const bool blank = piece.find_first_not_of("\t\n") == std::string::npos || piece == "\u2028";
      // Pieces that differ only in the font fallback or the direction stay separate; equal neighbours become one.
      if (!blank) line.runs.push_back({std::move(piece), formatIndex, x, shift, runWidth, false});
      x += runWidth;
    }
    if (line.runs.empty()) {
      const auto index = paragraph.spans.empty() ? 0 : std::size_t(paragraph.spans.back().format);
      const auto [ascent, descent] = heightsOfFormats.at(index);
      heights.add(ascent, descent, text.formats[index].style.size);
    }
    // Blanks at the end move neither a centred nor a right aligned line.
    const double blanks = trailingBlanks(source, characters);
    line.width = x - blanks;
    line.top = top;
    line.height = format.lineSpacing < 0   ? -format.lineSpacing * heights.size
                  : format.lineSpacing > 0 ? format.lineSpacing
                                           : heights.ascent + heights.descent;
    const double baseline = top + (line.height - heights.ascent - heights.descent) / 2 + heights.ascent;
    const double indent = first ? firstIndent : otherIndent;
    const auto roomFor = [&](double taken) { return std::max(0.0, available - indent - taken); };
    const double share = format.alignment == ParagraphFormat::Centre  ? 0.5
                         : format.alignment == ParagraphFormat::Right ? 1
                                                                      : 0;
    line.left = left + indent + roomFor(line.width) * share;
    // Of a text that is read from the right they are at the left.
    const double start = line.left - (source->resolved_dir == PANGO_DIRECTION_RTL ? blanks : 0);
    result.width = std::max(result.width, left + indent + roomFor(x) * share + x + format.indentRight);
    for (TextRun& run : line.runs) {
      run.x += start;
      run.baseline += baseline;
      run.stretched = format.alignment == ParagraphFormat::Justified && at->next;
    }
    if (bulleted && first) {
      line.left -= bulletWidth;
      line.width += bulletWidth;
      line.runs.insert(line.runs.begin(), {format.bullet, firstFormat, line.left, baseline, bulletWidth, false});
    }
    top += line.height;
    result.lines.push_back(std::move(line));
  }
  top += format.spaceAfter;
  g_object_unref(layout);
}

TextEngine::TextEngine() : pango_(std::make_unique<Pango>()) {}
TextEngine::~TextEngine() = default;

std::shared_ptr<const TextLayout> TextEngine::layOut(const StyledText& text, double width) {
  std::string key = text.key();
  key.append(reinterpret_cast<const char*>(&width), sizeof width);
  if (const auto found = known_.find(key); found != known_.end()) return found->second;
  ++layoutCount_;
  auto layout = std::make_shared<TextLayout>();
  for (const CharacterFormat& format : text.formats) {
    TextStyle style = format.style;
    style.size = drawnSize(format);
    layout->styles.push_back(std::move(style));
  }
  Pango::HeightsOfFormats heights(*pango_, text);
  const auto set = [&](double within) {
    double top = 0;
    layout->lines.clear();
    for (const Paragraph& paragraph : text.paragraphs)
      pango_->setParagraph(text, heights, paragraph, within, *layout, top);
    layout->height = top;
  };
  set(width);
  // Without a given width the widest line is the measure that the others are aligned by; a little more keeps it from
  // wrapping.
  if (width < 0) set(layout->width + 0.01);
  if (known_.size() >= rememberedTexts) known_.clear();
  known_.emplace(std::move(key), layout);
  return layout;
}

}  // namespace quorvel::render
