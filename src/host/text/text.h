// A shape's text as shown, fields expanded, and its measuring.
#pragma once

#include <string>
#include <string_view>

#include "host/sheet/store.h"

namespace quorvel::host {

/// The text with each field's value shown through its format. Lines end in "\n"; a last line end is left out.
std::string shownText(const Store& store, SheetId sheet);
/// What one piece of it shows; a last line end is kept.
std::string shownText(const Store& store, SheetId sheet, const TextPiece& piece);
/// What field row `index` of the sheet shows now.
std::string fieldText(const Store& store, SheetId sheet, int index);
/// The same with another value in the row's own format.
std::string fieldText(const Store& store, SheetId sheet, int index, const Value& value);

/// Width and height of text. Render gives those of real fonts; without it a table of widths is used.
class TextMetrics {
 public:
  virtual ~TextMetrics() = default;
  struct Size {
    double width = 0, height = 0;  ///< inches, margins not counted
  };
  /// The size of the shape's shown text, wrapped at `maxWidth` inches; negative: only at line ends.
  virtual Size measure(const Store& store, SheetId shape, double maxWidth) const = 0;
};

/// Widths of a common sans-serif face, good to a few percent.
const TextMetrics& tableTextMetrics();

}  // namespace quorvel::host
