#include "host/geometry/geometry_path.h"

#include <algorithm>
#include <charconv>

#include "base/text.h"
#include "host/geometry/elliptical_arc.h"
#include "host/geometry/spline.h"

namespace quorvel::host {
namespace {

constexpr double pi = std::numbers::pi;

/// The numbers between the parentheses of "NURBS(…)" or "POLYLINE(…)".
std::vector<double> numbersIn(std::string_view list) {
  std::vector<double> numbers;
  const std::size_t open = list.find('(');
  if (open == std::string_view::npos) return numbers;
  list.remove_prefix(open + 1);
  list = list.substr(0, list.rfind(')'));
  for (std::string_view piece : splitAt(list, ',')) {
    piece = trimmed(piece);
    double number = 0;
    std::from_chars(piece.data(), piece.data() + piece.size(), number);
    numbers.push_back(std::isfinite(number) ? number : 0);
  }
  return numbers;
}

/// Draws row after row.
class Pen {
 public:
  Pen(double width, double height, double arcStep) : width_(width), height_(height), arcStep_(arcStep) {}

  void moveTo(Point start);
  void lineTo(Point end);
  void arcTo(Point end, double bow);
  void ellipticalArcTo(Point end, Point through, double angle, double ratio);
  void cubicTo(Point control1, Point control2, Point end);
  void quadraticTo(Point control, Point end);
  void ellipse(Point centre, Point axisEnd1, Point axisEnd2);
  void infiniteLine(Point from, Point to);
  void polylineTo(const GeometryRow& row);
  void nurbsTo(const GeometryRow& row);
  void spline(const std::vector<GeometryRow>& rows, std::size_t start, std::size_t end);
  void drawNothing() { drawn_.isMeasurable = false; }

  GeometryPath finish() {
    closeMeetingEnds();
    return std::move(drawn_);
  }

 private:
  void beginSegment();
  void closeMeetingEnds();
  void appendArc(const Matrix& map, double from, double sweep, Point end);
  void appendEllipticalArc(Point end, Point through, double angle, double ratio);

  const double width_, height_, arcStep_;
  GeometryPath drawn_;
  Path& path_ = drawn_.path;
  Point first_;  ///< of the current subpath
};

void Pen::moveTo(Point start) {
  closeMeetingEnds();
  first_ = start;
  path_.moveTo(start);
}

void Pen::beginSegment() {
  if (path_.isEmpty()) {
    path_.moveTo({0, 0});
    first_ = {};
  }
  drawn_.segments.push_back(path_.verbs().size());
}

void Pen::closeMeetingEnds() {
  if (path_.isEmpty() || path_.verbs().back() == PathVerb::Close || path_.verbs().back() == PathVerb::MoveTo) return;
  const double near = 1e-6 * std::max({1.0, std::abs(width_), std::abs(height_)});
  if (distance(path_.current(), first_) <= near) path_.close();
}

void Pen::lineTo(Point end) {
  beginSegment();
  path_.lineTo(end);
}

/// An arc of the unit circle seen through `map`, from one angle by `sweep` radians.
void Pen::appendArc(const Matrix& map, double from, double sweep, Point end) {
  const int pieces = std::max(1, int(std::ceil(std::abs(sweep) / arcStep_ - 1e-9)));
  const double step = sweep / pieces, reach = 4.0 / 3 * std::tan(step / 4);
  for (int i = 0; i < pieces; ++i) {
    const double a = from + step * i, b = a + step;
    const Point start{std::cos(a), std::sin(a)}, stop{std::cos(b), std::sin(b)};
    const Point control1{start.x - reach * start.y, start.y + reach * start.x};
    const Point control2{stop.x + reach * stop.y, stop.y - reach * stop.x};
    path_.curveTo(map(control1), map(control2), i + 1 == pieces ? end : map(stop));
  }
}

void Pen::appendEllipticalArc(Point end, Point through, double angle, double ratio) {
  const auto arc = ellipticalArc(path_.current(), through, end, angle, ratio);
  if (!arc) return path_.lineTo(end);
  const Matrix stretch = Matrix::rotation(arc->angle) * Matrix::scaling(arc->ratio, 1);
  const Matrix circle = Matrix::translation(arc->centre.x, arc->centre.y) * Matrix::scaling(arc->radius, arc->radius);
  appendArc(stretch * circle, arc->from, arc->sweep, end);
}

/// A straight line when the three points lie on one.
void Pen::ellipticalArcTo(Point end, Point through, double angle, double ratio) {
  beginSegment();
  appendEllipticalArc(end, through, angle, ratio);
}

/// The bow is the distance of the arc's middle from its chord, to the right of the direction when it is positive.
void Pen::arcTo(Point end, double bow) {
  beginSegment();
  const Point start = path_.current(), chord = end - start;
  const double size = length(chord);
  if (size == 0 || std::abs(bow) < 1e-6 * size) return path_.lineTo(end);
  const Point middle = (start + end) * 0.5;
  appendEllipticalArc(end, {middle.x + bow * chord.y / size, middle.y - bow * chord.x / size}, 0, 1);
}

void Pen::cubicTo(Point control1, Point control2, Point end) {
  beginSegment();
  path_.curveTo(control1, control2, end);
}

void Pen::quadraticTo(Point control, Point end) {
  beginSegment();
  const Point start = path_.current();
  path_.curveTo(start + (control - start) * (2.0 / 3), end + (control - end) * (2.0 / 3), end);
}

void Pen::ellipse(Point centre, Point axisEnd1, Point axisEnd2) {
  const Point u = axisEnd1 - centre, v = axisEnd2 - centre;
  moveTo(axisEnd1);
  beginSegment();
  appendArc({u.x, u.y, v.x, v.y, centre.x, centre.y}, 0, 2 * pi, axisEnd1);
  path_.close();
}

/// Far beyond any page; the page cuts it.
void Pen::infiniteLine(Point from, Point to) {
  constexpr double reach = 2000;
  drawn_.isMeasurable = false;
  const Point along = to - from;
  const double size = length(along);
  if (size == 0) return;
  path_.moveTo(from - along * (reach / size));
  beginSegment();
  path_.lineTo(from + along * (reach / size));
}

void Pen::polylineTo(const GeometryRow& row) {
  const std::vector<double> numbers = numbersIn(row.list);
  // Two kinds of coordinate: 0 is a share of the width or height, 1 is absolute.
  if (numbers.size() >= 2) {
    const double x = numbers[0] == 0 ? width_ : 1, y = numbers[1] == 0 ? height_ : 1;
    for (std::size_t i = 2; i + 1 < numbers.size(); i += 2) lineTo({numbers[i] * x, numbers[i + 1] * y});
  }
  lineTo({row.x, row.y});
}

void Pen::nurbsTo(const GeometryRow& row) {
  beginSegment();
  const std::vector<double> numbers = numbersIn(row.list);
  if (numbers.size() < 4) return path_.lineTo({row.x, row.y});
  const double last = numbers[0];
  const int degree = std::clamp(int(numbers[1]), 1, 25);
  const double x = numbers[2] == 0 ? width_ : 1, y = numbers[3] == 0 ? height_ : 1;
  std::vector<Point> points{path_.current()};
  std::vector<double> knots{row.c}, weights{row.d};
  for (std::size_t i = 4; i + 3 < numbers.size(); i += 4) {
    points.push_back({numbers[i] * x, numbers[i + 1] * y});
    knots.push_back(numbers[i + 2]);
    weights.push_back(numbers[i + 3]);
  }
  points.push_back({row.x, row.y});
  knots.push_back(row.a);
  weights.push_back(row.b);
  while (knots.size() < points.size() + std::size_t(degree) + 1) knots.push_back(last);
  appendSpline(path_, points, weights, knots, degree);
}

/// The SplineStart at `start` with the knots up to `end`.
void Pen::spline(const std::vector<GeometryRow>& rows, std::size_t start, std::size_t end) {
  beginSegment();
  const GeometryRow& row = rows[start];
  std::vector<Point> points{path_.current()};
  std::vector<double> knots{row.b};
  for (std::size_t i = start; i < end; ++i) {
    points.push_back({rows[i].x, rows[i].y});
    knots.push_back(rows[i].a);
  }
  const int degree = std::clamp(int(row.d), 1, 25);
  while (knots.size() < points.size() + std::size_t(degree) + 1) knots.push_back(row.c);
  appendSpline(path_, points, std::vector<double>(points.size(), 1), knots, degree);
}

}  // namespace

Point vertexOf(const GeometryRow& row, double width, double height) {
  return isRelative(row.tag) ? Point{row.x * width, row.y * height} : Point{row.x, row.y};
}

GeometryPath geometryPath(const std::vector<GeometryRow>& rows, double width, double height, double arcStep) {
  Pen pen(width, height, arcStep);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const GeometryRow& row = rows[i];
    const Point end = vertexOf(row, width, height), ab{row.a, row.b}, cd{row.c, row.d};
    const Point abShare{row.a * width, row.b * height}, cdShare{row.c * width, row.d * height};
    switch (row.tag) {
      case RowTag::Component:
        break;
      case RowTag::MoveTo:
      case RowTag::RelMoveTo:
        pen.moveTo(end);
        break;
      case RowTag::LineTo:
      case RowTag::RelLineTo:
        pen.lineTo(end);
        break;
      case RowTag::ArcTo:
        pen.arcTo(end, row.a);
        break;
      case RowTag::EllipticalArcTo:
        pen.ellipticalArcTo(end, ab, row.c, row.d);
        break;
      case RowTag::RelEllipticalArcTo:
        pen.ellipticalArcTo(end, abShare, row.c, row.d);
        break;
      case RowTag::RelCubBezTo:
        pen.cubicTo(abShare, cdShare, end);
        break;
      case RowTag::RelQuadBezTo:
        pen.quadraticTo(abShare, end);
        break;
      case RowTag::Ellipse:
        pen.ellipse(end, ab, cd);
        break;
      case RowTag::InfiniteLine:
        pen.infiniteLine(end, ab);
        break;
      case RowTag::PolylineTo:
        pen.polylineTo(row);
        break;
      case RowTag::NurbsTo:
        pen.nurbsTo(row);
        break;
      case RowTag::SplineStart: {
        const std::size_t start = i;
        while (i + 1 < rows.size() && rows[i + 1].tag == RowTag::SplineKnot) ++i;
        pen.spline(rows, start, i + 1);
        break;
      }
      case RowTag::SplineKnot:  // without a start
        pen.lineTo(end);
        break;
      default:
        pen.drawNothing();
    }
  }
  return pen.finish();
}

}  // namespace quorvel::host
