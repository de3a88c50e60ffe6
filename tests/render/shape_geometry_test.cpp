#include "render/build/shape_geometry.h"

#include <gtest/gtest.h>

#include "render/drawing.h"

namespace quorvel::render {
namespace {

TEST(ShapeGeometry, RoundedCornersTouchTheirSides) {
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
