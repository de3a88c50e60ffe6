#include "host/geometry/elliptical_arc.h"

#include <algorithm>
#include <numbers>

namespace quorvel::host {

std::optional<EllipticalArc> ellipticalArc(Point start, Point through, Point end, double angle, double ratio) {
  if (!(ratio > 1e-9)) ratio = 1;
  const double cosine = std::cos(angle), sine = std::sin(angle);
  const auto squeezed = [&](Point at) {
    return Point{(at.x * cosine + at.y * sine) / ratio, -at.x * sine + at.y * cosine};
  };
  const Point p = squeezed(start), q = squeezed(through), r = squeezed(end), u = q - p, v = r - p;
  const double cross = 2 * (u.x * v.y - u.y * v.x);
  const double size = std::max({length(u), length(v), length(r - q)});
  if (!std::isfinite(cross) || size == 0 || std::abs(cross) < 1e-7 * size * size) return std::nullopt;

  const double uu = u.x * u.x + u.y * u.y, vv = v.x * v.x + v.y * v.y;
  EllipticalArc arc{angle, ratio, {p.x + (v.y * uu - u.y * vv) / cross, p.y + (u.x * vv - v.x * uu) / cross}};
  arc.radius = distance(arc.centre, p);
  arc.from = std::atan2(p.y - arc.centre.y, p.x - arc.centre.x);
  arc.sweep = std::atan2(r.y - arc.centre.y, r.x - arc.centre.x) - arc.from;
  // Counterclockwise exactly when the middle point lies to the right of the chord.
  constexpr double turn = 2 * std::numbers::pi;
  if (cross > 0 && arc.sweep <= 0) arc.sweep += turn;
  if (cross < 0 && arc.sweep >= 0) arc.sweep -= turn;
  return arc;
}

}  // namespace quorvel::host
