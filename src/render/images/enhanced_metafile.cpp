#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>

#include "base/little_endian.h"
#include "base/text.h"
#include "render/images/metafiles.h"
#include "render/images/recorded_canvas.h"

namespace quorvel::render {
namespace {

enum Record : std::uint32_t {
  Header = 1,
  PolyBezier = 2,
  Polygon = 3,
  Polyline = 4,
  PolyBezierTo = 5,
  PolylineTo = 6,
  PolyPolyline = 7,
  PolyPolygon = 8,
  SetWindowExtent = 9,
  SetWindowOrigin = 10,
  SetViewportExtent = 11,
  SetViewportOrigin = 12,
  EndOfFile = 14,
  SetTextAlignment = 22,
  SetTextColour = 24,
  OffsetClip = 26,
  MoveTo = 27,
  ExcludeRectangle = 29,
  IntersectRectangle = 30,
  SaveState = 33,
  RestoreState = 34,
  SetWorldTransform = 35,
  ModifyWorldTransform = 36,
  SelectObject = 37,
  CreatePen = 38,
  CreateBrush = 39,
  DeleteObject = 40,
  Ellipse = 42,
  Rectangle = 43,
  RoundedRectangle = 44,
  Arc = 45,
  Chord = 46,
  Pie = 47,
  LineTo = 54,
  SetArcDirection = 57,
  BeginPath = 59,
  EndPath = 60,
  CloseFigure = 61,
  FillPath = 62,
  StrokeAndFillPath = 63,
  StrokePath = 64,
  SelectClipPath = 67,
  SelectClipRegion = 75,
  BitBlock = 76,
  StretchedBlock = 77,
  BitmapToDevice = 80,
  StretchedBitmap = 81,
  CreateFont = 82,
  NarrowText = 83,
  WideText = 84,
  PolyBezier16 = 85,
  Polygon16 = 86,
  Polyline16 = 87,
  PolyBezierTo16 = 88,
  PolylineTo16 = 89,
  PolyPolyline16 = 90,
  PolyPolygon16 = 91,
  CreateExtendedPen = 95,
  SmallText = 108,
};

/// Raster operations: how what is drawn mixes with what lies below.
enum Mixing : std::uint32_t {
  SourceCopy = 0x00CC0020,
  PatternCopy = 0x00F00021,
  Blackness = 0x42,
  Whiteness = 0xFF0062
};

Matrix frameToSquare(const LittleEndian& file) {
  // The frame is in hundredths of a millimetre; the reference device gives that in its pixels.
  const auto ratio = [&](std::size_t pixels, std::size_t millimetres) {
    const double many = file.i32(pixels), wide = file.i32(millimetres);
    return many > 0 && wide > 0 ? many / (wide * 100) : 1;
  };
  const double perX = ratio(72, 80), perY = ratio(76, 84);
  const double left = file.i32(24) * perX, top = file.i32(28) * perY;
  const double width = file.i32(32) * perX - left, height = file.i32(36) * perY - top;
  if (!(width > 0) || !(height > 0)) return {0, 0, 0, 0, 0, 0};
  return Matrix::scaling(1 / width, 1 / height) * Matrix::translation(-left, -top);
}

class Player {
 public:
  Player(const std::string& bytes, TextEngine& text) : file_(bytes), canvas_(text, frameToSquare(file_)) {}

  std::vector<SceneItem> play() {
    if (file_.size() < 88 || file_.u32(0) != Header || file_.part(40, 4) != " EMF") return {};
    if (frameToSquare(file_).determinant() == 0) return {};
    for (std::size_t at = 0; at + 8 <= file_.size();) {
      const std::size_t size = file_.u32(at + 4);
      if (size < 8 || size > file_.size() - at) break;
      record_ = LittleEndian(file_.part(at, size));
      const std::uint32_t type = file_.u32(at);
      if (type == EndOfFile || canvas_.isFull()) break;
      run(type);
      at += size;
    }
    return canvas_.take();
  }

 private:
  // Within the record that runs.
  std::int32_t field(std::size_t offset) const { return record_.i32(offset); }
  Point pair(std::size_t offset) const { return {double(field(offset)), double(field(offset + 4))}; }
  std::uint32_t colour(std::size_t offset) const { return colourOfCall(record_.u32(offset)); }
  double real(std::size_t offset) const {
    const double value = record_.f32(offset);
    return std::isfinite(value) ? value : 0;
  }

  std::vector<Point> points(std::size_t offset, std::size_t count, bool small) const {
    const std::size_t size = small ? 4 : 8;
    std::vector<Point> found;
    if (offset > record_.size()) return found;
    count = std::min(count, (record_.size() - offset) / size);
    found.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t at = offset + i * size;
      found.push_back(small ? Point{double(record_.i16(at)), double(record_.i16(at + 2))} : pair(at));
    }
    return found;
  }

  void poly(std::uint32_t type, bool small) {
    const std::vector<Point> all = points(28, record_.u32(24), small);
    if (all.empty()) return;
    switch (type) {
      case Polygon:
        return canvas_.draw(RecordedCanvas::lines(all, true), true);
      case Polyline:
        return canvas_.draw(RecordedCanvas::lines(all, false), false);
      case PolyBezier: {
        Path path;
        path.moveTo(all[0]);
        RecordedCanvas::addCurves(path, all, 1);
        return canvas_.draw(path, false);
      }
      case PolylineTo:
        return canvas_.linesTo(all);
      default:
        return canvas_.curvesTo(all);
    }
  }

  void polyPoly(bool closed, bool small) {
    const std::size_t polygons = std::min<std::size_t>(record_.u32(24), record_.size() / 4);
    std::size_t offset = 32 + polygons * 4;
    Path path;
    for (std::size_t i = 0; i < polygons; ++i) {
      const std::vector<Point> each = points(offset, record_.u32(32 + i * 4), small);
      offset += each.size() * (small ? 4 : 8);
      path.append(RecordedCanvas::lines(each, closed));
    }
    canvas_.draw(path, closed);
  }

  void select(std::uint32_t handle) {
    constexpr std::uint32_t stock = 0x80000000u;
    static constexpr std::uint32_t greys[] = {0xFFFFFF, 0xC0C0C0, 0x808080, 0x404040, 0x000000};
    if (handle >= stock) {
      const std::uint32_t number = handle - stock;
      if (number <= 4) canvas_.select(RecordedBrush{true, greys[number]});
      if (number == 5) canvas_.select(RecordedBrush{false});
      if (number == 6 || number == 7) canvas_.select(RecordedPen{true, number == 6 ? 0xFFFFFFu : 0u, 0});
      if (number == 8) canvas_.select(RecordedPen{false});
      return;
    }
    if (const auto tool = tools_.find(handle); tool != tools_.end()) canvas_.select(tool->second);
  }

  RecordedFont font() const {
    constexpr std::int32_t boldWeight = 600;
    RecordedFont font;
    font.height = field(12);
    font.angle = field(20) * std::numbers::pi / 1800;
    font.bold = field(28) >= boldWeight;
    font.italic = record_.u8(32) != 0;
    font.underline = record_.u8(33) != 0;
    font.strikethrough = record_.u8(34) != 0;
    font.family = wideText(40, 32);
    return font;
  }

  /// Two bytes for each unit, up to a zero.
  std::string wideText(std::size_t offset, std::size_t units) const {
    std::string text;
    for (std::size_t i = 0; i < units && offset + 2 * i + 2 <= record_.size(); ++i) {
      char32_t unit = record_.u16(offset + 2 * i);
      if (unit == 0) break;
      if (unit >= 0xD800 && unit < 0xDC00 && i + 1 < units) {
        const char32_t low = record_.u16(offset + 2 * i + 2);
        if (low >= 0xDC00 && low < 0xE000) {
          unit = 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
          ++i;
        }
      }
      appendUtf8(text, unit);
    }
    return text;
  }
  std::string narrowText(std::size_t offset, std::size_t count) const {
    std::string text;
    for (const char letter : record_.part(offset, count)) {
      if (letter == 0) break;
      appendUtf8(text, static_cast<unsigned char>(letter));
    }
    return text;
  }

  void longText(bool wide) {
    const std::size_t count = record_.u32(44), from = record_.u32(48), widths = record_.u32(72);
    constexpr std::uint32_t glyphNumbers = 0x10, pairs = 0x2000;
    const std::uint32_t options = record_.u32(52);
    if (options & glyphNumbers) return;
    double width = 0;
    for (std::size_t i = 0; widths >= 76 && !(options & pairs) && i < count && widths + 4 * i + 4 <= record_.size();
         ++i)
      width += record_.u32(widths + 4 * i);
    canvas_.addText(pair(36), wide ? wideText(from, count) : narrowText(from, count), width);
  }

  void smallText() {
    constexpr std::uint32_t glyphNumbers = 0x10, noRectangle = 0x100, narrow = 0x200;
    const std::uint32_t options = record_.u32(20);
    if (options & glyphNumbers) return;
    const std::size_t from = options & noRectangle ? 36 : 52, count = record_.u32(16);
    canvas_.addText(pair(8), options & narrow ? narrowText(from, count) : wideText(from, count), 0);
  }

  /// `header` is where the fields that locate header and pixels begin: two pairs of offset and size.
  std::string bitmap(std::size_t header) const {
    std::string bytes(record_.part(record_.u32(header), record_.u32(header + 4)));
    bytes += record_.part(record_.u32(header + 8), record_.u32(header + 12));
    return bytes;
  }

  void block(bool stretched) {
    const Point corner = pair(24), size = pair(32);
    const std::uint32_t mixing = record_.u32(40);
    if (mixing == PatternCopy || mixing == Blackness || mixing == Whiteness) {
      const RecordedCanvas::State before = canvas_.state;
      if (mixing != PatternCopy) canvas_.state.brush = {true, mixing == Whiteness ? 0xFFFFFFu : 0u};
      canvas_.state.pen.visible = false;
      Path path;
      path.addRectangle(corner.x, corner.y, corner.x + size.x, corner.y + size.y);
      canvas_.draw(path, true);
      canvas_.state = before;
    } else if (mixing == SourceCopy && record_.u32(88) > 0) {
      const Point from = pair(44), extent = stretched ? pair(100) : size;
      canvas_.addBitmap(bitmap(84), {from.x, from.y, extent.x, extent.y}, corner, size);
    }
  }

  RecordedCanvas::Joining joining(std::size_t offset) const {
    const std::int32_t mode = field(offset);
    return mode >= 1 && mode <= 5 ? static_cast<RecordedCanvas::Joining>(mode) : RecordedCanvas::Joining::Copy;
  }

  void clipRectangle(bool exclude) {
    const Point a = pair(8), b = pair(16);
    Path path;
    path.addRectangle(a.x, a.y, b.x, b.y);
    canvas_.clip(std::move(path), exclude ? RecordedCanvas::Joining::Difference : RecordedCanvas::Joining::And);
  }

  /// A region is a list of rectangles; one without data takes all clips away.
  void clipRegion() {
    constexpr std::size_t rectangles = 16 + 32, size = 16;
    if (record_.u32(8) == 0) return canvas_.removeClips();
    const std::size_t held = record_.size() > rectangles ? (record_.size() - rectangles) / size : 0;
    const std::size_t count = std::min<std::size_t>(record_.u32(24), held);
    Path path;
    for (std::size_t i = 0; i < count; ++i) {
      const Point a = pair(rectangles + i * size), b = pair(rectangles + i * size + 8);
      path.addRectangle(a.x, a.y, b.x, b.y);
    }
    canvas_.clipDevice(std::move(path), joining(12));
  }

  Matrix transformField() const { return {real(8), real(12), real(16), real(20), real(24), real(28)}; }

  void run(std::uint32_t type);

  LittleEndian file_, record_{std::string_view()};
  RecordedCanvas canvas_;
  std::map<std::uint32_t, RecordedTool> tools_;
};

void Player::run(std::uint32_t type) {
  constexpr int noPen = 5, styleBits = 15, noBrush = 1;
  using Round = RecordedCanvas::Round;
  RecordedCanvas::State& state = canvas_.state;
  switch (type) {
    case PolyBezier:
    case Polygon:
    case Polyline:
    case PolyBezierTo:
    case PolylineTo:
      return poly(type, false);
    case PolyBezier16:
    case Polygon16:
    case Polyline16:
    case PolyBezierTo16:
    case PolylineTo16:
      return poly(type - PolyBezier16 + PolyBezier, true);
    case PolyPolyline:
    case PolyPolygon:
      return polyPoly(type == PolyPolygon, false);
    case PolyPolyline16:
    case PolyPolygon16:
      return polyPoly(type == PolyPolygon16, true);
    case Ellipse:
      return canvas_.round(Round::Ellipse, pair(8), pair(16), {}, {});
    case Arc:
    case Chord:
    case Pie:
      return canvas_.round(type == Arc     ? Round::Arc
                           : type == Chord ? Round::Chord
                                           : Round::Pie,
                           pair(8), pair(16), pair(24), pair(32));
    case Rectangle: {
      const Point a = pair(8), b = pair(16);
      Path path;
      path.addRectangle(a.x, a.y, b.x, b.y);
      return canvas_.draw(path, true);
    }
    case RoundedRectangle:
      return canvas_.roundedRectangle(pair(8), pair(16), field(24), field(28));
    case MoveTo:
      return canvas_.moveTo(pair(8));
    case LineTo:
      return canvas_.lineTo(pair(8));
    case SetWindowExtent:
      state.windowExtent = pair(8);
      return;
    case SetWindowOrigin:
      state.windowOrigin = pair(8);
      return;
    case SetViewportExtent:
      state.viewportExtent = pair(8);
      return;
    case SetViewportOrigin:
      state.viewportOrigin = pair(8);
      return;
    case SetArcDirection:
      state.clockwise = field(8) == 2;
      return;
    case SetWorldTransform:
      state.world = transformField();
      return;
    case ModifyWorldTransform: {
      const int mode = field(32);
      if (mode == 1) state.world = {};
      if (mode == 2) state.world = state.world * transformField();
      if (mode == 3) state.world = transformField() * state.world;
      if (mode == 4) state.world = transformField();
      return;
    }
    case SaveState:
      return canvas_.save();
    case RestoreState:
      return canvas_.restore(field(8) < 0 ? -std::max(field(8), -1000) : 1);
    case SelectObject:
      return select(record_.u32(8));
    case DeleteObject:
      tools_.erase(record_.u32(8));
      return;
    case CreatePen:
      tools_[record_.u32(8)] = RecordedPen{(field(12) & styleBits) != noPen, colour(24), std::abs(double(field(16)))};
      return;
    case CreateExtendedPen:
      tools_[record_.u32(8)] = RecordedPen{(field(28) & styleBits) != noPen && field(36) != noBrush, colour(40),
                                           std::abs(double(field(32)))};
      return;
    case CreateBrush:
      tools_[record_.u32(8)] = RecordedBrush{field(12) != noBrush, colour(16)};
      return;
    case CreateFont:
      tools_[record_.u32(8)] = font();
      return;
    case SetTextColour:
      state.textRgb = colour(8);
      return;
    case SetTextAlignment:
      state.textAlignment = record_.u32(8);
      return;
    case WideText:
    case NarrowText:
      return longText(type == WideText);
    case SmallText:
      return smallText();
    case BitBlock:
    case StretchedBlock:
      return block(type == StretchedBlock);
    case StretchedBitmap:
      if (record_.u32(68) != SourceCopy) return;
      return canvas_.addBitmap(bitmap(48), {double(field(32)), double(field(36)), double(field(40)), double(field(44))},
                               pair(24), pair(72));
    case BitmapToDevice:
      return canvas_.addBitmap(bitmap(48), {}, pair(24), pair(40));
    case BeginPath:
      return canvas_.beginPath();
    case CloseFigure:
      return canvas_.closeFigure();
    case EndPath:
      return canvas_.endPath();
    case OffsetClip:
      return canvas_.moveClips(pair(8));
    case IntersectRectangle:
    case ExcludeRectangle:
      return clipRectangle(type == ExcludeRectangle);
    case SelectClipPath:
      return canvas_.clipToFinishedPath(joining(8));
    case SelectClipRegion:
      return clipRegion();
    case FillPath:
    case StrokeAndFillPath:
    case StrokePath:
      return canvas_.paintPath(type != StrokePath, type != FillPath);
    default:
      return;
  }
}

}  // namespace

std::vector<SceneItem> enhancedMetafileItems(const std::string& bytes, TextEngine& text) {
  return Player(bytes, text).play();
}

}  // namespace quorvel::render
