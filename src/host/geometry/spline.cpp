#include "host/geometry/spline.h"

#include <algorithm>

namespace quorvel::host {

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

}  // namespace quorvel::host
