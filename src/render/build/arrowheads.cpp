#include "render/build/arrowheads.h"

#include <algorithm>
#include <array>

namespace quorvel::render {
namespace {

/// How a piece of a head is painted: in the line's colour, hollow (paper within an outline), or as an outline only.
enum class Paint : std::uint8_t { Filled, Hollow, Outline };

struct Piece {
  Paint paint;
  enum Shape : std::uint8_t { Polygon, Polyline, Circle } shape;
  std::array<Point, 6> points;  ///< the tip is (0, 0) and the line comes from -x; circles: centre and (radius, 0)
  int count;
};

struct Head {
  std::vector<Piece> pieces;
  double back = 0;  ///< how far the line is drawn back from its end
};

Piece polygon(Paint paint, std::initializer_list<Point> points, Piece::Shape shape = Piece::Polygon) {
  Piece piece{paint, shape, {}, int(points.size())};
  std::copy(points.begin(), points.end(), piece.points.begin());
  return piece;
}
Piece line(std::initializer_list<Point> points) { return polygon(Paint::Outline, points, Piece::Polyline); }
Piece circle(Paint paint, double centre, double radius) {
  return polygon(paint, {{centre, 0}, {radius, 0}}, Piece::Circle);
}
Piece triangle(Paint paint, double size, double half, double tip = 0) {
  return polygon(paint, {{tip, 0}, {tip - size, half}, {tip - size, -half}});
}
/// A triangle whose back is cut in.
Piece barbed(Paint paint, double size, double half, double notch, double tip = 0) {
  return polygon(paint, {{tip, 0}, {tip - size, half}, {tip - notch, 0}, {tip - size, -half}});
}
Piece square(Paint paint, double front, double side) {
  return polygon(paint, {{front, side / 2}, {front, -side / 2}, {front - side, -side / 2}, {front - side, side / 2}});
}
Piece diamond(Paint paint, double front, double size, double half) {
  return polygon(paint, {{front, 0}, {front - size / 2, half}, {front - size, 0}, {front - size / 2, -half}});
}
Piece bar(double at, double half = 0.5) { return line({{at, half}, {at, -half}}); }
Piece crowFoot() { return line({{0, 0.5}, {-1, 0}, {0, -0.5}}); }

Head headOf(int number) {
  using enum Paint;
  switch (number) {
    case 1:
      return {{line({{-0.6, 0.6}, {0, 0}, {-0.6, -0.6}})}, 0};
    case 2:
      return {{triangle(Filled, 0.6, 0.6)}, 0.5};
    case 3:
      return {{line({{-0.9, 0.45}, {0, 0}, {-0.9, -0.45}})}, 0};
    case 4:
      return {{triangle(Filled, 1, 0.5)}, 0.9};
    case 5:
      return {{barbed(Filled, 1, 0.5, 0.7)}, 0.65};
    case 6:
      return {{polygon(Filled, {{0, 0}, {-1, 0.5}, {-1.15, 0.2}, {-1.2, 0}, {-1.15, -0.2}, {-1, -0.5}})}, 1};
    case 7:
      return {{line({{-0.7, 0.25}, {0, 0}, {-0.7, -0.25}})}, 0};
    case 8:
      return {{line({{-1, 0.5}, {-0.5, 0}, {-1, -0.5}}), line({{-0.7, 0.5}, {-0.2, 0}, {-0.7, -0.5}})}, 0};
    case 9:
      return {{line({{-0.35, -0.5}, {0.35, 0.5}})}, 0};
    case 10:
      return {{circle(Filled, 0, 0.4)}, 0.2};
    case 11:
      return {{square(Filled, 0.35, 0.7)}, 0.2};
    case 12:
      return {{line({{-1, 0.35}, {0, 0}, {-1, -0.35}})}, 0};
    case 13:
      return {{triangle(Filled, 1.1, 0.37)}, 1};
    case 14:
      return {{triangle(Hollow, 0.6, 0.6)}, 0.6};
    case 15:
      return {{triangle(Hollow, 1.1, 0.37)}, 1.1};
    case 16:
      return {{triangle(Hollow, 1, 0.5)}, 1};
    case 17:
      return {{barbed(Hollow, 1, 0.5, 0.7)}, 0.7};
    case 18:
      return {{polygon(Hollow, {{0, 0}, {-1, 0.5}, {-1.15, 0.2}, {-1.2, 0}, {-1.15, -0.2}, {-1, -0.5}})}, 1.2};
    case 19:
      return {{triangle(Hollow, 0.8, 0.4), triangle(Hollow, 0.8, 0.4, -0.8)}, 1.6};
    case 20:
      return {{circle(Hollow, 0, 0.4)}, 0.4};
    case 21:
      return {{square(Hollow, 0.35, 0.7)}, 0.35};
    case 22:
      return {{diamond(Hollow, 0, 1.2, 0.4)}, 1.2};
    case 23:
      return {{line({{-0.35, 0.5}, {0.35, -0.5}})}, 0};
    case 24:
      return {{bar(-0.5)}, 0};
    case 25:
      return {{bar(-0.4), bar(-0.7)}, 0};
    case 26:
      return {{bar(-0.4), circle(Hollow, -1, 0.35)}, 0};
    case 27:
      return {{crowFoot(), bar(-1.2)}, 0};
    case 28:
      return {{crowFoot()}, 0};
    case 29:
      return {{crowFoot(), circle(Hollow, -1.35, 0.35)}, 0};
    case 30:
      return {{bar(-0.4), circle(Hollow, -0.9, 0.35)}, 0};
    case 31:
      return {{crowFoot(), bar(0)}, 0};
    case 32:
      return {{crowFoot(), bar(-1), bar(-1.25)}, 0};
    case 33:
      return {{polygon(Outline, {{0, 0.5}, {-1, 0}, {0, -0.5}})}, 0};
    case 34:
      return {{circle(Hollow, -0.35, 0.35)}, 0.7};
    case 35:
      return {{circle(Hollow, -0.35, 0.35), bar(-0.9)}, 0.7};
    case 36:
      return {{circle(Hollow, -0.35, 0.35), bar(-0.9), bar(-1.15)}, 0.7};
    case 37:
      return {{diamond(Filled, 0, 1.2, 0.4)}, 0.6};
    case 38:
      return {{barbed(Filled, 1, 0.35, 0.75)}, 0.7};
    case 39:
      return {{triangle(Filled, 0.8, 0.4), triangle(Filled, 0.8, 0.4, -0.8)}, 1.4};
    case 40:
      return {{triangle(Hollow, 0.8, 0.4), triangle(Hollow, 0.8, 0.4, -0.8)}, 1.6};
    case 41:
      return {{circle(Filled, -0.4, 0.4)}, 0.4};
    case 42:
      return {{circle(Filled, 0, 0.3)}, 0.1};
    case 43:
      return {{barbed(Filled, 1.2, 0.4, 0.9)}, 0.85};
    case 44:
      return {{barbed(Filled, 0.9, 0.6, 0.5)}, 0.45};
    case 45:
      return {{triangle(Filled, 1, 0.5), bar(-1.2)}, 0.9};
    default:
      return {};
  }
}

struct End {
  Point tip, towards;  ///< the end and the point from which the line arrives
};

PathItem placed(const Piece& piece, const Matrix& map, const Stroke& stroke) {
  PathItem item;
  if (piece.shape == Piece::Circle) {
    const Point centre = piece.points[0];
    const double radius = piece.points[1].x;
    item.path.addEllipse(centre, centre + Point{radius, 0}, centre + Point{0, radius});
  } else {
    item.path.moveTo(piece.points[0]);
    for (int i = 1; i < piece.count; ++i) item.path.lineTo(piece.points[std::size_t(i)]);
    if (piece.shape == Piece::Polygon) item.path.close();
  }
  item.path.transform(map);
  if (piece.paint == Paint::Filled) item.fill = stroke.colour;
  if (piece.paint == Paint::Hollow) item.fill = Colour{0xFFFFFF, 1};
  if (piece.paint != Paint::Filled) {
    item.stroke = stroke;
    item.stroke.dashes.clear();
  }
  return item;
}

void drawHead(int number, int size, const End& end, const Stroke& stroke, std::vector<PathItem>& heads) {
  const Head head = headOf(number);
  const Point along = end.tip - end.towards;
  const double reach = length(along);
  if (reach <= 0) return;
  const double unit = arrowheadUnit(size, stroke.width);
  const Point u = along * (unit / reach);
  const Matrix map{u.x, u.y, -u.y, u.x, end.tip.x, end.tip.y};
  for (const Piece& piece : head.pieces) heads.push_back(placed(piece, map, stroke));
}

/// Draws the end of a line back towards the point before it, no further than that point.
Point drawnBack(Point tip, Point towards, double by) {
  const double reach = distance(tip, towards);
  return reach <= 0 ? tip : tip + (towards - tip) * std::min(by / reach, 0.999);
}

}  // namespace

double arrowheadUnit(int size, double lineWidth) {
  static constexpr double factors[] = {0.45, 0.65, 1, 1.35, 1.7, 2.4, 3.2};
  // Heads grow with the line, but slower: thin lines keep heads that can be seen.
  return factors[std::clamp(size, 0, 6)] * (6.8 + 2.5 * lineWidth);
}

Path withArrowheads(const Path& path, const LineStyle& style, std::vector<PathItem>& heads) {
  if (style.beginArrow == 0 && style.endArrow == 0) return path;
  Path result;
  for (const Path& subpath : subpathsOf(path)) {
    std::vector<Point> points(subpath.points().begin(), subpath.points().end());
    if (isClosed(subpath) || points.size() < 2) {
      result.append(subpath);
      continue;
    }
    // The line arrives along its last stretch that has a length.
    const auto neighbour = [&](auto first, auto last) {
      const auto other = std::find_if(first + 1, last, [&](Point p) { return distance(p, *first) > 1e-6; });
      return other == last ? *first : *other;
    };
    const End begin{points.front(), neighbour(points.begin(), points.end())};
    const End end{points.back(), neighbour(points.rbegin(), points.rend())};
    drawHead(style.beginArrow, style.beginSize, begin, style.stroke, heads);
    drawHead(style.endArrow, style.endSize, end, style.stroke, heads);
    const auto back = [&](int number, int size) {
      return headOf(number).back * arrowheadUnit(size, style.stroke.width);
    };
    if (style.beginArrow) points.front() = drawnBack(begin.tip, begin.towards, back(style.beginArrow, style.beginSize));
    if (style.endArrow) points.back() = drawnBack(end.tip, end.towards, back(style.endArrow, style.endSize));
    std::size_t at = 0;
    for (PathVerb verb : subpath.verbs()) {
      if (verb == PathVerb::MoveTo) result.moveTo(points[at++]);
      if (verb == PathVerb::LineTo) result.lineTo(points[at++]);
      if (verb == PathVerb::CurveTo) {
        result.curveTo(points[at], points[at + 1], points[at + 2]);
        at += 3;
      }
    }
  }
  return result;
}

}  // namespace quorvel::render
