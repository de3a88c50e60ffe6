#include "host/geometry/geometry_path.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "host/cells/cell_name.h"
#include "host/cells/cell_table.h"
#include "host/recalc/measured_path.h"
#include "host/sheet/geometry_rows.h"

namespace quorvel::host {
namespace {

using enum RowTag;

/// "M0 0L1 0Z", at most three decimals.
std::string textOf(const Path& path) {
  std::string text;
  std::size_t at = 0;
  for (const PathVerb verb : path.verbs()) {
    text += verb == PathVerb::MoveTo ? 'M' : verb == PathVerb::LineTo ? 'L' : verb == PathVerb::CurveTo ? 'C' : 'Z';
    const int count = verb == PathVerb::Close ? 0 : verb == PathVerb::CurveTo ? 3 : 1;
    for (int i = 0; i < count; ++i, ++at) {
      char numbers[64];
      const auto rounded = [](double number) { return std::round(number * 1000) / 1000 + 0.0; };
      std::snprintf(numbers, sizeof numbers, "%s%g %g", i > 0 ? " " : "", rounded(path.points()[at].x),
                    rounded(path.points()[at].y));
      text += numbers;
    }
  }
  return text;
}

/// A shape of 4 by 2 inches with the rows in its first Geometry section.
struct Drawing {
  Store store;
  SheetId shape;

  explicit Drawing(const std::vector<GeometryRow>& rows) {
    const PageId page = store.addPage(store.addDocument("Drawing1"), "Page-1");
    shape = store.addShape(page, {}, SheetKind::Shape);
    Sheet& sheet = *store.sheet(shape);
    sheet.local(objectCell("Width")).value = Value::number(4);
    sheet.local(objectCell("Height")).value = Value::number(2);
    Section& section = sheet.section(SectionNumber::Geometry);
    section.rows.emplace_back().key = RowKey::index(0);
    section.rows.back().type = numberOf(Component);
    for (const GeometryRow& given : rows) {
      Row& row = section.rows.emplace_back();
      row.key = RowKey::index(static_cast<std::uint32_t>(section.rows.size() - 1));
      row.type = numberOf(given.tag);
      const auto put = [&](std::string_view column, Value value) {
        row.at(columnOf(SectionNumber::Geometry, column).or_(0)).value = std::move(value);
      };
      put("X", Value::number(given.x));
      put("Y", Value::number(given.y));
      put("A", given.tag == PolylineTo ? Value::text(given.list) : Value::number(given.a));
      put("B", Value::number(given.b));
      put("C", Value::number(given.c));
      put("D", Value::number(given.d));
      if (given.tag == NurbsTo) put("E", Value::text(given.list));
    }
  }
};

double lengthOf(const FormulaPath& path) {
  double length = 0;
  for (const std::vector<Point>& segment : path.segments)
    for (std::size_t i = 1; i < segment.size(); ++i) length += distance(segment[i - 1], segment[i]);
  return length;
}

TEST(GeometryPath, RowsAreDrawnAndMeasuredAlike) {
  struct Case {
    const char* what;
    std::vector<GeometryRow> rows;
    const char* path;
    std::size_t segments;
    double length;  ///< negative: the section has none
  };
  const double s = std::sqrt(0.5);
  const Case cases[] = {
      {"an outline that meets its start is closed",
       {{MoveTo}, {LineTo, 4}, {LineTo, 4, 2}, {LineTo, 0, 0}},
       "M0 0L4 0L4 2L0 0Z",
       3,
       10.47214},
      {"shares of width and height", {{RelMoveTo, 0.5, 0}, {RelLineTo, 1, 0.5}}, "M2 0L4 1", 1, 2.23607},
      {"no start row: from the origin", {{LineTo, 1, 1}}, "M0 0L1 1", 1, 1.41421},
      {"an arc bows to the right of its direction",
       {{MoveTo}, {ArcTo, 2, 0, 1}},
       "M0 0C0 -0.552 0.448 -1 1 -1C1.552 -1 2 -0.552 2 0",
       1,
       3.14159},
      {"a flat arc is a line", {{MoveTo}, {ArcTo, 2, 0, 0}}, "M0 0L2 0", 1, 2},
      {"quarter of a circle",
       {{MoveTo, 1, 0}, {EllipticalArcTo, 0, 1, s, s, 0, 1}},
       "M1 0C1 0.552 0.552 1 0 1",
       1,
       1.57080},
      {"the other way round",
       {{MoveTo, 0, 1}, {EllipticalArcTo, 1, 0, s, s, 0, 1}},
       "M0 1C0.552 1 1 0.552 1 0",
       1,
       1.57080},
      {"quarter of an ellipse",
       {{MoveTo, 2, 0}, {EllipticalArcTo, 0, 1, 2 * s, s, 0, 2}},
       "M2 0C2 0.552 1.105 1 0 1",
       1,
       2.42211},
      {"its axis turned upright",
       {{MoveTo, 1, 0}, {EllipticalArcTo, 0, 2, s, 2 * s, 1.5707963267948966, 2}},
       "M1 0C1 1.105 0.552 2 0 2",
       1,
       2.42211},
      {"three points on a line", {{MoveTo}, {EllipticalArcTo, 2, 2, 1, 1, 0, 1}}, "M0 0L2 2", 1, 2.82843},
      {"an arc in shares",
       {{MoveTo, 4, 0}, {RelEllipticalArcTo, 0, 1, s, s, 0, 2}},
       "M4 0C4 1.105 2.209 2 0 2",
       1,
       4.84422},
      {"Bezier rows are in shares",
       {{MoveTo}, {RelCubBezTo, 1, 1, 0.25, 0, 0.5, 1}, {RelQuadBezTo, 0, 1, 0.5, 1}},
       "M0 0C1 0 2 2 4 2C2.667 2 1.333 2 0 2",
       2,
       8.57218},
      {"an ellipse is whole",
       {{Ellipse, 1, 1, 2, 1, 1, 1.5}},
       "M2 1C2 1.276 1.552 1.5 1 1.5C0.448 1.5 0 1.276 0 1C0 0.724 0.448 0.5 1 0.5C1.552 0.5 2 0.724 2 1Z",
       1,
       4.84422},
      {"a polyline in shares and absolute",
       {{MoveTo}, {PolylineTo, 4, 0, 0, 0, 0, 0, "POLYLINE(0,1, 0.5,1, 1,0.5)"}},
       "M0 0L2 1L4 0.5L4 0",
       3,
       4.79762},
      {"a polyline without its list", {{MoveTo}, {PolylineTo, 4, 0, 0, 0, 0, 0, ""}}, "M0 0L4 0", 1, 4},
      {"a curve of degree 2 without inner knots",
       {{MoveTo}, {NurbsTo, 0, 2, 0, 1, 0, 1, "NURBS(1,2,0,0,0.5,1,0,1)"}},
       "M0 0C0.333 0.333 0.583 0.625 0.75 0.875C0.917 1.125 1 1.333 1 1.5C1 1.667 0.917 1.792 0.75 1.875"
       "C0.583 1.958 0.333 2 0 2",
       1,
       3.08060},
      {"a curve of degree 1",
       {{MoveTo}, {NurbsTo, 4, 0, 1, 1, 0, 1, "NURBS(2,1,0,0,0.5,0.5,0,1)"}},
       "M0 0L2 1L4 0",
       1,
       4.47214},
      {"knots in disorder give straight lines",
       {{MoveTo}, {NurbsTo, 4, 0, -1, 1, 9, 1, "NURBS(2,3,0,0,0.5,0.5,0,1)"}},
       "M0 0L2 1L4 0",
       1,
       4.47214},
      {"a line without ends reaches over the page", {{InfiniteLine, 0, 1, 1, 1}}, "M-2000 1L2000 1", 0, -1},
      {"two outlines in one section",
       {{MoveTo}, {LineTo, 1, 0}, {LineTo, 0, 1}, {LineTo, 0, 0}, {MoveTo, 2, 2}, {LineTo, 3, 3}},
       "M0 0L1 0L0 1L0 0ZM2 2L3 3",
       4,
       4.82843},
      {"a gap counts for nothing",
       {{RelMoveTo}, {RelLineTo, 1, 0}, {RelMoveTo, 0, 1}, {RelLineTo, 0.5, 1}},
       "M0 0L4 0M0 2L2 2",
       2,
       6},
      {"a spline of degree 1 is one segment",
       {{MoveTo}, {SplineStart, 2, 1, 1, 0, 3, 1}, {SplineKnot, 4, 0, 2}},
       "M0 0L2 1L4 0",
       1,
       4.47214},
      {"a knot without a start", {{MoveTo}, {SplineKnot, 3, 4}}, "M0 0L3 4", 1, 5},
      {"a row of an unknown type", {{MoveTo}, {RowTag(142), 1, 1}, {LineTo, 2, 0}}, "M0 0L2 0", 0, -1},
  };
  for (const Case& each : cases) {
    const Drawing drawing(each.rows);
    EXPECT_EQ(textOf(geometryPath(drawing.store, drawing.shape, SectionNumber::Geometry).path), each.path) << each.what;
    bool exists = false;
    const Maybe<FormulaPath> measured = measuredPath(drawing.store, drawing.shape, SectionNumber::Geometry, exists);
    EXPECT_TRUE(exists) << each.what;
    ASSERT_EQ(bool(measured), each.length >= 0) << each.what;
    if (!measured) continue;
    EXPECT_EQ(measured->segments.size(), each.segments) << each.what;
    EXPECT_NEAR(lengthOf(*measured), each.length, 2e-4) << each.what;
  }
}

TEST(GeometryPath, TheBoxHoldsCurvesAndNoFarEndsOfInfiniteLines) {
  struct Case {
    const char* what;
    std::vector<GeometryRow> rows;
    std::vector<double> box;
  };
  const Case cases[] = {
      {"half a circle", {{MoveTo}, {ArcTo, 2, 0, 1}}, {0, -1, 2, 0}},
      {"a spline", {{MoveTo}, {NurbsTo, 4, 0, 0, 1, 0, 1, "NURBS(1,3,1,1,0,4,0,1,4,4,0,1)"}}, {0, 0, 4, 3}},
      {"an infinite line", {{InfiniteLine, 1, 1, 2, 1}}, {1, 1, 1, 1}},
  };
  for (const Case& each : cases) {
    const Drawing drawing(each.rows);
    const Maybe<std::vector<double>> box = drawnBox(drawing.store, drawing.shape);
    ASSERT_TRUE(box) << each.what;
    for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR((*box)[i], each.box[i], 1e-3) << each.what << i;
  }
}

/// The point of a cubic piece at its middle.
Point middleOf(const Path& path, std::size_t piece) {
  const auto p = path.points().subspan(piece * 3, 4);
  return p[0] * 0.125 + p[1] * 0.375 + p[2] * 0.375 + p[3] * 0.125;
}

TEST(GeometryPath, SplinesFollowTheirCurve) {
  // With these knots the spline is the one cubic curve with the same control points: P(1/8) of (0,0) (0,4) (4,4) (4,0).
  const auto bezier = [](double t) {
    const double u = 1 - t;
    return Point{3 * u * t * t * 4 + t * t * t * 4, 3 * u * u * t * 4 + 3 * u * t * t * 4};
  };
  const Path nurbs = geometryPath({{MoveTo}, {NurbsTo, 4, 0, 0, 1, 0, 1, "NURBS(1,3,1,1,0,4,0,1,4,4,0,1)"}}, 1, 1).path;
  const Path spline =
      geometryPath({{MoveTo}, {SplineStart, 0, 4, 0, 0, 1, 3}, {SplineKnot, 4, 4, 0}, {SplineKnot, 4, 0, 0}}, 1, 1)
          .path;
  for (const Path& path : {nurbs, spline}) {
    ASSERT_EQ(path.points().size(), 13u) << textOf(path);
    for (std::size_t piece = 0; piece < 4; ++piece)
      EXPECT_NEAR(distance(middleOf(path, piece), bezier(0.125 + 0.25 * double(piece))), 0, 1e-3) << textOf(path);
    EXPECT_NEAR(distance(path.current(), {4, 0}), 0, 1e-5);
  }
}

}  // namespace
}  // namespace quorvel::host
