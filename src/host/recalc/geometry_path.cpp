#include "host/recalc/geometry_path.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/cells/cell_table.h"
#include "host/sheet/elliptical_arc.h"
#include "host/sheet/inheritance.h"
#include "host/sheet/transform.h"

namespace quorvel::host {
namespace {

using Point = FormulaPath::Point;
using Segment = std::vector<Point>;

enum RowTag : std::uint8_t {
  MoveTo = 138,
  LineTo = 139,
  ArcTo = 140,
  Ellipse = 143,
  EllipticalArcTo = 144,
  RelCubBezTo = 236,
  RelQuadBezTo = 237,
  RelMoveTo = 238,
  RelLineTo = 239,
  RelEllipticalArcTo = 240
};

/// Lines that a curve is measured by; a quarter of a circle is then short by less than a ten thousandth.
constexpr int linesPerCurve = 64;

class PathReader {
 public:
  PathReader(const Store& store, SheetId sheet, SectionNumber section)
      : store_(store), sheet_(sheet), section_(section) {
    static const CellKey width = objectCell("Width"), height = objectCell("Height");
    width_ = cellNumber(store, sheet, width);
    height_ = cellNumber(store, sheet, height);
  }

  /// Reads the row; its segment, empty for one that only sets the place. False for a row that is not measured, whose
  /// end is taken all the same.
  bool read(const RowView& row, Segment& segment);
  const Point& place() const { return place_; }

 private:
  double number(const RowView& row, int column) const {
    return cellNumber(store_, sheet_, {section_, row.key, static_cast<Column>(column)});
  }
  Point point(const RowView& row, int column, bool relative) const {
    const Point at{number(row, column), number(row, column + 1)};
    return relative ? Point{at.x * width_, at.y * height_} : at;
  }
  void arcThrough(const Point& through, const Point& end, double angle, double ratio, Segment& segment) const;
  template <class At>
  static void sample(At at, Segment& segment) {
    for (int i = 0; i <= linesPerCurve; ++i) segment.push_back(at(double(i) / linesPerCurve));
  }

  const Store& store_;
  SheetId sheet_;
  SectionNumber section_;
  double width_ = 0, height_ = 0;
  Point place_;
};

/// The arc of an ellipse whose longer axis lies at `angle` and is `ratio` times the shorter one; a line when the three
/// points lie on one.
void PathReader::arcThrough(const Point& through, const Point& end, double angle, double ratio,
                            Segment& segment) const {
  const auto arc = ellipticalArcThrough(place_.x, place_.y, through.x, through.y, end.x, end.y, angle, ratio);
  if (!arc) {
    segment = {place_, end};
    return;
  }
  const double cosine = std::cos(arc->angle), sine = std::sin(arc->angle);
  sample(
      [&](double share) {
        const double at = arc->from + arc->sweep * share;
        const double x = arc->ratio * (arc->centreX + arc->radius * std::cos(at));
        const double y = arc->centreY + arc->radius * std::sin(at);
        return Point{x * cosine - y * sine, x * sine + y * cosine};
      },
      segment);
  segment.front() = place_;
  segment.back() = end;
}

bool PathReader::read(const RowView& row, Segment& segment) {
  const bool relative = row.type >= RelCubBezTo;
  const Point end = point(row, 0, relative);
  bool measured = true;
  switch (row.type) {
    case MoveTo:
    case RelMoveTo:
      break;
    case LineTo:
    case RelLineTo:
      segment = {place_, end};
      break;
    case ArcTo: {
      const double bow = number(row, 2), length = std::hypot(end.x - place_.x, end.y - place_.y);
      if (length == 0 || bow == 0) {
        segment = {place_, end};
      } else {
        const Point through{(place_.x + end.x) / 2 + bow * (end.y - place_.y) / length,
                            (place_.y + end.y) / 2 - bow * (end.x - place_.x) / length};
        arcThrough(through, end, 0, 1, segment);
      }
      break;
    }
    case EllipticalArcTo:
    case RelEllipticalArcTo:
      arcThrough(point(row, 2, relative), end, number(row, 4), number(row, 5), segment);
      break;
    case Ellipse: {
      const Point a = point(row, 2, false), b = point(row, 4, false);
      sample(
          [&](double share) {
            const double at = 2 * std::numbers::pi * share, c = std::cos(at), s = std::sin(at);
            return Point{end.x + (a.x - end.x) * c + (b.x - end.x) * s, end.y + (a.y - end.y) * c + (b.y - end.y) * s};
          },
          segment);
      break;
    }
    case RelCubBezTo: {
      const Point start = place_, b = point(row, 2, true), c = point(row, 4, true);
      sample(
          [&](double t) {
            const double s = 1 - t, k0 = s * s * s, k1 = 3 * s * s * t, k2 = 3 * s * t * t, k3 = t * t * t;
            return Point{k0 * start.x + k1 * b.x + k2 * c.x + k3 * end.x,
                         k0 * start.y + k1 * b.y + k2 * c.y + k3 * end.y};
          },
          segment);
      break;
    }
    case RelQuadBezTo: {
      const Point start = place_, b = point(row, 2, true);
      sample(
          [&](double t) {
            const double s = 1 - t;
            return Point{s * s * start.x + 2 * s * t * b.x + t * t * end.x,
                         s * s * start.y + 2 * s * t * b.y + t * t * end.y};
          },
          segment);
      break;
    }
    default:
      measured = false;
  }
  place_ = end;
  return measured;
}

}  // namespace

Maybe<FormulaPath> pathOf(const Store& store, SheetId sheet, SectionNumber section, bool& exists) {
  exists = isGeometry(section) && rowExists(store, sheet, section, RowKey::index(0), false);
  FormulaPath path;
  PathReader reader(store, sheet, section);
  bool moved = false;
  for (const RowView& row : rowsOf(store, sheet, section)) {
    if (row.key == RowKey::index(0)) continue;
    exists = true;
    Segment segment;
    if (!reader.read(row, segment)) return {};
    if (!segment.empty()) {
      path.segments.push_back(std::move(segment));
      moved = true;
    } else if (moved) {
      break;
    }
  }
  if (!exists) return {};
  return path;
}

Maybe<std::vector<double>> drawnBox(const Store& store, SheetId shape) {
  std::vector<double> box;
  const auto include = [&](double x, double y) {
    if (box.empty()) box = {x, y, x, y};
    box = {std::min(box[0], x), std::min(box[1], y), std::max(box[2], x), std::max(box[3], y)};
  };
  const Sheet* root = store.sheet(shape);
  if (!root) return {};
  const Matrix fromPage = toPageMatrix(store, root->parent).inverse();
  for (const SheetId each : store.subtree(shape)) {
    const Matrix matrix = fromPage.after(toPageMatrix(store, each));
    for (const SectionNumber section : sectionsOf(store, each)) {
      if (!isGeometry(section)) continue;
      PathReader reader(store, each, section);
      for (const RowView& row : rowsOf(store, each, section)) {
        if (row.key == RowKey::index(0)) continue;
        Segment segment;
        reader.read(row, segment);
        segment.push_back(row.type == Ellipse && !segment.empty() ? segment.back() : reader.place());
        for (const Point& point : segment) {
          const auto at = matrix.apply(point.x, point.y);
          include(at.x, at.y);
        }
      }
    }
  }
  if (box.empty()) return {};
  return box;
}

}  // namespace quorvel::host
