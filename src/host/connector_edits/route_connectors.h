// Keeps dynamic connectors true: what a command moved, draws the connectors anew that hang on it or that it came to lie
// upon, in the same step.
#pragma once

#include <memory>

#include "host/connectors/route_map.h"
#include "host/engine/engine.h"
#include "host/routing/plane.h"

namespace quorvel::host {

/// For Engine::aftermath. A connector is drawn anew when one of its ends moved, was glued, or walks around a shape that
/// moved; when a shape was put on its line; and when a shape that its line went around is gone from there and a better
/// way is free. ConFixedCode decides: 2 (never) only stretches the line with its ends, 1 (as needed) heeds its ends
/// alone, 3 (on crossover) never takes a way only because it is better. Lines that were opened stay as drawn until one
/// of this happens to them. Nothing is routed on pages whose DynamicsOff is set, nor in groups and masters.
std::unique_ptr<Aftermath> routingAftermath();

/// The line that a connector at the top of a page would be given now, in inches of the page; changes nothing.
Polyline freshLine(const Store& store, const RouteMap& map, SheetId connector);

}  // namespace quorvel::host
