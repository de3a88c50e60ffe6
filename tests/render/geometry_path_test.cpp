#include "render/build/geometry_path.h"

#include <gtest/gtest.h>

#include "render/drawing.h"

namespace quorvel::render {
namespace {

using enum GeometryTag;

TEST(GeometryPath, RowsBecomeLinesAndCurves) {
  struct Case {
    const char* what;
    std::vector<GeometryRow> rows;
    const char* path;
  };
  const double s = std::sqrt(0.5);
  const Case cases[] = {
      {"an outline that meets its start is closed",
       {{MoveTo}, {LineTo, 4}, {LineTo, 4, 2}, {LineTo, 0, 0}},
       "M0 0L4 0L4 2L0 0Z"},
      {"shares of width and height", {{RelMoveTo, 0.5, 0}, {RelLineTo, 1, 0.5}}, "M2 0L4 1"},
      {"no start row: from the origin", {{LineTo, 1, 1}}, "M0 0L1 1"},
      {"an arc bows to the right of its direction",
       {{MoveTo}, {ArcTo, 2, 0, 1}},
       "M0 0C0 -0.552 0.448 -1 1 -1C1.552 -1 2 -0.552 2 0"},
      {"a flat arc is a line", {{MoveTo}, {ArcTo, 2, 0, 0}}, "M0 0L2 0"},
      {"quarter of a circle", {{MoveTo, 1, 0}, {EllipticalArcTo, 0, 1, s, s, 0, 1}}, "M1 0C1 0.552 0.552 1 0 1"},
      {"the other way round", {{MoveTo, 0, 1}, {EllipticalArcTo, 1, 0, s, s, 0, 1}}, "M0 1C0.552 1 1 0.552 1 0"},
      {"quarter of an ellipse", {{MoveTo, 2, 0}, {EllipticalArcTo, 0, 1, 2 * s, s, 0, 2}}, "M2 0C2 0.552 1.105 1 0 1"},
      {"its axis turned upright",
       {{MoveTo, 1, 0}, {EllipticalArcTo, 0, 2, s, 2 * s, 1.5707963267948966, 2}},
       "M1 0C1 1.105 0.552 2 0 2"},
      {"three points on a line", {{MoveTo}, {EllipticalArcTo, 2, 2, 1, 1, 0, 1}}, "M0 0L2 2"},
      {"an arc in shares", {{MoveTo, 4, 0}, {RelEllipticalArcTo, 0, 1, s, s, 0, 2}}, "M4 0C4 1.105 2.209 2 0 2"},
      {"Bezier rows are in shares",
       {{MoveTo}, {RelCubBezTo, 1, 1, 0.25, 0, 0.5, 1}, {RelQuadBezTo, 0, 1, 0.5, 1}},
       "M0 0C1 0 2 2 4 2C2.667 2 1.333 2 0 2"},
      {"an ellipse is whole",
       {{Ellipse, 1, 1, 2, 1, 1, 1.5}},
       "M2 1C2 1.276 1.552 1.5 1 1.5C0.448 1.5 0 1.276 0 1C0 0.724 0.448 0.5 1 0.5C1.552 0.5 2 0.724 2 1Z"},
      {"a polyline in shares and absolute",
       {{MoveTo}, {PolylineTo, 4, 0, 0, 0, 0, 0, "POLYLINE(0,1, 0.5,1, 1,0.5)"}},
       "M0 0L2 1L4 0.5L4 0"},
      {"a polyline without its list", {{MoveTo}, {PolylineTo, 4, 0, 0, 0, 0, 0, ""}}, "M0 0L4 0"},
      {"a curve of degree 2 without inner knots",
       {{MoveTo}, {NurbsTo, 0, 2, 0, 1, 0, 1, "NURBS(1,2,0,0,0.5,1,0,1)"}},
       "M0 0C0.333 0.333 0.583 0.625 0.75 0.875C0.917 1.125 1 1.333 1 1.5C1 1.667 0.917 1.792 0.75 1.875"
       "C0.583 1.958 0.333 2 0 2"},
      {"a curve of degree 1", {{MoveTo}, {NurbsTo, 4, 0, 1, 1, 0, 1, "NURBS(2,1,0,0,0.5,0.5,0,1)"}}, "M0 0L2 1L4 0"},
      {"knots in disorder give straight lines",
       {{MoveTo}, {NurbsTo, 4, 0, -1, 1, 9, 1, "NURBS(2,3,0,0,0.5,0.5,0,1)"}},
       "M0 0L2 1L4 0"},
      {"a line without ends reaches over the page", {{InfiniteLine, 0, 1, 1, 1}}, "M-2000 1L2000 1"},
      {"two outlines in one section",
       {{MoveTo}, {LineTo, 1, 0}, {LineTo, 0, 1}, {LineTo, 0, 0}, {MoveTo, 2, 2}, {LineTo, 3, 3}},
       "M0 0L1 0L0 1L0 0ZM2 2L3 3"},
  };
  for (const Case& each : cases) EXPECT_EQ(textOf(geometryPath(each.rows, 4, 2)), each.path) << each.what;
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
  const Path nurbs = geometryPath({{MoveTo}, {NurbsTo, 4, 0, 0, 1, 0, 1, "NURBS(1,3,1,1,0,4,0,1,4,4,0,1)"}}, 1, 1);
  const Path spline =
      geometryPath({{MoveTo}, {SplineStart, 0, 4, 0, 0, 1, 3}, {SplineKnot, 4, 4, 0}, {SplineKnot, 4, 0, 0}}, 1, 1);
  for (const Path& path : {nurbs, spline}) {
    ASSERT_EQ(path.points().size(), 13u) << textOf(path);
    for (std::size_t piece = 0; piece < 4; ++piece)
      EXPECT_NEAR(distance(middleOf(path, piece), bezier(0.125 + 0.25 * double(piece))), 0, 1e-3) << textOf(path);
    EXPECT_NEAR(distance(path.current(), {4, 0}), 0, 1e-5);
  }
}

TEST(GeometryPath, RoundedCornersTouchTheirSides) {
  Path square;
  square.addRectangle(0, 0, 4, 2);
  EXPECT_EQ(textOf(roundCorners(square, 0.5)),
            "M0 0.5C0 0.224 0.224 0 0.5 0L3.5 0C3.776 0 4 0.224 4 0.5L4 1.5C4 1.776 3.776 2 3.5 2L0.5 2C0.224 2 0 "
            "1.776 0 1.5Z");
  // A radius larger than the sides allow ends at their middle.
  EXPECT_EQ(textOf(roundCorners(square, 9)).substr(0, 5), "M0 1C");
  Path corner;
  corner.moveTo({0, 0});
  corner.lineTo({2, 0});
  corner.lineTo({2, 2});
  EXPECT_EQ(textOf(roundCorners(corner, 1)), "M0 0L1 0C1.552 0 2 0.448 2 1L2 2") << "open ends stay where they are";
  Path straight;
  straight.moveTo({0, 0});
  straight.lineTo({1, 0});
  straight.lineTo({2, 0});
  EXPECT_EQ(roundCorners(straight, 1).points().back(), (Point{2, 0}));
}

}  // namespace
}  // namespace quorvel::render
