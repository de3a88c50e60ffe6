#include "render/build/shared_stems.h"

#include <algorithm>

namespace quorvel::render {
namespace {

/// Points; ends that are glued to one place lie as near to each other as this.
constexpr double fine = 1e-3;

/// Of one straight-lined subpath that can be cut without harm; none for another.
std::vector<Point> cornersOf(const Path& line) {
  const auto verbs = line.verbs();
  const bool isStraight =
      verbs.size() >= 2 && verbs[0] == PathVerb::MoveTo &&
      std::all_of(verbs.begin() + 1, verbs.end(), [](PathVerb verb) { return verb == PathVerb::LineTo; });
  if (!isStraight) return {};
  return {line.points().begin(), line.points().end()};
}

}  // namespace

SharedStems::Key SharedStems::keyOf(Point from, Point direction, const Stroke& stroke) {
  const auto rounded = [](double number) { return std::llround(number / fine); };
  return {rounded(from.x),      rounded(from.y),   rounded(direction.x),
          rounded(direction.y), stroke.colour.rgb, rounded(stroke.width)};
}

void SharedStems::cutFront(std::vector<Point>& corners, const Stroke& stroke) const {
  while (corners.size() >= 2) {
    const double size = distance(corners[0], corners[1]);
    if (size > fine) {
      const Point direction = (corners[1] - corners[0]) * (1 / size);
      const auto painted = lengths_.find(keyOf(corners[0], direction, stroke));
      if (painted == lengths_.end()) return;
      if (painted->second < size - fine) {
        corners[0] = corners[0] + direction * painted->second;
        return;
      }
    }
    corners.erase(corners.begin());
  }
}

void SharedStems::remember(const std::vector<Point>& corners, const Stroke& stroke) {
  const auto add = [&](Point from, Point to) {
    const double size = distance(from, to);
    if (!(size > fine)) return;
    double& longest = lengths_[keyOf(from, (to - from) * (1 / size), stroke)];
    longest = std::max(longest, size);
  };
  for (std::size_t i = 1; i < corners.size(); ++i) {
    add(corners[i - 1], corners[i]);
    add(corners[i], corners[i - 1]);
  }
}

Path SharedStems::withoutPainted(const Path& line, const Stroke& stroke) {
  const bool isPlain = stroke.dashes.empty() && !stroke.gradient && stroke.colour.opacity >= 1;
  std::vector<Point> corners = isPlain ? cornersOf(line) : std::vector<Point>();
  if (corners.empty() || boundsOf(line).width() > 1e6 || boundsOf(line).height() > 1e6) return line;
  const std::vector<Point> whole = corners;
  cutFront(corners, stroke);
  std::reverse(corners.begin(), corners.end());
  cutFront(corners, stroke);
  std::reverse(corners.begin(), corners.end());
  remember(whole, stroke);
  if (corners.size() == whole.size() && corners.front() == whole.front() && corners.back() == whole.back()) return line;
  Path rest;
  if (corners.size() < 2) return rest;
  for (const Point corner : corners) rest.lineTo(corner);
  return rest;
}

}  // namespace quorvel::render
