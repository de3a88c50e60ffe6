// Redraws dynamic connectors after a command: those that are glued to what it moved, and those that it was put on,
// upon, in the same step.
#pragma once

#include <memory>

#include "host/connectors/route_map.h"
#include "host/engine/engine.h"
#include "host/routing/plane.h"

namespace quorvel::host {

/// For Engine::setCommandObserver. A connector is redrawn when one of its ends moved, was glued, or walks around a
/// shape that moved; when a shape was put on its line; and when a shape that its line led around was moved away and a
/// better way is free. ConFixedCode decides: 2 (never) only stretches the line with its ends, 1 (as needed) follows its
/// ends alone, 3 (on crossover) never takes a way only because it is better. Lines that were opened stay as drawn until
/// one of this happens to them. Nothing is routed on pages whose DynamicsOff is set, nor in groups and masters.
std::unique_ptr<CommandObserver> routingObserver();

/// The line that a connector at the top of a page would be given now, in inches of the page; changes nothing.
Polyline freshLine(const Store& store, const RouteMap& map, SheetId connector);

}  // namespace quorvel::host
