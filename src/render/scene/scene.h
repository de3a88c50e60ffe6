// The picture of a page as every backend draws it: paths with fills and strokes, laid-out text, images and links, in
// the order of painting. Resolution independent: all lengths are points (1/72 inch), x to the right and y downward from
// the top left corner of the page.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "host/sheet/ids.h"
#include "render/scene/box.h"

namespace quorvel::render {

struct Colour {
  std::uint32_t rgb = 0;  ///< 0xRRGGBB
  double opacity = 1;     ///< 0 is invisible
  friend bool operator==(const Colour&, const Colour&) = default;
};

struct GradientStop {
  double offset = 0;  ///< 0 to 1
  Colour colour;
  friend bool operator==(const GradientStop&, const GradientStop&) = default;
};

struct Gradient {
  bool radial = false;
  Point from, to;     ///< linear: the line along which the colours change; radial: `from` is the centre
  double radius = 0;  ///< radial
  std::vector<GradientStop> stops;
  friend bool operator==(const Gradient&, const Gradient&) = default;
};

/// A hatch: the tile of patternTile(number), drawn with `ink` over `ground`, its corner at the page's.
struct Pattern {
  int number = 2;
  Colour ink, ground;
  friend bool operator==(const Pattern&, const Pattern&) = default;
};

/// Nothing (monostate), one colour, a gradient or a hatch.
using Fill = std::variant<std::monostate, Colour, Gradient, Pattern>;

enum class LineCap : std::uint8_t { Round, Butt, Square };

struct Stroke {
  bool visible = false;
  Colour colour;
  double width = 0;  ///< never 0 when visible
  LineCap cap = LineCap::Round;
  std::vector<double> dashes;                          ///< dash and gap by turns; empty: solid
  std::shared_ptr<const Gradient> gradient = nullptr;  ///< instead of the colour; null: none
  friend bool operator==(const Stroke&, const Stroke&) = default;
};

/// Filled by the even-odd rule: where two subpaths overlap there is a hole.
struct PathItem {
  Path path;
  Fill fill;
  Stroke stroke;
  /// Above 0 the item is a soft shadow: fill and stroke are of one colour, their union is smeared by a normal
  /// distribution of this deviation in points.
  double blur = 0;
};

struct TextStyle {
  std::string family;  ///< the face that is drawn and was measured
  double size = 12;
  Colour colour;
  bool bold = false, italic = false, underline = false, doubleUnderline = false, strikethrough = false,
       smallCaps = false;
  double letterSpacing = 0;
  friend bool operator==(const TextStyle&, const TextStyle&) = default;
};

/// Glyphs of one style on one line. Positions are of the layout, see TextItem::transform.
struct TextRun {
  std::string text;  ///< UTF-8, without line ends
  int style = 0;     ///< into TextLayout::styles
  double x = 0;      ///< left end
  double baseline = 0;
  double width = 0;
  bool stretched = false;  ///< its blanks were widened to fill a justified line
};

struct TextLine {
  std::vector<TextRun> runs;  ///< from left to right; none for an empty line
  double left = 0, top = 0, width = 0, height = 0;
};

/// Lines set in a block whose top left corner is (0, 0).
struct TextLayout {
  std::vector<TextStyle> styles;
  std::vector<TextLine> lines;
  double width = 0, height = 0;  ///< of the widest line, and of all lines with the space between paragraphs
};

struct TextItem {
  std::shared_ptr<const TextLayout> layout;  ///< shared by equal texts
  Matrix transform;                          ///< from the layout to the page
  Colour background{0xFFFFFF, 0};            ///< painted behind the lines when it is not invisible
};

struct ImageItem {
  std::string mediaType;  ///< "image/png", "image/jpeg", "image/gif", "image/bmp", "image/tiff"
  std::shared_ptr<const std::string> bytes;
  Matrix transform;  ///< from the unit square, (0, 0) its top left corner, to the page
  Path clip;         ///< empty: none
  double opacity = 1;
};

/// What follows, up to the matching end, belongs to this shape; members are inside their group.
struct ShapeBegin {
  host::SheetId shape;
  int shapeId = 0;
  std::string name;
  /// A URI, or "#" with the page's name, or that, "/" and a shape's name, for a place in the same drawing; empty: none.
  std::string link;
  std::string linkTitle;
  /// What else a reader of the picture needs of the shape, as names and values; written where the format has a place
  /// for it.
  std::vector<std::pair<std::string, std::string>> data{};
};
struct ShapeEnd {};

/// What follows, up to the matching end, shows only within the path, by the even-odd rule. An empty path hides all.
struct ClipBegin {
  Path path;
};
struct ClipEnd {};

using SceneItem = std::variant<ShapeBegin, ShapeEnd, PathItem, TextItem, ImageItem, ClipBegin, ClipEnd>;

struct Scene {
  std::string title;
  std::string idPrefix;  ///< begins every id inside the picture, so that pictures of several pages can share a document
  double width = 0, height = 0;
  Colour background{0xFFFFFF, 1};
  std::vector<SceneItem> items;
};

}  // namespace quorvel::render
