#include "host/text/text.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "host/cells/cell_table.h"
#include "host/formula/value_format.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

CellKey fieldCell(int index, std::string_view column) {
  return {SectionNumber::TextField, RowKey::index(static_cast<std::uint32_t>(index)),
          columnOf(SectionNumber::TextField, column).or_(0)};
}

/// Advance widths of the printable ASCII characters of a common sans-serif face, in thousandths of the size.
constexpr int asciiWidths[95] = {278,  278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333, 278, 278,
                                 556,  556, 556, 556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556,
                                 1015, 667, 667, 722, 722, 667, 611, 778, 722, 278, 500, 667, 556, 833, 722, 778,
                                 667,  778, 722, 667, 611, 722, 667, 944, 667, 667, 611, 278, 278, 278, 469, 556,
                                 333,  556, 556, 500, 556, 556, 278, 556, 556, 222, 222, 500, 222, 833, 556, 556,
                                 556,  556, 333, 500, 278, 556, 500, 722, 500, 500, 500, 334, 260, 334, 584};

double widthOf(char32_t c) {
  if (c >= 32 && c < 127) return asciiWidths[c - 32] / 1000.0;
  return c >= 0x1100 ? 1.0 : 0.556;
}

class TableTextMetrics : public TextMetrics {
 public:
  Size measure(const Store& store, SheetId shape, double maxWidth) const override {
    const double size = characterSize(store, shape);
    const double lineHeight = size * 1.2;
    const std::string text = shownText(store, shape);
    Size result;
    for (const std::string_view paragraph : splitAt(text, '\n')) {
      double line = 0, word = 0;
      result.height += lineHeight;
      for (std::size_t at = 0; at < paragraph.size();) {
        const char32_t c = decodeNext(paragraph, at);
        word += widthOf(c) * size;
        if (maxWidth >= 0 && line > 0 && line + word > maxWidth) {
          result.height += lineHeight;
          result.width = std::max(result.width, line);
          line = 0;
        }
        if (c == U' ' || at >= paragraph.size()) {
          line += word;
          word = 0;
        }
      }
      result.width = std::max(result.width, line);
    }
    return result;
  }

 private:
  static double characterSize(const Store& store, SheetId shape) {
    static const CellKey size{SectionNumber::Character, RowKey::index(0),
                              columnOf(SectionNumber::Character, "Size").or_(0)};
    const double value = cellNumber(store, shape, size);
    return value > 0 ? value : 12.0 / 72.0;
  }
};

}  // namespace

std::string fieldText(const Store& store, SheetId sheet, int index) {
  const FoundCell found = findCell(store, sheet, fieldCell(index, "Value"));
  return found ? fieldText(store, sheet, index, found.value->value) : std::string();
}

std::string fieldText(const Store& store, SheetId sheet, int index, const Value& value) {
  const Value format = cellValue(store, sheet, fieldCell(index, "Format"));
  if (format.isText()) return formatValue(value, format.textView());
  // A number is the published number of a format; 0 shows the value as it is.
  const std::string_view standard = fieldFormat(static_cast<int>(format.internal()));
  return standard.empty() ? value.asText() : formatValue(value, standard);
}

std::string shownText(const Store& store, SheetId sheet, const TextPiece& piece) {
  if (piece.kind == TextPiece::Characters) return piece.text;
  if (piece.kind != TextPiece::Field) return {};
  // A field whose row was deleted keeps the text that it last showed.
  const RowKey row = RowKey::index(static_cast<std::uint32_t>(piece.index));
  return rowExists(store, sheet, SectionNumber::TextField, row, false) ? fieldText(store, sheet, piece.index)
                                                                       : piece.text;
}

std::string shownText(const Store& store, SheetId sheet) {
  const TextBody* body = textOf(store, sheet);
  std::string text;
  if (!body) return text;
  for (const TextPiece& piece : *body) text += shownText(store, sheet, piece);
  if (!text.empty() && text.back() == '\n') text.pop_back();
  return text;
}

const TextMetrics& tableTextMetrics() {
  static const TableTextMetrics metrics;
  return metrics;
}

}  // namespace quorvel::host
