// Functions that measure the paths of Geometry sections and the box around a shape.
#include <algorithm>
#include <cmath>
#include <limits>

#include "host/formula/functions.h"

namespace quorvel::host {
namespace {

using Segment = std::vector<Point>;

/// The short lines of a path or of one of its segments, with their lengths.
struct Track {
  std::vector<Point> from, to;
  std::vector<double> lengths;
  std::vector<std::size_t> segments;  ///< of which segment, 0-based
  double length = 0;
};

/// The path of the first argument, or the 1-based segment of it that the argument names; false when the call failed.
bool track(Call& call, int segmentArgument, Track& result) {
  const Reference* section = call.reference(0);
  if (!section) {
    call.fail(ErrorCode::Reference);
    return false;
  }
  bool exists = false;
  const Maybe<FormulaPath> path = call.context().path(*section, exists);
  if (!exists) {
    call.fail(ErrorCode::Reference);
    return false;
  }
  if (!path) {
    call.unknown();
    return false;
  }
  const int wanted = segmentArgument >= 0 && call.given(segmentArgument) ? call.whole(segmentArgument) : 0;
  const bool one = segmentArgument >= 0 && call.given(segmentArgument);
  if (path->segments.empty() || (one && (wanted < 1 || wanted > static_cast<int>(path->segments.size())))) {
    call.fail(ErrorCode::Reference);
    return false;
  }
  for (std::size_t i = 0; i < path->segments.size(); ++i) {
    if (one && i + 1 != static_cast<std::size_t>(wanted)) continue;
    const Segment& segment = path->segments[i];
    for (std::size_t j = 1; j < segment.size(); ++j) {
      result.from.push_back(segment[j - 1]);
      result.to.push_back(segment[j]);
      result.lengths.push_back(std::hypot(segment[j].x - segment[j - 1].x, segment[j].y - segment[j - 1].y));
      result.segments.push_back(i);
      result.length += result.lengths.back();
    }
  }
  return true;
}

struct Place {
  std::size_t line = 0;
  double share = 0;  ///< of the line
};

/// The travelled share of the whole track, 0 to 1.
Place placeAt(const Track& track, double travel) {
  double rest = std::clamp(travel, 0.0, 1.0) * track.length;
  for (std::size_t i = 0; i < track.lengths.size(); ++i) {
    if (rest <= track.lengths[i] && track.lengths[i] > 0) return {i, rest / track.lengths[i]};
    rest -= track.lengths[i];
  }
  std::size_t last = track.lengths.size() - 1;
  while (last > 0 && track.lengths[last] == 0) --last;
  return {last, 1};
}

Point direction(const Track& track, std::size_t line) {
  const double length = track.lengths[line];
  if (length == 0) return {1, 0};
  return {(track.to[line].x - track.from[line].x) / length, (track.to[line].y - track.from[line].y) / length};
}

/// Checks the second argument, a share between 0 and 1.
double travel(Call& call) {
  const double share = call.number(1);
  if (share < 0 || share > 1) call.fail(ErrorCode::Value);
  return share;
}

Value pathLength(Call& call) {
  Track path;
  if (!track(call, 1, path)) return {};
  return Value::number(path.length, Unit::Drawing);
}

Value pointAlong(Call& call) {
  Track path;
  const double share = travel(call), offset = call.number(2);
  if (!track(call, 3, path)) return {};
  const Place place = placeAt(path, share);
  const Point ahead = direction(path, place.line), &a = path.from[place.line], &b = path.to[place.line];
  // To the left of the direction of travel.
  return Value::point(std::lerp(a.x, b.x, place.share) - offset * ahead.y,
                      std::lerp(a.y, b.y, place.share) + offset * ahead.x);
}

Value angleAlong(Call& call) {
  Track path;
  const double share = travel(call);
  if (!track(call, 2, path)) return {};
  const Point ahead = direction(path, placeAt(path, share).line);
  return Value::number(std::atan2(ahead.y, ahead.x), Unit::Angle);
}

struct Nearest {
  double distance = std::numeric_limits<double>::max(), share = 0;
  bool left = true;
};

Nearest nearestOn(const Track& path, const Point& at) {
  Nearest best;
  double travelled = 0;
  for (std::size_t i = 0; i < path.lengths.size(); ++i) {
    const Point &a = path.from[i], &b = path.to[i];
    const double square = path.lengths[i] * path.lengths[i];
    const double along = square == 0 ? 0 : ((at.x - a.x) * (b.x - a.x) + (at.y - a.y) * (b.y - a.y)) / square;
    const double share = std::clamp(along, 0.0, 1.0);
    const double distance = std::hypot(at.x - std::lerp(a.x, b.x, share), at.y - std::lerp(a.y, b.y, share));
    if (distance < best.distance) {
      best.distance = distance;
      best.share = path.length == 0 ? 0 : (travelled + share * path.lengths[i]) / path.length;
      best.left = (b.x - a.x) * (at.y - a.y) - (b.y - a.y) * (at.x - a.x) >= 0;
    }
    travelled += path.lengths[i];
  }
  return best;
}

Maybe<Nearest> nearest(Call& call) {
  Track path;
  const Point at{call.number(1), call.number(2)};
  if (!track(call, -1, path)) return {};
  return nearestOn(path, at);
}

Value nearestShare(Call& call) {
  const Maybe<Nearest> found = nearest(call);
  return found ? Value::number(found->share) : Value();
}

Value distanceTo(Call& call) {
  const Maybe<Nearest> found = nearest(call);
  return found ? Value::number(found->left ? found->distance : -found->distance, Unit::Drawing) : Value();
}

Value segmentAt(Call& call) {
  Track path;
  const double share = travel(call);
  if (!track(call, -1, path)) return {};
  return Value::number(static_cast<double>(path.segments[placeAt(path, share).line]) + 1);
}

Value segmentCount(Call& call) {
  Track path;
  if (!track(call, -1, path)) return {};
  return Value::number(static_cast<double>(path.segments.back()) + 1);
}

Value boxEdge(Call& call) {
  const int index = call.whole(0);
  if (index < 0 || index > 3) return call.fail(ErrorCode::Value);
  const Maybe<std::vector<double>> box = call.context().boundingBox();
  if (!box) return call.unknown();
  constexpr int places[] = {0, 2, 3, 1};  // left, right, top, bottom of left, bottom, right, top
  return Value::number((*box)[static_cast<std::size_t>(places[index])], Unit::Drawing);
}

/// The pin of the shape, which boxes are measured from.
Maybe<Point> pinOf(Call& call) {
  const Maybe<Value> x = call.context().property("PINX"), y = call.context().property("PINY");
  if (!x || !y) return {};
  return Point{x->internal(), y->internal()};
}

Value boxDistance(Call& call) {
  const int index = call.whole(0);
  if (index < 0 || index > 7) return call.fail(ErrorCode::Value);
  const Maybe<std::vector<double>> box = call.context().boundingBox();
  const Maybe<Point> pin = pinOf(call);
  if (!box || !pin) return call.unknown();
  const double left = (*box)[0], bottom = (*box)[1], right = (*box)[2], top = (*box)[3];
  const double distances[] = {right - left,
                              top - bottom,
                              pin->x - left,
                              right - pin->x,
                              top - pin->y,
                              pin->y - bottom,
                              pin->x - (left + right) / 2,
                              pin->y - (bottom + top) / 2};
  return Value::number(distances[index], Unit::Drawing);
}

constexpr FunctionRow rows[] = {
    {"PATHLENGTH", pathLength, AsksHost},
    {"POINTALONGPATH", pointAlong, AsksHost},
    {"ANGLEALONGPATH", angleAlong, AsksHost},
    {"NEARESTPOINTONPATH", nearestShare, AsksHost},
    {"DISTTOPATH", distanceTo, AsksHost},
    {"PATHSEGMENT", segmentAt, AsksHost},
    {"SEGMENTCOUNT", segmentCount, AsksHost},
    {"BOUNDINGBOXRECT", boxEdge, AsksHost | ReadsTransforms},
    {"BOUNDINGBOXDIST", boxDistance, AsksHost | ReadsTransforms},
};

}  // namespace

std::span<const FunctionRow> pathFunctions() { return rows; }

}  // namespace quorvel::host
