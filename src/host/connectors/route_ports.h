// Where a connector may leave and reach the shapes that it is glued to, by its routing style.
#pragma once

#include "host/connectors/connector_ends.h"
#include "host/routing/router.h"

namespace quorvel::host {

/// What a style asks of the way.
struct RouteStyle {
  enum Kind : std::uint8_t { RightAngle, Straight, CentreToCentre };
  Kind kind = RightAngle;
  /// The direction in which the flow runs; only when `flows`.
  Side flow = Side::Right;
  bool flows = false;
  /// Ends keep to the flow's sides even where another way is shorter.
  bool strict = false;
  /// A first leg and a last leg that are set without a flow: level then upright, or the other way.
  bool levelFirst = false, uprightFirst = false;
};

/// ShapeRouteStyle of the connector, or RouteStyle of its page.
RouteStyle routeStyleOf(const Store& store, SheetId connector);

/// Ports of one end; `other` is the other end. Never empty.
std::vector<Port> portsOf(const Store& store, const ConnectorEnd& end, const ConnectorEnd& other,
                          const RouteStyle& style);

/// The line of a straight style.
Polyline straightLine(const Store& store, const ConnectorEnd& begin, const ConnectorEnd& end, const RouteStyle& style);

}  // namespace quorvel::host
