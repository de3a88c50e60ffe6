// A shape's text with its formatting, as read from its cells, before it is laid out.
#pragma once

#include <string>
#include <vector>

#include "render/cells/page_context.h"
#include "render/cells/shape_cells.h"
#include "render/scene/scene.h"

namespace quorvel::render {

struct CharacterFormat {
  TextStyle style;
  enum Position : std::uint8_t { OnLine, Raised, Lowered } position = OnLine;
  friend bool operator==(const CharacterFormat&, const CharacterFormat&) = default;
};

struct ParagraphFormat {
  enum Alignment : std::uint8_t { Left, Centre, Right, Justified } alignment = Centre;
  double indentFirst = 0, indentLeft = 0, indentRight = 0;  ///< points
  double lineSpacing = -1.2;  ///< negative: multiple of the type size; else points; 0: the face's own
  double spaceBefore = 0, spaceAfter = 0;
  std::string bullet;     ///< empty: none
  double bulletSize = 0;  ///< points; 0: as the text
};

struct TextSpan {
  std::string text;
  int format = 0;  ///< into StyledText::formats
};

struct Paragraph {
  ParagraphFormat format;
  std::vector<TextSpan> spans;  ///< without the line end; an empty paragraph has one empty span
};

struct StyledText {
  std::vector<CharacterFormat> formats;
  std::vector<Paragraph> paragraphs;
  double tabStop = 36;  ///< points between default tab stops
  /// Equal for texts that look the same.
  std::string key() const;
};

/// Fields are expanded. Empty when the shape shows no text.
StyledText styledTextOf(const PageContext& page, const ShapeCells& cells);

}  // namespace quorvel::render
