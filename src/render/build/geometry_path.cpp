#include "render/build/geometry_path.h"

#include <algorithm>
#include <charconv>
#include <numbers>

#include "base/text.h"
#include "host/sheet/elliptical_arc.h"

namespace quorvel::render {
namespace {

constexpr double pi = std::numbers::pi;

/// An arc of the unit circle seen through `map`, from one angle by `sweep` radians.
void appendArc(Path& path, const Matrix& map, double from, double sweep, Point end) {
  const int pieces = std::max(1, int(std::ceil(std::abs(sweep) / (pi / 2) - 1e-9)));
  const double step = sweep / pieces, reach = 4.0 / 3 * std::tan(step / 4);
  for (int i = 0; i < pieces; ++i) {
    const double a = from + step * i, b = a + step;
    const Point start{std::cos(a), std::sin(a)}, stop{std::cos(b), std::sin(b)};
    const Point control1{start.x - reach * start.y, start.y + reach * start.x};
    const Point control2{stop.x + reach * stop.y, stop.y - reach * stop.x};
    path.curveTo(map(control1), map(control2), i + 1 == pieces ? end : map(stop));
  }
}

/// The arc of an ellipse from the current point through `through` to `end`; its longer axis lies at `angle` and is
/// `ratio` times the shorter one. A straight line when the three points lie on one.
void ellipticalArcTo(Path& path, Point end, Point through, double angle, double ratio) {
  const Point start = path.current();
  const auto arc = host::ellipticalArcThrough(start.x, start.y, through.x, through.y, end.x, end.y, angle, ratio);
  if (!arc) return path.lineTo(end);
  const Matrix stretch = Matrix::rotation(arc->angle) * Matrix::scaling(arc->ratio, 1);
  const Matrix circle = Matrix::translation(arc->centreX, arc->centreY) * Matrix::scaling(arc->radius, arc->radius);
  appendArc(path, stretch * circle, arc->from, arc->sweep, end);
}

void arcTo(Path& path, Point end, double bow) {
  const Point start = path.current(), chord = end - start;
  const double size = length(chord);
  if (size == 0 || std::abs(bow) < 1e-6 * size) return path.lineTo(end);
  const Point middle = (start + end) * 0.5;
  ellipticalArcTo(path, end, {middle.x + bow * chord.y / size, middle.y - bow * chord.x / size}, 0, 1);
}

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

void polylineTo(Path& path, const GeometryRow& row, double width, double height) {
  const std::vector<double> numbers = numbersIn(row.list);
  // Two kinds of coordinate: 0 is a share of the width or height, 1 is absolute.
  if (numbers.size() >= 2) {
    const double x = numbers[0] == 0 ? width : 1, y = numbers[1] == 0 ? height : 1;
    for (std::size_t i = 2; i + 1 < numbers.size(); i += 2) path.lineTo({numbers[i] * x, numbers[i + 1] * y});
  }
  path.lineTo({row.x, row.y});
}

void nurbsTo(Path& path, const GeometryRow& row, double width, double height) {
  const std::vector<double> numbers = numbersIn(row.list);
  if (numbers.size() < 4) return path.lineTo({row.x, row.y});
  const double last = numbers[0];
  const int degree = std::clamp(int(numbers[1]), 1, 25);
  const double x = numbers[2] == 0 ? width : 1, y = numbers[3] == 0 ? height : 1;
  std::vector<Point> points{path.current()};
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
  appendSpline(path, points, weights, knots, degree);
}

bool continues(GeometryTag tag) {
  return tag != GeometryTag::MoveTo && tag != GeometryTag::RelMoveTo && tag != GeometryTag::Component;
}

}  // namespace

void appendSpline(Path& path, const std::vector<Point>& points, const std::vector<double>& givenWeights,
                  const std::vector<double>& knots, int degree) {
  const std::size_t n = points.size(), p = std::size_t(std::max(degree, 1));
  const bool usable = n > p && knots.size() == n + p + 1 && std::is_sorted(knots.begin(), knots.end()) &&
                      knots[p] < knots[n] && givenWeights.size() == n;
  if (!usable) {
    for (std::size_t i = 1; i < n; ++i) path.lineTo(points[i]);
    return;
  }
  std::vector<double> weights = givenWeights;
  if (std::any_of(weights.begin(), weights.end(), [](double w) { return !(w > 0); })) weights.assign(n, 1);

  struct Weighted {
    double x, y, w;
  };
  std::vector<Weighted> ladder(p + 1);
  const auto pointAt = [&](double t) {
    std::size_t span = p;
    while (span + 1 < n && t >= knots[span + 1]) ++span;
    for (std::size_t i = 0; i <= p; ++i) {
      const std::size_t at = span - p + i;
      ladder[i] = {points[at].x * weights[at], points[at].y * weights[at], weights[at]};
    }
    for (std::size_t level = 1; level <= p; ++level) {
      for (std::size_t i = p; i >= level; --i) {
        const double low = knots[span - p + i], high = knots[span + 1 + i - level];
        const double s = high > low ? (t - low) / (high - low) : 0;
        ladder[i] = {ladder[i - 1].x * (1 - s) + ladder[i].x * s, ladder[i - 1].y * (1 - s) + ladder[i].y * s,
                     ladder[i - 1].w * (1 - s) + ladder[i].w * s};
      }
    }
    return Point{ladder[p].x / ladder[p].w, ladder[p].y / ladder[p].w};
  };

  // Each stretch between knots becomes cubic pieces with the curve's own tangents at their ends.
  const int pieces = p == 1 ? 1 : 4;
  for (std::size_t span = p; span < n; ++span) {
    const double low = knots[span], high = knots[span + 1];
    if (!(high > low)) continue;
    const double step = (high - low) / pieces, tiny = step * 1e-4;
    for (int i = 0; i < pieces; ++i) {
      const double from = low + step * i, to = i + 1 == pieces ? high : from + step;
      const Point start = pointAt(from), end = pointAt(to - tiny * 1e-6);
      if (p == 1) {
        path.lineTo(end);
        continue;
      }
      const Point leaving = (pointAt(from + tiny) - start) * (1 / tiny),
                  arriving = (end - pointAt(to - tiny)) * (1 / tiny);
      path.curveTo(start + leaving * (step / 3), end - arriving * (step / 3), end);
    }
  }
}

Path geometryPath(const std::vector<GeometryRow>& rows, double width, double height) {
  Path path;
  Point first;
  const auto finishSubpath = [&] {
    if (path.isEmpty() || path.verbs().back() == PathVerb::Close || path.verbs().back() == PathVerb::MoveTo) return;
    const double near = 1e-6 * std::max({1.0, std::abs(width), std::abs(height)});
    if (distance(path.current(), first) <= near) path.close();
  };
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const GeometryRow& row = rows[i];
    const Point here{row.x, row.y}, share{row.x * width, row.y * height};
    const bool ownShape = row.tag == GeometryTag::Ellipse || row.tag == GeometryTag::InfiniteLine;
    if (continues(row.tag) && !ownShape && path.isEmpty()) {
      // A section without a start begins at the shape's own origin.
      path.moveTo({0, 0});
      first = {};
    }
    switch (row.tag) {
      case GeometryTag::Component:
        break;
      case GeometryTag::MoveTo:
      case GeometryTag::RelMoveTo:
        finishSubpath();
        first = row.tag == GeometryTag::MoveTo ? here : share;
        path.moveTo(first);
        break;
      case GeometryTag::LineTo:
        path.lineTo(here);
        break;
      case GeometryTag::RelLineTo:
        path.lineTo(share);
        break;
      case GeometryTag::ArcTo:
        arcTo(path, here, row.a);
        break;
      case GeometryTag::EllipticalArcTo:
        ellipticalArcTo(path, here, {row.a, row.b}, row.c, row.d);
        break;
      case GeometryTag::RelEllipticalArcTo:
        ellipticalArcTo(path, share, {row.a * width, row.b * height}, row.c, row.d);
        break;
      case GeometryTag::RelCubBezTo:
        path.curveTo({row.a * width, row.b * height}, {row.c * width, row.d * height}, share);
        break;
      case GeometryTag::RelQuadBezTo: {
        const Point start = path.current(), control{row.a * width, row.b * height};
        path.curveTo(start + (control - start) * (2.0 / 3), share + (control - share) * (2.0 / 3), share);
        break;
      }
      case GeometryTag::Ellipse:
        finishSubpath();
        path.addEllipse(here, {row.a, row.b}, {row.c, row.d});
        first = path.current();
        break;
      case GeometryTag::InfiniteLine: {
        // Far beyond any page; the page cuts it.
        const Point along = Point{row.a, row.b} - here;
        const double size = length(along);
        if (size > 0) {
          path.moveTo(here - along * (2000 / size));
          path.lineTo(here + along * (2000 / size));
        }
        break;
      }
      case GeometryTag::PolylineTo:
        polylineTo(path, row, width, height);
        break;
      case GeometryTag::NurbsTo:
        nurbsTo(path, row, width, height);
        break;
      case GeometryTag::SplineStart: {
        std::vector<Point> points{path.current(), here};
        std::vector<double> knots{row.b, row.a};
        for (; i + 1 < rows.size() && rows[i + 1].tag == GeometryTag::SplineKnot; ++i) {
          points.push_back({rows[i + 1].x, rows[i + 1].y});
          knots.push_back(rows[i + 1].a);
        }
        const int degree = std::clamp(int(row.d), 1, 25);
        while (knots.size() < points.size() + std::size_t(degree) + 1) knots.push_back(row.c);
        appendSpline(path, points, std::vector<double>(points.size(), 1), knots, degree);
        break;
      }
      case GeometryTag::SplineKnot:
        path.lineTo(here);
        break;
    }
  }
  finishSubpath();
  return path;
}

Path roundCorners(const Path& path, double radius) {
  if (!(radius > 0)) return path;
  Path rounded;
  for (const Path& subpath : subpathsOf(path)) {
    const auto verbs = subpath.verbs();
    const bool straight = std::none_of(verbs.begin(), verbs.end(), [](PathVerb v) { return v == PathVerb::CurveTo; });
    const bool closed = isClosed(subpath);
    std::vector<Point> corners;
    for (Point p : subpath.points())
      if (corners.empty() || distance(corners.back(), p) > 1e-9) corners.push_back(p);
    if (closed && corners.size() > 1 && distance(corners.front(), corners.back()) < 1e-6) corners.pop_back();
    if (!straight || corners.size() < 3) {
      rounded.append(subpath);
      continue;
    }
    const std::size_t n = corners.size();
    for (std::size_t i = 0; i < n; ++i) {
      const Point corner = corners[i];
      if (!closed && (i == 0 || i + 1 == n)) {
        rounded.isEmpty() || i == 0 ? rounded.moveTo(corner) : rounded.lineTo(corner);
        continue;
      }
      const Point back = corners[(i + n - 1) % n] - corner, on = corners[(i + 1) % n] - corner;
      const double backLength = length(back), onLength = length(on);
      const double cosine = std::clamp((back.x * on.x + back.y * on.y) / (backLength * onLength), -1.0, 1.0);
      const double half = std::acos(cosine) / 2;
      // Where the fillet touches the sides; never beyond their middle.
      const double cut = std::min({radius / std::max(std::tan(half), 1e-6), backLength / 2, onLength / 2});
      const Point from = corner + back * (cut / backLength), to = corner + on * (cut / onLength);
      if (closed && i == 0)
        rounded.moveTo(from);
      else
        rounded.lineTo(from);
      const double turn = pi - 2 * half;
      if (turn > 1e-6) {
        // The control points of a circular arc that turns by `turn` between two tangents of length `cut`.
        const double share = 4.0 / 3 * std::tan(turn / 4) / std::max(std::tan(turn / 2), 1e-9);
        rounded.curveTo(from + (corner - from) * share, to + (corner - to) * share, to);
      }
    }
    if (closed) rounded.close();
  }
  return rounded;
}

std::vector<GeometrySection> geometryOf(const ShapeCells& cells, double width, double height) {
  std::vector<GeometrySection> sections;
  const ColumnKeys& columns = columnKeys();
  const host::Store& store = cells.store();
  std::vector<GeometryRow> rows;
  for (host::SectionNumber section : host::sectionsOf(store, cells.sheet())) {
    if (!host::isGeometry(section)) continue;
    const auto component = host::RowKey::index(0);
    if (cells.flag({section, component, columns.GeometryNoShow})) continue;
    rows.clear();
    for (const host::RowView& view : host::rowsOf(store, cells.sheet(), section)) {
      if (view.key == component) continue;
      GeometryRow& row = rows.emplace_back();
      row.tag = GeometryTag(view.type);
      const auto number = [&](host::Column column) { return cells.number({section, view.key, column}); };
      row.x = number(columns.GeometryX);
      row.y = number(columns.GeometryY);
      if (row.tag == GeometryTag::LineTo || row.tag == GeometryTag::MoveTo || row.tag == GeometryTag::RelLineTo)
        continue;
      const host::CellKey list{section, view.key,
                               row.tag == GeometryTag::PolylineTo ? columns.GeometryA : columns.GeometryE};
      if (row.tag == GeometryTag::PolylineTo || row.tag == GeometryTag::NurbsTo) {
        row.list = cells.text(list);
        if (row.list.find('(') == std::string::npos)
          if (const host::FoundCell found = host::findCell(store, cells.sheet(), list); found.formula)
            row.list = host::formulaText(*found.formula);
      }
      if (row.tag == GeometryTag::PolylineTo) continue;
      row.a = number(columns.GeometryA);
      row.b = number(columns.GeometryB);
      row.c = number(columns.GeometryC);
      row.d = number(columns.GeometryD);
    }
    GeometrySection shown;
    shown.path = geometryPath(rows, width, height);
    if (shown.path.isEmpty()) continue;
    shown.filled = !cells.flag({section, component, columns.GeometryNoFill});
    shown.stroked = !cells.flag({section, component, columns.GeometryNoLine});
    sections.push_back(std::move(shown));
  }
  return sections;
}

}  // namespace quorvel::render
