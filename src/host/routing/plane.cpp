#include "host/routing/plane.h"

#include <cmath>

namespace quorvel::host {
namespace {

constexpr double epsilon = 1e-6;

/// The part of a..b that lies inside the box, as shares of the way; false when none does.
bool clip(const Point& a, const Point& b, const Box& box, double& from, double& to) {
  from = 0;
  to = 1;
  const auto narrow = [&](double start, double step, double low, double high) {
    if (step == 0) return start > low && start < high;
    double enter = (low - start) / step, leave = (high - start) / step;
    if (enter > leave) std::swap(enter, leave);
    from = std::max(from, enter);
    to = std::min(to, leave);
    return from < to;
  };
  return narrow(a.x, b.x - a.x, box.left, box.right) && narrow(a.y, b.y - a.y, box.bottom, box.top);
}

}  // namespace

Box boundsOf(const Polyline& line) {
  if (line.empty()) return {};
  Box box{line.front().x, line.front().y, line.front().x, line.front().y};
  for (const Point& spot : line) box.include(spot);
  return box;
}

double lengthOf(const Polyline& line) {
  double length = 0;
  for (std::size_t i = 1; i < line.size(); ++i)
    length += std::hypot(line[i].x - line[i - 1].x, line[i].y - line[i - 1].y);
  return length;
}

Point midpointOf(const Polyline& line) {
  if (line.empty()) return {};
  double left = lengthOf(line) / 2;
  for (std::size_t i = 1; i < line.size(); ++i) {
    const double step = std::hypot(line[i].x - line[i - 1].x, line[i].y - line[i - 1].y);
    if (step > 0 && left <= step) {
      const double share = left / step;
      return {std::lerp(line[i - 1].x, line[i].x, share), std::lerp(line[i - 1].y, line[i].y, share)};
    }
    left -= step;
  }
  return line.back();
}

bool crosses(const Polyline& line, const Box& box) {
  const Box inside = box.grown(-epsilon, -epsilon);
  if (inside.width() <= 0 || inside.height() <= 0) return false;
  for (std::size_t i = 1; i < line.size(); ++i) {
    double from = 0, to = 0;
    if (clip(line[i - 1], line[i], inside, from, to)) return true;
  }
  return false;
}

Point leavingPoint(const Box& box, const Point& from, const Point& outside) {
  double enter = 0, leave = 0;
  if (!clip(from, outside, box, enter, leave)) return from;
  return {std::lerp(from.x, outside.x, leave), std::lerp(from.y, outside.y, leave)};
}

Point leavingPoint(const Box& box, const Point& from, Side side) {
  if (!box.grown(epsilon, epsilon).holds(from)) return from;
  switch (side) {
    case Side::Right:
      return {box.right, from.y};
    case Side::Top:
      return {from.x, box.top};
    case Side::Left:
      return {box.left, from.y};
    case Side::Bottom:
      return {from.x, box.bottom};
  }
  return from;
}

Point middleOf(const Box& box, Side side) { return leavingPoint(box, box.middle(), side); }

Side walkTo(const Box& own, const Box& other, bool upright) {
  const Side sideways = other.middle().x >= own.middle().x ? Side::Right : Side::Left;
  const Side vertical = other.middle().y >= own.middle().y ? Side::Top : Side::Bottom;
  const bool besides = own.left < other.right && other.left < own.right;
  const bool level = own.bottom < other.top && other.bottom < own.top;
  if (besides != level) return besides ? vertical : sideways;
  return upright ? vertical : sideways;
}

}  // namespace quorvel::host
