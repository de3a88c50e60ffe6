#include "host/sheet/elliptical_arc.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quorvel::host {

std::optional<EllipticalArc> ellipticalArcThrough(double startX, double startY, double throughX, double throughY,
                                                  double endX, double endY, double angle, double ratio) {
  if (!(ratio > 1e-9)) ratio = 1;
  struct Vector {
    double x, y;
  };
  const double cosine = std::cos(angle), sine = std::sin(angle);
  const auto squeezed = [&](double x, double y) {
    return Vector{(x * cosine + y * sine) / ratio, -x * sine + y * cosine};
  };
  const Vector p = squeezed(startX, startY), q = squeezed(throughX, throughY), r = squeezed(endX, endY);
  const Vector u{q.x - p.x, q.y - p.y}, v{r.x - p.x, r.y - p.y};
  const double cross = 2 * (u.x * v.y - u.y * v.x);
  const double size = std::max({std::hypot(u.x, u.y), std::hypot(v.x, v.y), std::hypot(r.x - q.x, r.y - q.y)});
  if (!std::isfinite(cross) || size == 0 || std::abs(cross) < 1e-7 * size * size) return std::nullopt;

  const double uu = u.x * u.x + u.y * u.y, vv = v.x * v.x + v.y * v.y;
  EllipticalArc arc{angle, ratio, p.x + (v.y * uu - u.y * vv) / cross, p.y + (u.x * vv - v.x * uu) / cross};
  arc.radius = std::hypot(arc.centreX - p.x, arc.centreY - p.y);
  arc.from = std::atan2(p.y - arc.centreY, p.x - arc.centreX);
  arc.sweep = std::atan2(r.y - arc.centreY, r.x - arc.centreX) - arc.from;
  // Counterclockwise exactly when the middle point lies to the right of the chord.
  constexpr double turn = 2 * std::numbers::pi;
  if (cross > 0 && arc.sweep <= 0) arc.sweep += turn;
  if (cross < 0 && arc.sweep >= 0) arc.sweep -= turn;
  return arc;
}

}  // namespace quorvel::host
