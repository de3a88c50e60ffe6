#include <algorithm>
#include <numbers>
#include <optional>

#include "base/little_endian.h"
#include "base/text.h"
#include "render/images/metafiles.h"
#include "render/images/recorded_canvas.h"

namespace quorvel::render {
namespace {

enum Record : std::uint16_t {
  EndOfFile = 0x0000,
  SaveState = 0x001E,
  CreatePalette = 0x00F7,
  SelectClipRegion = 0x012C,
  RestoreState = 0x0127,
  SelectObject = 0x012D,
  SetTextAlignment = 0x012E,
  CreateBitmapBrush = 0x0142,
  DeleteObject = 0x01F0,
  CreatePatternBrush = 0x01F9,
  SetTextColour = 0x0209,
  SetWindowOrigin = 0x020B,
  SetWindowExtent = 0x020C,
  LineTo = 0x0213,
  OffsetClip = 0x0220,
  MoveTo = 0x0214,
  CreatePen = 0x02FA,
  CreateFont = 0x02FB,
  CreateBrush = 0x02FC,
  Polygon = 0x0324,
  Polyline = 0x0325,
  ExcludeRectangle = 0x0415,
  IntersectRectangle = 0x0416,
  Ellipse = 0x0418,
  Rectangle = 0x041B,
  Text = 0x0521,
  PolyPolygon = 0x0538,
  RoundedRectangle = 0x061C,
  CreateRegion = 0x06FF,
  Arc = 0x0817,
  Pie = 0x081A,
  Chord = 0x0830,
  BitmapBlock = 0x0940,
  LongText = 0x0A32,
  StretchedBlock = 0x0B41,
  StretchedBitmap = 0x0F43,
};

constexpr std::uint32_t sourceCopy = 0x00CC0020;

/// Letters of the western code page from 0x80 to 0x9F; the others are their own numbers.
char32_t letterOf(unsigned char byte) {
  static constexpr char16_t special[] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                         0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                         0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                         0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
  return byte >= 0x80 && byte < 0xA0 ? special[byte - 0x80] : byte;
}

class Player {
 public:
  Player(const std::string& bytes, TextEngine& text) : file_(bytes), canvas_(text, {}) {}

  std::vector<SceneItem> play() {
    constexpr std::uint32_t placedMark = 0x9AC6CDD7;
    constexpr std::size_t placedSize = 22, headerSize = 18;
    std::size_t at = 0;
    if (file_.u32(0) == placedMark) {
      // Where the records set no window the header's box is it.
      const Point corner{double(file_.i16(6)), double(file_.i16(8))};
      canvas_.state.windowOrigin = corner;
      canvas_.state.windowExtent = Point{double(file_.i16(10)), double(file_.i16(12))} - corner;
      at = placedSize;
    }
    const bool isMetafile = (file_.u16(at) == 1 || file_.u16(at) == 2) && file_.u16(at + 2) == headerSize / 2;
    if (!isMetafile) return {};
    at += headerSize;
    while (at + 6 <= file_.size()) {
      const std::size_t words = file_.u32(at);
      if (words < 3 || words > (file_.size() - at) / 2) break;
      record_ = LittleEndian(file_.part(at, 2 * words));
      const std::uint16_t type = file_.u16(at + 4);
      if (type == EndOfFile || canvas_.isFull()) break;
      run(type);
      at += 2 * words;
    }
    return canvas_.take();
  }

 private:
  /// The parameter of the record that runs, 0 the first.
  double number(std::size_t place) const { return record_.i16(6 + 2 * place); }
  std::uint32_t colour(std::size_t place) const { return colourOfCall(record_.u32(6 + 2 * place)); }
  /// Parameters come last first: y, then x.
  Point pair(std::size_t place) const { return {number(place + 1), number(place)}; }

  std::vector<Point> points(std::size_t place, std::size_t count) const {
    std::vector<Point> found;
    const std::size_t held = record_.size() / 2;
    for (std::size_t i = 0; i < count && 3 + place + 2 * i + 2 <= held; ++i)
      found.push_back({number(place + 2 * i), number(place + 2 * i + 1)});
    return found;
  }

  std::string text(std::size_t offset, std::size_t count) const {
    std::string found;
    for (const char letter : record_.part(offset, count)) {
      if (letter == 0) break;
      appendUtf8(found, letterOf(static_cast<unsigned char>(letter)));
    }
    return found;
  }

  /// New objects take the first free place; the numbers in later calls count on that.
  void create(std::optional<RecordedTool> tool) {
    const auto free = std::ranges::find(taken_, false);
    const auto place = static_cast<std::size_t>(free - taken_.begin());
    if (free == taken_.end()) {
      constexpr std::size_t most = 65536;
      if (taken_.size() >= most) return;
      taken_.push_back(true);
      tools_.emplace_back();
    }
    taken_[place] = true;
    tools_[place] = std::move(tool);
  }

  RecordedFont font() const {
    constexpr double boldWeight = 600;
    RecordedFont font;
    font.height = number(0);
    font.angle = number(2) * std::numbers::pi / 1800;
    font.bold = number(4) >= boldWeight;
    font.italic = record_.u8(16) != 0;
    font.underline = record_.u8(17) != 0;
    font.strikethrough = record_.u8(18) != 0;
    font.family = text(24, 32);
    return font;
  }

  void polyPolygon() {
    const std::size_t polygons = std::min<std::size_t>(record_.u16(6), record_.size() / 2);
    std::size_t place = 1 + polygons;
    Path path;
    for (std::size_t i = 0; i < polygons; ++i) {
      const std::vector<Point> each = points(place, record_.u16(8 + 2 * i));
      place += 2 * each.size();
      path.append(RecordedCanvas::lines(each, true));
    }
    canvas_.draw(path, true);
  }

  void longText() {
    constexpr std::uint16_t opaque = 2, clipped = 4;
    const std::size_t count = record_.u16(10);
    const std::size_t from = 14 + (record_.u16(12) & (opaque | clipped) ? 8 : 0);
    const std::size_t widths = from + (count + 1) / 2 * 2;
    double width = 0;
    for (std::size_t i = 0; i < count && widths + 2 * i + 2 <= record_.size(); ++i)
      width += record_.i16(widths + 2 * i);
    canvas_.addText(pair(0), text(from, count), width);
  }

  void bitmap(std::size_t sizes, bool stretched) {
    if (record_.u32(6) != sourceCopy) return;
    // Height and width of the source, its corner, then the same of the target; a plain block has no source's size.
    const std::size_t target = stretched ? sizes + 4 : sizes + 2;
    const Point size = pair(target), corner = pair(target + 2);
    const Point extent = stretched ? pair(sizes) : size, from = pair(stretched ? sizes + 2 : sizes);
    canvas_.addBitmap(std::string(record_.part(6 + 2 * (target + 4), record_.size())),
                      {from.x, from.y, extent.x, extent.y}, corner, size);
  }

  void run(std::uint16_t type);

  LittleEndian file_, record_{std::string_view()};
  RecordedCanvas canvas_;
  std::vector<bool> taken_;
  std::vector<std::optional<RecordedTool>> tools_;  ///< none: of a kind that we don't draw with
};

void Player::run(std::uint16_t type) {
  constexpr int noPen = 5, styleBits = 15, noBrush = 1;
  using Round = RecordedCanvas::Round;
  RecordedCanvas::State& state = canvas_.state;
  switch (type) {
    case SaveState:
      return canvas_.save();
    case RestoreState:
      return canvas_.restore(number(0) < 0 ? -static_cast<int>(number(0)) : 1);
    case SetWindowOrigin:
      state.windowOrigin = pair(0);
      return;
    case SetWindowExtent:
      state.windowExtent = pair(0);
      return;
    case SetTextColour:
      state.textRgb = colour(0);
      return;
    case SetTextAlignment:
      state.textAlignment = record_.u16(6);
      return;
    case MoveTo:
      return canvas_.moveTo(pair(0));
    case LineTo:
      return canvas_.lineTo(pair(0));
    case Polygon:
    case Polyline:
      return canvas_.draw(RecordedCanvas::lines(points(1, record_.u16(6)), type == Polygon), type == Polygon);
    case PolyPolygon:
      return polyPolygon();
    case Ellipse:
      return canvas_.round(Round::Ellipse, pair(2), pair(0), {}, {});
    case Rectangle: {
      const Point a = pair(2), b = pair(0);
      Path path;
      path.addRectangle(a.x, a.y, b.x, b.y);
      return canvas_.draw(path, true);
    }
    case ExcludeRectangle:
    case IntersectRectangle: {
      const Point a = pair(2), b = pair(0);
      Path path;
      path.addRectangle(a.x, a.y, b.x, b.y);
      return canvas_.clip(std::move(path), type == ExcludeRectangle ? RecordedCanvas::Joining::Difference
                                                                    : RecordedCanvas::Joining::And);
    }
    case OffsetClip:
      return canvas_.moveClips(pair(0));
    case SelectClipRegion:
      // Regions of this kind are in pixels of a device that the file does not describe; the clip is removed.
      return canvas_.removeClips();
    case RoundedRectangle:
      return canvas_.roundedRectangle(pair(4), pair(2), number(1), number(0));
    case Arc:
    case Pie:
    case Chord:
      return canvas_.round(type == Arc   ? Round::Arc
                           : type == Pie ? Round::Pie
                                         : Round::Chord,
                           pair(6), pair(4), pair(2), pair(0));
    case Text: {
      const std::size_t count = record_.u16(6), behind = 1 + (count + 1) / 2;
      return canvas_.addText(pair(behind), text(8, count), 0);
    }
    case LongText:
      return longText();
    case StretchedBitmap:
      return bitmap(3, true);
    case StretchedBlock:
      return bitmap(2, true);
    case BitmapBlock:
      return bitmap(2, false);
    case CreatePen:
      return create(RecordedPen{(record_.u16(6) & styleBits) != noPen, colour(3), std::abs(number(1))});
    case CreateBrush:
      return create(RecordedBrush{record_.u16(6) != noBrush, colour(1)});
    case CreateFont:
      return create(font());
    case CreatePalette:
    case CreateBitmapBrush:
    case CreatePatternBrush:
    case CreateRegion:
      return create({});
    case SelectObject: {
      const std::size_t place = record_.u16(6);
      if (place < tools_.size() && tools_[place]) canvas_.select(*tools_[place]);
      return;
    }
    case DeleteObject:
      if (const std::size_t place = record_.u16(6); place < taken_.size()) {
        taken_[place] = false;
        tools_[place].reset();
      }
      return;
    default:
      return;
  }
}

}  // namespace

std::vector<SceneItem> windowsMetafileItems(const std::string& bytes, TextEngine& text) {
  return Player(bytes, text).play();
}

}  // namespace quorvel::render
