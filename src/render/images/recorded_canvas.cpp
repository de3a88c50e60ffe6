#include "render/images/recorded_canvas.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "host/sheet/bitmap_file.h"

namespace quorvel::render {

std::uint32_t colourOfCall(std::uint32_t bgr) { return (bgr & 255) << 16 | (bgr & 0xFF00) | (bgr >> 16 & 255); }

void RecordedCanvas::save() {
  if (saved_.size() < mostSaved) saved_.push_back(state);
}

void RecordedCanvas::restore(int count) {
  for (int i = 0; i < count && !saved_.empty(); ++i) {
    state = saved_.back();
    saved_.pop_back();
  }
}

void RecordedCanvas::select(const RecordedTool& tool) {
  if (const auto* pen = std::get_if<RecordedPen>(&tool)) state.pen = *pen;
  if (const auto* brush = std::get_if<RecordedBrush>(&tool)) state.brush = *brush;
  if (const auto* font = std::get_if<RecordedFont>(&tool)) state.font = *font;
}

Matrix RecordedCanvas::map() const {
  const double x = state.windowExtent.x != 0 ? state.viewportExtent.x / state.windowExtent.x : 1;
  const double y = state.windowExtent.y != 0 ? state.viewportExtent.y / state.windowExtent.y : 1;
  return toSquare_ * Matrix::translation(state.viewportOrigin.x, state.viewportOrigin.y) * Matrix::scaling(x, y) *
         Matrix::translation(-state.windowOrigin.x, -state.windowOrigin.y) * state.world;
}

void RecordedCanvas::paint(Path path, bool fill, bool stroke) {
  if (path.isEmpty()) return;
  const Matrix matrix = map();
  path.transform(matrix);
  PathItem item{std::move(path), {}, {}};
  if (fill && state.brush.visible) item.fill = Colour{state.brush.rgb, 1};
  if (stroke && state.pen.visible)
    item.stroke = {true, {state.pen.rgb, 1}, state.pen.width * matrix.scale(), LineCap::Round, {}};
  if (item.stroke.visible || !std::holds_alternative<std::monostate>(item.fill)) emit(std::move(item));
}

void RecordedCanvas::draw(const Path& path, bool fill) {
  if (bracket_)
    bracket_->append(path);
  else
    paint(path, fill, true);
}

void RecordedCanvas::moveTo(Point to) {
  state.position = to;
  if (bracket_) bracket_->moveTo(to);
}

void RecordedCanvas::lineTo(Point to) {
  if (bracket_)
    bracket_->lineTo(to);
  else
    paint(lines({state.position, to}, false), false, true);
  state.position = to;
}

/// Whether the open path has a figure that more can be added to.
bool RecordedCanvas::goesOn() const {
  return bracket_ && !bracket_->isEmpty() && bracket_->verbs().back() != PathVerb::Close;
}

void RecordedCanvas::linesTo(const std::vector<Point>& points) {
  if (points.empty()) return;
  if (goesOn()) {
    for (const Point point : points) bracket_->lineTo(point);
  } else {
    Path path;
    path.moveTo(state.position);
    for (const Point point : points) path.lineTo(point);
    draw(path, false);
  }
  state.position = points.back();
}

void RecordedCanvas::curvesTo(const std::vector<Point>& points) {
  if (points.empty()) return;
  if (goesOn()) {
    addCurves(*bracket_, points, 0);
  } else {
    Path path;
    path.moveTo(state.position);
    addCurves(path, points, 0);
    draw(path, false);
  }
  state.position = points.back();
}

Path RecordedCanvas::lines(const std::vector<Point>& points, bool closed) {
  Path path;
  for (Point p : points) path.isEmpty() ? path.moveTo(p) : path.lineTo(p);
  if (closed) path.close();
  return path;
}

void RecordedCanvas::addCurves(Path& path, const std::vector<Point>& points, std::size_t from) {
  for (std::size_t i = from; i + 2 < points.size(); i += 3) path.curveTo(points[i], points[i + 1], points[i + 2]);
}

void RecordedCanvas::round(Round kind, Point corner, Point opposite, Point from, Point to) {
  const Point centre = (corner + opposite) * 0.5;
  const double rx = (opposite.x - corner.x) / 2, ry = (opposite.y - corner.y) / 2;
  Path path;
  if (kind == Round::Ellipse) {
    path.addEllipse(centre, {centre.x + rx, centre.y}, {centre.x, centre.y + ry});
    return draw(path, true);
  }
  if (rx == 0 || ry == 0) return;
  const auto angleOf = [&](Point p) { return std::atan2((p.y - centre.y) / ry, (p.x - centre.x) / rx); };
  const double start = angleOf(from);
  double sweep = angleOf(to) - start;
  // y runs downward, so that rising angles go clockwise.
  constexpr double turn = 2 * std::numbers::pi;
  if (state.clockwise && sweep <= 0) sweep += turn;
  if (!state.clockwise && sweep >= 0) sweep -= turn;
  const int pieces = std::max(1, int(std::ceil(std::abs(sweep) / (turn / 4))));
  const double step = sweep / pieces, reach = 4.0 / 3 * std::tan(step / 4);
  const auto at = [&](double x, double y) { return Point{centre.x + rx * x, centre.y + ry * y}; };
  path.moveTo(at(std::cos(start), std::sin(start)));
  for (int i = 0; i < pieces; ++i) {
    const double t = start + step * i, u = t + step;
    path.curveTo(at(std::cos(t) - reach * std::sin(t), std::sin(t) + reach * std::cos(t)),
                 at(std::cos(u) + reach * std::sin(u), std::sin(u) - reach * std::cos(u)),
                 at(std::cos(u), std::sin(u)));
  }
  if (kind == Round::Pie) path.lineTo(centre);
  if (kind != Round::Arc) path.close();
  draw(path, kind != Round::Arc);
}

void RecordedCanvas::roundedRectangle(Point corner, Point opposite, double width, double height) {
  const double left = std::min(corner.x, opposite.x), right = std::max(corner.x, opposite.x);
  const double low = std::min(corner.y, opposite.y), high = std::max(corner.y, opposite.y);
  const double rx = std::min(std::abs(width), right - left) / 2, ry = std::min(std::abs(height), high - low) / 2;
  Path path;
  if (!(rx > 0) || !(ry > 0)) {
    path.addRectangle(left, low, right, high);
    return draw(path, true);
  }
  constexpr double reach = 0.5522847498;  // of a quarter circle
  const double x = rx * (1 - reach), y = ry * (1 - reach);
  path.moveTo({left + rx, low});
  path.lineTo({right - rx, low});
  path.curveTo({right - x, low}, {right, low + y}, {right, low + ry});
  path.lineTo({right, high - ry});
  path.curveTo({right, high - y}, {right - x, high}, {right - rx, high});
  path.lineTo({left + rx, high});
  path.curveTo({left + x, high}, {left, high - y}, {left, high - ry});
  path.lineTo({left, low + ry});
  path.curveTo({left, low + y}, {left + x, low}, {left + rx, low});
  path.close();
  draw(path, true);
}

void RecordedCanvas::closeFigure() {
  if (bracket_) bracket_->close();
}

void RecordedCanvas::endPath() {
  if (bracket_) finished_ = std::move(*bracket_);
  bracket_.reset();
}

void RecordedCanvas::paintPath(bool fill, bool stroke) { paint(std::exchange(finished_, {}), fill, stroke); }

void RecordedCanvas::clip(Path path, Joining how) {
  path.transform(map());
  clipSquare(std::move(path), how);
}

void RecordedCanvas::clipDevice(Path path, Joining how) {
  path.transform(toSquare_);
  clipSquare(std::move(path), how);
}

void RecordedCanvas::clipSquare(Path path, Joining how) {
  std::vector<std::shared_ptr<const Path>>& clips = state.clips;
  const auto everything = [] {
    constexpr double far = 100;  // sides of the image
    Path all;
    all.addRectangle(-far, -far, far, far);
    return all;
  };
  const auto joined = [](Path first, const Path& second) {
    first.append(second);
    return std::make_shared<const Path>(std::move(first));
  };
  switch (how) {
    case Joining::And:
    case Joining::Copy: {
      if (how == Joining::Copy) clips.clear();
      // Most programs begin with the image's own frame.
      constexpr double slack = 1e-3;
      const Box box = boundsOf(path);
      const bool isFrame = path.points().size() == 4 && box.left <= slack && box.top <= slack &&
                           box.right >= 1 - slack && box.bottom >= 1 - slack;
      if (!isFrame) clips.push_back(std::make_shared<const Path>(std::move(path)));
      break;
    }
    case Joining::Difference:
      clips.push_back(joined(everything(), path));
      break;
    case Joining::Or:
      // Parts of one region lie side by side. What already shows everywhere stays.
      if (clips.size() == 1) clips[0] = joined(*clips[0], path);
      break;
    case Joining::Xor:
      if (clips.size() < 2) clips = {joined(clips.empty() ? everything() : *clips[0], path)};
      break;
  }
  if (clips.size() > mostClips) clips.erase(clips.begin());
}

void RecordedCanvas::moveClips(Point by) {
  const Matrix matrix = map();
  const Point way = matrix(by) - matrix(Point{});
  for (auto& clip : state.clips) {
    Path moved = *clip;
    moved.transform(Matrix::translation(way.x, way.y));
    clip = std::make_shared<const Path>(std::move(moved));
  }
}

void RecordedCanvas::closeClips(std::size_t kept) {
  for (; open_.size() > kept; open_.pop_back()) items_.emplace_back(ClipEnd{});
}

void RecordedCanvas::emit(SceneItem item) {
  if (open_ != state.clips) {
    const auto differing = std::ranges::mismatch(open_, state.clips);
    closeClips(std::size_t(differing.in1 - open_.begin()));
    for (std::size_t i = open_.size(); i < state.clips.size(); ++i) {
      open_.push_back(state.clips[i]);
      items_.emplace_back(ClipBegin{*state.clips[i]});
    }
  }
  items_.push_back(std::move(item));
}

std::vector<SceneItem> RecordedCanvas::take() {
  closeClips(0);
  return std::move(items_);
}

void RecordedCanvas::addText(Point at, const std::string& text, double width) {
  constexpr double setSize = 20;          // points; its map scales what is set
  constexpr double lettersOfLine = 0.87;  // of a line's height is the size of its letters, in common faces
  constexpr double usual = 12;
  const bool followsPosition = state.textAlignment & 1;
  if (followsPosition) at = state.position;
  if (text.find_first_not_of(' ') == std::string::npos) {
    if (followsPosition) state.position.x += width;
    return;
  }
  const RecordedFont& font = state.font;
  CharacterFormat format;
  format.style.family = font.family;
  format.style.size = setSize;
  format.style.colour = {state.textRgb, 1};
  format.style.bold = font.bold;
  format.style.italic = font.italic;
  format.style.underline = font.underline;
  format.style.strikethrough = font.strikethrough;
  StyledText styled;
  styled.formats.push_back(std::move(format));
  Paragraph paragraph;
  paragraph.format.alignment = ParagraphFormat::Left;
  paragraph.format.lineSpacing = 0;
  paragraph.spans.push_back({text, 0});
  styled.paragraphs.push_back(std::move(paragraph));
  const std::shared_ptr<const TextLayout> layout = text_.layOut(styled, -1);
  if (!layout || layout->lines.empty() || layout->lines.front().runs.empty()) return;
  const TextLine& line = layout->lines.front();

  const double letters = font.height < 0 ? -font.height : font.height > 0 ? font.height * lettersOfLine : usual;
  const double scale = letters / setSize;
  double across = scale;
  // A replacement for the author's face is drawn as wide as that was, as long as it stays legible.
  if (width > 0 && line.width > 0) across = std::clamp(width / line.width, scale / 2, scale * 2);
  double x = 0, y = 0;
  if ((state.textAlignment & 6) == 6) x = -line.width / 2;
  if ((state.textAlignment & 6) == 2) x = -line.width;
  if ((state.textAlignment & 24) == 24) {
    y = -line.runs.front().baseline;
  } else {
    y = (state.textAlignment & 24) == 8 ? -(line.top + line.height) : -line.top;
  }
  // Text is upright whatever the direction of the axes.
  const Matrix matrix = map();
  const double upX = matrix.a < 0 ? -1 : 1, upY = matrix.d < 0 ? -1 : 1;
  TextItem item;
  item.layout = layout;
  item.transform = matrix * Matrix::translation(at.x, at.y) * Matrix::scaling(upX, upY) *
                   Matrix::rotation(-font.angle) * Matrix::scaling(across, scale) *
                   Matrix::translation(x - line.left, y);
  emit(std::move(item));
  if (followsPosition) state.position.x += width > 0 ? width : line.width * across;
}

void RecordedCanvas::addBitmap(const std::string& bitmap, const BitmapPart& part, Point corner, Point size) {
  const auto [pixelsX, pixelsY] = host::bitmapSize(bitmap);
  if (pixelsX <= 0 || pixelsY <= 0) return;
  std::string file = host::bitmapFile(bitmap);
  if (file.empty()) return;
  bitmapBytes_ += file.size();
  if (isFull()) return;
  const Matrix matrix = map();
  const Point a = matrix(corner), b = matrix(corner + size);
  const Point least{std::min(a.x, b.x), std::min(a.y, b.y)}, most{std::max(a.x, b.x), std::max(a.y, b.y)};
  if (!(most.x > least.x) || !(most.y > least.y)) return;
  ImageItem item;
  item.mediaType = "image/bmp";
  item.bytes = std::make_shared<const std::string>(std::move(file));
  item.transform = Matrix::translation(least.x, least.y) * Matrix::scaling(most.x - least.x, most.y - least.y);
  const bool whole = part.width <= 0 || part.height <= 0 ||
                     (part.x <= 0 && part.y <= 0 && part.width >= pixelsX && part.height >= pixelsY);
  if (!whole) {
    item.transform = item.transform * Matrix::scaling(pixelsX / part.width, pixelsY / part.height) *
                     Matrix::translation(-part.x / pixelsX, -part.y / pixelsY);
    item.clip.addRectangle(least.x, least.y, most.x, most.y);
  }
  emit(std::move(item));
}

}  // namespace quorvel::render
