// Finds the way of a connector between two shapes: right-angled lines that go around the shapes in the way, with few
// bends, at a distance from what they pass.
#pragma once

#include <vector>

#include "host/routing/route_request.h"

namespace quorvel::host {

struct Route {
  /// From begin to end without needless points. Empty when a list of ports is.
  Polyline line;
  std::size_t beginPort = 0, endPort = 0;
  /// No free way exists between any two of the ports, or none was found within a sane amount of work.
  bool crossesObstacle = false;
};

/// The line leaves and arrives in the directions of its ports, and runs through no obstacle that it can go around.
/// Same request and obstacles, same route.
Route findRoute(const RouteRequest& request, const ObstacleSource& obstacles);

/// What findRoute weighs: length, and what each bend counts for in length.
double costOf(const Polyline& line, const RouteRequest& request);

/// Takes out points that do not bend the line.
Polyline withoutNeedlessPoints(const Polyline& line);

}  // namespace quorvel::host
