// The ellipse that an arc row of a Geometry section defines by three points, an angle and a ratio of axes.
#pragma once

#include <optional>

#include "host/geometry/point.h"

namespace quorvel::host {

/// A part of an ellipse, as the part of a circle that it becomes once it is turned back by `angle` and squeezed by
/// `ratio` along the first axis. Angles in radians, counterclockwise; centre and radius are those of the circle.
struct EllipticalArc {
  double angle = 0, ratio = 1;
  Point centre;
  double radius = 0;
  double from = 0, sweep = 0;
};

/// The longer axis lies at `angle` and is `ratio` times the shorter one; a ratio that is not positive counts as 1.
/// None when the three points lie on one line.
std::optional<EllipticalArc> ellipticalArc(Point start, Point through, Point end, double angle, double ratio);

}  // namespace quorvel::host
