// The ellipse that an arc row of a geometry names by three points, an angle and a ratio of axes.
#pragma once

#include <optional>

namespace quorvel::host {

/// A part of an ellipse, as the part of a circle that it becomes once it is turned back by `angle` and squeezed by
/// `ratio` along the first axis. Angles in radians, counterclockwise; centre and radius are those of the circle.
struct EllipticalArc {
  double angle = 0, ratio = 1;
  double centreX = 0, centreY = 0, radius = 0;
  double from = 0, sweep = 0;
};

/// The arc from the first point through the second to the third; its longer axis lies at `angle` and is `ratio` times
/// the shorter one. None when the three points lie on one line.
std::optional<EllipticalArc> ellipticalArcThrough(double startX, double startY, double throughX, double throughY,
                                                  double endX, double endY, double angle, double ratio);

}  // namespace quorvel::host
