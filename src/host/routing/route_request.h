// What is asked of a route: where it may begin and end, what is in its way, and the lines that exist already.
#pragma once

#include <cstdint>
#include <vector>

#include "host/routing/plane.h"

namespace quorvel::host {

/// A shape that lines go around.
struct Obstacle {
  std::uint32_t number = 0;  ///< the number that the source uses for it
  Box box;
  bool passSideways = false;  ///< level lines may run through it
  bool passUpright = false;   ///< upright lines may
};

/// A line that exists already; crossing it is better than running along it.
struct OtherLine {
  Polyline line;
  /// It leaves or reaches the same shape: a stem in common is no harm, and a way of its own better where it costs
  /// nothing.
  bool isRelated = false;
};

/// Gives obstacles by place, so that a way is found among those near it only.
class ObstacleSource {
 public:
  virtual ~ObstacleSource() = default;
  /// Appends every obstacle that touches the box.
  virtual void touching(const Box& box, std::vector<Obstacle>& out) const = 0;
  /// Appends lines that touch the box.
  virtual void linesTouching(const Box&, std::vector<OtherLine>&) const {}
};

/// A place where a line may begin or end.
struct Port {
  Point at;
  /// Where the line comes out of the shape that it is glued to; the place itself when that lies on its border.
  Point exit;
  Side side = Side::Right;  ///< the direction in which a line leaves it (an arriving one comes from there)
  double cost = 0;          ///< how much length a line saved elsewhere must outweigh to use this port
};

struct RouteRequest {
  std::vector<Port> begin, end;  ///< one of each is used
  double clearX = 0.125;         ///< distance that upright lines keep from shapes
  double clearY = 0.125;         ///< distance that level lines keep
};

}  // namespace quorvel::host
