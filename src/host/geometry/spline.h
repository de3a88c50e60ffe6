// B-splines as cubic curves.
#pragma once

#include <vector>

#include "host/geometry/path.h"

namespace quorvel::host {

/// Appended from the path's current point. `points` include the first one, `knots` must count points + degree + 1 in
/// rising order; anything else gives straight lines through the points.
void appendSpline(Path& path, const std::vector<Point>& points, const std::vector<double>& weights,
                  const std::vector<double>& knots, int degree);

}  // namespace quorvel::host
