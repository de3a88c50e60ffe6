// What metafiles of both kinds draw on: pens, brushes, fonts and the maps of their coordinates, and the items that
// come of it.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "render/scene/scene.h"
#include "render/text/layout.h"

namespace quorvel::render {

struct RecordedPen {
  bool visible = true;
  std::uint32_t rgb = 0;
  double width = 0;  ///< logical units; 0: the thinnest
};
struct RecordedBrush {
  bool visible = true;
  std::uint32_t rgb = 0xFFFFFF;
};
struct RecordedFont {
  std::string family;
  double height = 0;  ///< logical units; negative: of the letters, positive: of the line, 0: as the device likes
  double angle = 0;   ///< radians, counterclockwise
  bool bold = false, italic = false, underline = false, strikethrough = false;
};
using RecordedTool = std::variant<RecordedPen, RecordedBrush, RecordedFont>;

/// "0x00BBGGRR", as the calls give colours.
std::uint32_t colourOfCall(std::uint32_t bgr);

/// A part of a bitmap, in pixels from its top left corner. The whole of it when width or height is 0.
struct BitmapPart {
  double x = 0, y = 0, width = 0, height = 0;
};

class RecordedCanvas {
 public:
  /// `toSquare` maps device units to the unit square.
  RecordedCanvas(TextEngine& text, const Matrix& toSquare) : text_(text), toSquare_(toSquare) {}

  struct State {
    RecordedPen pen;
    RecordedBrush brush;
    RecordedFont font;
    std::uint32_t textRgb = 0;
    unsigned textAlignment = 0;  ///< bits: 2 right, 6 centre, 8 bottom, 24 baseline, 1 goes on from the position
    Point windowOrigin, viewportOrigin, windowExtent{1, 1}, viewportExtent{1, 1};
    Matrix world;
    Point position;
    bool clockwise = false;
    /// What is drawn shows within all of these, in the unit square.
    std::vector<std::shared_ptr<const Path>> clips;
  };
  State state;

  void save();
  /// `count` states back; beyond the first one nothing happens.
  void restore(int count);
  void select(const RecordedTool& tool);

  /// Into the open path, or directly onto the image.
  void draw(const Path& path, bool fill);
  void moveTo(Point to);
  void lineTo(Point to);
  /// Go on from the position.
  void linesTo(const std::vector<Point>& points);
  void curvesTo(const std::vector<Point>& points);

  enum class Round : std::uint8_t { Ellipse, Arc, Chord, Pie };
  /// The ellipse in the box of two corners, or the part of it between two rays from its centre.
  void round(Round kind, Point corner, Point opposite, Point from, Point to);
  void roundedRectangle(Point corner, Point opposite, double width, double height);

  void beginPath() { bracket_ = Path(); }
  void closeFigure();
  void endPath();
  void paintPath(bool fill, bool stroke);

  /// How a new part is joined to what shows; the numbers are the calls' own.
  enum class Joining : std::uint8_t { And = 1, Or, Xor, Difference, Copy };
  /// `path` in logical units.
  void clip(Path path, Joining how);
  void clipToFinishedPath(Joining how) { clip(std::exchange(finished_, {}), how); }
  /// `path` in device units, as regions are.
  void clipDevice(Path path, Joining how);
  void removeClips() { state.clips.clear(); }
  void moveClips(Point by);

  /// `width` in logical units, as the maker's fonts had it: ours is drawn as wide. 0: not known.
  void addText(Point at, const std::string& text, double width);
  /// `bitmap` without a file header. Sizes may be negative.
  void addBitmap(const std::string& bitmap, const BitmapPart& part, Point corner, Point size);

  bool isFull() const { return items_.size() > mostItems || bitmapBytes_ > mostBitmapBytes; }
  std::vector<SceneItem> take();

  static Path lines(const std::vector<Point>& points, bool closed);
  static void addCurves(Path& path, const std::vector<Point>& points, std::size_t from);

 private:
  static constexpr std::size_t mostItems = 20000, mostSaved = 1000, mostClips = 32, mostBitmapBytes = 256'000'000;

  Matrix map() const;
  void paint(Path path, bool fill, bool stroke);
  bool goesOn() const;
  /// Behind the clips that hold now.
  void emit(SceneItem item);
  void clipSquare(Path path, Joining how);
  void closeClips(std::size_t kept);

  TextEngine& text_;
  Matrix toSquare_;
  std::vector<State> saved_;
  std::optional<Path> bracket_;
  Path finished_;
  std::vector<SceneItem> items_;
  std::vector<std::shared_ptr<const Path>> open_;  ///< clips that have begun among the items
  std::size_t bitmapBytes_ = 0;
};

}  // namespace quorvel::render
