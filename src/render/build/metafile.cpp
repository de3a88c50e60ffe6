#include "render/build/metafile.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <numbers>
#include <optional>
#include <utility>

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
  SetArcDirection = 57,
  MoveTo = 27,
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
  Arc = 45,
  Chord = 46,
  Pie = 47,
  LineTo = 54,
  BeginPath = 59,
  EndPath = 60,
  CloseFigure = 61,
  FillPath = 62,
  StrokeAndFillPath = 63,
  StrokePath = 64,
  PolyBezier16 = 85,
  Polygon16 = 86,
  Polyline16 = 87,
  PolyBezierTo16 = 88,
  PolylineTo16 = 89,
  PolyPolyline16 = 90,
  PolyPolygon16 = 91,
  CreateExtendedPen = 95,
};

struct Pen {
  bool visible = true;
  std::uint32_t rgb = 0;
  double width = 0;  ///< logical units; 0: the thinnest
};
struct Brush {
  bool visible = true;
  std::uint32_t rgb = 0xFFFFFF;
};

struct State {
  Pen pen;
  Brush brush;
  Point windowOrigin, viewportOrigin, windowExtent{1, 1}, viewportExtent{1, 1};
  Matrix world;
  Point position;
  bool clockwise = false;
};

class Player {
 public:
  explicit Player(const std::string& bytes) : bytes_(bytes) {}

  std::vector<PathItem> play() {
    if (bytes_.size() < 88 || u32(0) != Header || std::memcmp(bytes_.data() + 40, " EMF", 4) != 0) return {};
    // The frame is in hundredths of a millimetre; the reference device tells how many of its pixels that is.
    const double perX = ratio(i32(72), i32(80)), perY = ratio(i32(76), i32(84));
    const double left = i32(24) * perX, top = i32(28) * perY, right = i32(32) * perX, bottom = i32(36) * perY;
    if (!(right > left) || !(bottom > top)) return {};
    toSquare_ = Matrix::scaling(1 / (right - left), 1 / (bottom - top)) * Matrix::translation(-left, -top);
    for (std::size_t at = 0; at + 8 <= bytes_.size();) {
      const std::size_t size = u32(at + 4);
      if (size < 8 || size > bytes_.size() - at) break;
      start_ = at;
      end_ = at + size;
      const std::uint32_t type = u32(at);
      if (type == EndOfFile || items_.size() > mostItems) break;
      run(type);
      at += size;
    }
    return std::move(items_);
  }

 private:
  static constexpr std::size_t mostItems = 20000, mostSaved = 1000;

  static double ratio(double pixels, double millimetres) {
    return pixels > 0 && millimetres > 0 ? pixels / (millimetres * 100) : 1;
  }
  template <class T>
  T raw(std::size_t at) const {
    T value{};
    if (at + sizeof(T) <= bytes_.size()) std::memcpy(&value, bytes_.data() + at, sizeof(T));
    return value;
  }
  std::uint32_t u32(std::size_t at) const { return raw<std::uint32_t>(at); }
  std::int32_t i32(std::size_t at) const { return raw<std::int32_t>(at); }
  /// Within the record that runs; 0 beyond its end.
  std::int32_t field(std::size_t offset) const { return start_ + offset + 4 <= end_ ? i32(start_ + offset) : 0; }
  double real(std::size_t offset) const {
    const double value = start_ + offset + 4 <= end_ ? raw<float>(start_ + offset) : 0;
    return std::isfinite(value) ? value : 0;
  }
  Point pair(std::size_t offset) const { return {double(field(offset)), double(field(offset + 4))}; }
  std::uint32_t colour(std::size_t offset) const {
    const auto bgr = std::uint32_t(field(offset));
    return (bgr & 255) << 16 | (bgr & 0xFF00) | (bgr >> 16 & 255);
  }

  Matrix map() const {
    const State& s = state_;
    const double x = s.windowExtent.x != 0 ? s.viewportExtent.x / s.windowExtent.x : 1;
    const double y = s.windowExtent.y != 0 ? s.viewportExtent.y / s.windowExtent.y : 1;
    return toSquare_ * Matrix::translation(s.viewportOrigin.x, s.viewportOrigin.y) * Matrix::scaling(x, y) *
           Matrix::translation(-s.windowOrigin.x, -s.windowOrigin.y) * s.world;
  }

  std::vector<Point> points(std::size_t offset, std::size_t count, bool small) const {
    const std::size_t size = small ? 4 : 8, from = start_ + offset;
    std::vector<Point> found;
    if (from > end_) return found;
    count = std::min(count, (end_ - from) / size);
    found.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t at = from + i * size;
      if (small)
        found.push_back({double(raw<std::int16_t>(at)), double(raw<std::int16_t>(at + 2))});
      else
        found.push_back({double(i32(at)), double(i32(at + 4))});
    }
    return found;
  }

  void paint(Path path, bool fill, bool stroke) {
    if (path.isEmpty()) return;
    const Matrix matrix = map();
    path.transform(matrix);
    PathItem item{std::move(path), {}, {}};
    if (fill && state_.brush.visible) item.fill = Colour{state_.brush.rgb, 1};
    if (stroke && state_.pen.visible)
      item.stroke = {true, {state_.pen.rgb, 1}, state_.pen.width * matrix.scale(), LineCap::Round, {}};
    if (item.stroke.visible || !std::holds_alternative<std::monostate>(item.fill)) items_.push_back(std::move(item));
  }
  /// Into the open path bracket, or straight onto the picture.
  void draw(const Path& path, bool fill) {
    if (bracket_)
      bracket_->append(path);
    else
      paint(path, fill, true);
  }

  static Path lines(const std::vector<Point>& points, bool closed) {
    Path path;
    for (Point p : points) path.isEmpty() ? path.moveTo(p) : path.lineTo(p);
    if (closed) path.close();
    return path;
  }
  static void addCurves(Path& path, const std::vector<Point>& points, std::size_t from) {
    for (std::size_t i = from; i + 2 < points.size(); i += 3) path.curveTo(points[i], points[i + 1], points[i + 2]);
  }

  void poly(std::uint32_t type, bool small) {
    const std::vector<Point> all = points(28, std::size_t(std::uint32_t(field(24))), small);
    if (all.empty()) return;
    Path path;
    switch (type) {
      case Polygon:
        return draw(lines(all, true), true);
      case Polyline:
        return draw(lines(all, false), false);
      case PolyBezier:
        path.moveTo(all[0]);
        addCurves(path, all, 1);
        return draw(path, false);
      default:
        // Both go on from the current position.
        if (bracket_ && !bracket_->isEmpty() && bracket_->verbs().back() != PathVerb::Close) {
          for (std::size_t i = 0; type == PolylineTo && i < all.size(); ++i) bracket_->lineTo(all[i]);
          if (type == PolyBezierTo) addCurves(*bracket_, all, 0);
        } else {
          path.moveTo(state_.position);
          for (std::size_t i = 0; type == PolylineTo && i < all.size(); ++i) path.lineTo(all[i]);
          if (type == PolyBezierTo) addCurves(path, all, 0);
          draw(path, false);
        }
        state_.position = all.back();
    }
  }

  void polyPoly(bool closed, bool small) {
    const std::size_t polygons = std::min<std::size_t>(std::uint32_t(field(24)), (end_ - start_) / 4);
    std::size_t offset = 32 + polygons * 4;
    Path path;
    for (std::size_t i = 0; i < polygons; ++i) {
      const std::vector<Point> each = points(offset, std::uint32_t(field(32 + i * 4)), small);
      offset += each.size() * (small ? 4 : 8);
      path.append(lines(each, closed));
    }
    draw(path, closed);
  }

  void round(std::uint32_t type) {
    const Point a = pair(8), b = pair(16), centre = (a + b) * 0.5;
    const double rx = (b.x - a.x) / 2, ry = (b.y - a.y) / 2;
    Path path;
    if (type == Ellipse) {
      path.addEllipse(centre, {centre.x + rx, centre.y}, {centre.x, centre.y + ry});
      return draw(path, true);
    }
    if (rx == 0 || ry == 0) return;
    const auto angleOf = [&](Point p) { return std::atan2((p.y - centre.y) / ry, (p.x - centre.x) / rx); };
    const double from = angleOf(pair(24));
    double sweep = angleOf(pair(32)) - from;
    // y runs downward, so that rising angles go clockwise.
    constexpr double turn = 2 * std::numbers::pi;
    if (state_.clockwise && sweep <= 0) sweep += turn;
    if (!state_.clockwise && sweep >= 0) sweep -= turn;
    const int pieces = std::max(1, int(std::ceil(std::abs(sweep) / (turn / 4))));
    const double step = sweep / pieces, reach = 4.0 / 3 * std::tan(step / 4);
    const auto at = [&](double x, double y) { return Point{centre.x + rx * x, centre.y + ry * y}; };
    path.moveTo(at(std::cos(from), std::sin(from)));
    for (int i = 0; i < pieces; ++i) {
      const double t = from + step * i, u = t + step;
      path.curveTo(at(std::cos(t) - reach * std::sin(t), std::sin(t) + reach * std::cos(t)),
                   at(std::cos(u) + reach * std::sin(u), std::sin(u) - reach * std::cos(u)),
                   at(std::cos(u), std::sin(u)));
    }
    if (type == Pie) path.lineTo(centre);
    if (type != Arc) path.close();
    draw(path, type != Arc);
  }

  void select(std::uint32_t handle) {
    constexpr std::uint32_t stock = 0x80000000u;
    static constexpr std::uint32_t greys[] = {0xFFFFFF, 0xC0C0C0, 0x808080, 0x404040, 0x000000};
    if (handle >= stock) {
      const std::uint32_t number = handle - stock;
      if (number <= 4) state_.brush = {true, greys[number]};
      if (number == 5) state_.brush.visible = false;
      if (number == 6 || number == 7) state_.pen = {true, number == 6 ? 0xFFFFFFu : 0u, 0};
      if (number == 8) state_.pen.visible = false;
      return;
    }
    if (const auto pen = pens_.find(handle); pen != pens_.end()) state_.pen = pen->second;
    if (const auto brush = brushes_.find(handle); brush != brushes_.end()) state_.brush = brush->second;
  }

  Matrix transformField() const { return {real(8), real(12), real(16), real(20), real(24), real(28)}; }

  void run(std::uint32_t type) {
    constexpr int noPen = 5, styleBits = 15, noBrush = 1;
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
      case Arc:
      case Chord:
      case Pie:
        return round(type);
      case Rectangle: {
        const Point a = pair(8), b = pair(16);
        Path path;
        path.addRectangle(a.x, a.y, b.x, b.y);
        return draw(path, true);
      }
      case MoveTo:
        state_.position = pair(8);
        if (bracket_) bracket_->moveTo(state_.position);
        return;
      case LineTo: {
        const Point to = pair(8);
        if (bracket_)
          bracket_->lineTo(to);
        else
          paint(lines({state_.position, to}, false), false, true);
        state_.position = to;
        return;
      }
      case SetWindowExtent:
        state_.windowExtent = pair(8);
        return;
      case SetWindowOrigin:
        state_.windowOrigin = pair(8);
        return;
      case SetViewportExtent:
        state_.viewportExtent = pair(8);
        return;
      case SetViewportOrigin:
        state_.viewportOrigin = pair(8);
        return;
      case SetArcDirection:
        state_.clockwise = field(8) == 2;
        return;
      case SetWorldTransform:
        state_.world = transformField();
        return;
      case ModifyWorldTransform: {
        const int mode = field(32);
        if (mode == 1) state_.world = {};
        if (mode == 2) state_.world = state_.world * transformField();
        if (mode == 3) state_.world = transformField() * state_.world;
        if (mode == 4) state_.world = transformField();
        return;
      }
      case SaveState:
        if (saved_.size() < mostSaved) saved_.push_back(state_);
        return;
      case RestoreState: {
        const int count = field(8) < 0 ? -field(8) : 1;
        for (int i = 0; i < count && !saved_.empty(); ++i) {
          state_ = saved_.back();
          saved_.pop_back();
        }
        return;
      }
      case SelectObject:
        return select(std::uint32_t(field(8)));
      case DeleteObject:
        pens_.erase(std::uint32_t(field(8)));
        brushes_.erase(std::uint32_t(field(8)));
        return;
      case CreatePen:
        pens_[std::uint32_t(field(8))] = {(field(12) & styleBits) != noPen, colour(24), std::abs(double(field(16)))};
        return;
      case CreateExtendedPen:
        pens_[std::uint32_t(field(8))] = {(field(28) & styleBits) != noPen && field(36) != noBrush, colour(40),
                                          std::abs(double(field(32)))};
        return;
      case CreateBrush:
        brushes_[std::uint32_t(field(8))] = {field(12) != noBrush, colour(16)};
        return;
      case BeginPath:
        bracket_ = Path();
        return;
      case CloseFigure:
        if (bracket_) bracket_->close();
        return;
      case EndPath:
        if (bracket_) finished_ = std::move(*bracket_);
        bracket_.reset();
        return;
      case FillPath:
      case StrokeAndFillPath:
      case StrokePath:
        paint(std::exchange(finished_, {}), type != StrokePath, type != FillPath);
        return;
      default:
        return;
    }
  }

  const std::string& bytes_;
  std::size_t start_ = 0, end_ = 0;
  Matrix toSquare_;
  State state_;
  std::vector<State> saved_;
  std::map<std::uint32_t, Pen> pens_;
  std::map<std::uint32_t, Brush> brushes_;
  std::optional<Path> bracket_;
  Path finished_;
  std::vector<PathItem> items_;
};

}  // namespace

std::vector<PathItem> metafilePaths(const std::string& bytes) { return Player(bytes).play(); }

}  // namespace quorvel::render
