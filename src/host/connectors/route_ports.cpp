#include "host/connectors/route_ports.h"

#include <cmath>
#include <limits>

#include "host/cells/cell_table.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

/// Where a line that leaves a shape comes out of all that it is a member of.
Point exitOf(const Store& store, SheetId shape, const Point& from, Side side) {
  return leavingPoint(boxOnPage(store, topOf(store, shape)), from, side);
}

Box boxOf(const Store& store, const ConnectorEnd& end) {
  return end.glued ? boxOnPage(store, end.glued) : Box{end.at.x, end.at.y, end.at.x, end.at.y};
}

/// The middle of a side of a shape's own box, and the direction in which it faces, on the page.
Port middlePort(const Store& store, SheetId shape, Side side) {
  Port port;
  port.at = middleOnPage(store, shape, side);
  port.side = sideOnPage(toPageMatrix(store, shape), side);
  port.exit = exitOf(store, shape, port.at, port.side);
  return port;
}

/// Sides by which a line leaves a point on or in a shape: the nearest ones; any for a point deep inside.
std::vector<Port> portsOfPoint(const Store& store, const ConnectorEnd& end) {
  static const CellKey width = objectCell("Width"), height = objectCell("Height");
  const Box own = Box::around({0, 0}, {cellNumber(store, end.glued, width), cellNumber(store, end.glued, height)});
  const Matrix matrix = toPageMatrix(store, end.glued);
  const Point at = matrix.inverse()(end.at);
  const double distances[] = {std::fabs(own.right - at.x), std::fabs(own.top - at.y), std::fabs(at.x - own.left),
                              std::fabs(at.y - own.bottom)};
  const double nearest = *std::min_element(std::begin(distances), std::end(distances));
  const bool deep = own.holds(at) && nearest > 0.25 * std::min(own.width(), own.height());
  constexpr double epsilon = 1e-6;
  std::vector<Port> ports;
  for (const Side side : allSides) {
    if (!deep && distances[static_cast<int>(side)] > nearest + epsilon) continue;
    Port port;
    port.at = end.at;
    port.side = sideOnPage(matrix, side);
    port.exit = exitOf(store, end.glued, port.at, port.side);
    ports.push_back(port);
  }
  return ports;
}

/// The side that the flow of a style gives to an end. Where the other shape is beside or behind, the flow bends.
Side flowSide(const Box& own, const Box& other, bool begin, const RouteStyle& style) {
  const Side ahead = begin ? style.flow : opposite(style.flow);
  const auto beyond = [&](Side side) {
    switch (side) {
      case Side::Right:
        return other.left >= own.right;
      case Side::Top:
        return other.bottom >= own.top;
      case Side::Left:
        return other.right <= own.left;
      case Side::Bottom:
        return other.top <= own.bottom;
    }
    return false;
  };
  if (beyond(ahead)) return ahead;
  return walkTo(own, other, !isSideways(ahead));
}

}  // namespace

RouteStyle routeStyleOf(const Store& store, SheetId connector) {
  static const CellKey own = objectCell("ShapeRouteStyle"), ofPage = objectCell("RouteStyle");
  int number = static_cast<int>(cellNumber(store, connector, own));
  if (number == 0) {
    const Page* page = store.page(store.sheet(connector)->page);
    if (page) number = static_cast<int>(cellNumber(store, page->sheet, ofPage));
  }
  RouteStyle style;
  const auto flow = [&](Side side, bool strict) {
    style.flows = true;
    style.flow = side;
    style.strict = strict;
  };
  switch (number) {
    case 2:  // straight
    case 9:  // network
      style.kind = RouteStyle::Straight;
      break;
    case 16:
      style.kind = RouteStyle::CentreToCentre;
      break;
    case 3:  // organization chart, tree, simple: top to bottom
    case 7:
    case 17:
      flow(Side::Bottom, true);
      break;
    case 4:
    case 8:
    case 18:
      flow(Side::Right, true);
      break;
    case 10:
    case 14:
    case 19:
      flow(Side::Top, true);
      break;
    case 11:
    case 15:
    case 20:
      flow(Side::Left, true);
      break;
    case 5:  // flowchart: a decision's branches leave sideways
      flow(Side::Bottom, false);
      break;
    case 6:
      flow(Side::Right, false);
      break;
    case 12:
      flow(Side::Top, false);
      break;
    case 13:
      flow(Side::Left, false);
      break;
    case 21:
      style.levelFirst = true;
      break;
    case 22:
      style.uprightFirst = true;
      break;
    default:
      break;
  }
  return style;
}

std::vector<Port> portsOf(const Store& store, const ConnectorEnd& end, const ConnectorEnd& other,
                          const RouteStyle& style) {
  std::vector<Port> ports;
  if (end.walks) {
    for (const Side side : allSides) ports.push_back(middlePort(store, end.glued, side));
  } else if (end.glued) {
    ports = portsOfPoint(store, end);
  } else {
    for (const Side side : allSides) ports.push_back({end.at, end.at, side, 0});
  }
  if (ports.size() < 2) return ports;
  const Box own = boxOf(store, end), its = boxOf(store, other);
  const double apart = std::fabs(own.middle().x - its.middle().x) + std::fabs(own.middle().y - its.middle().y);
  const auto against = [&](double weight, auto isWanted) {
    for (Port& port : ports) {
      if (!isWanted(port.side)) port.cost += weight * apart;
    }
  };
  // Of two equal ways the one that leaves sideways is taken.
  if (end.begin) against(0.002, isSideways);
  // A strict style's cost is beyond any detour's, but a shape with obstacles close to that side can still be left.
  if (style.flows) {
    const Side side = flowSide(own, its, end.begin, style);
    against(style.strict ? 8 : 0.4, [&](Side each) { return each == side; });
  }
  if (style.levelFirst || style.uprightFirst) {
    const bool sideways = style.levelFirst == end.begin;
    against(8, [&](Side each) { return isSideways(each) == sideways; });
  }
  return ports;
}

Polyline straightLine(const Store& store, const ConnectorEnd& begin, const ConnectorEnd& end, const RouteStyle& style) {
  Point from = begin.at, to = end.at;
  const Box first = boxOf(store, begin), second = boxOf(store, end);
  if (style.kind == RouteStyle::CentreToCentre) {
    const Point a = begin.walks ? first.middle() : from, b = end.walks ? second.middle() : to;
    if (begin.walks) from = leavingPoint(first, a, b);
    if (end.walks) to = leavingPoint(second, b, a);
    return {from, to};
  }
  double shortest = std::numeric_limits<double>::max();
  const auto placesOf = [&](const ConnectorEnd& each) {
    Polyline places;
    if (!each.walks) places.push_back(each.at);
    for (const Side side : allSides) {
      if (each.walks) places.push_back(middlePort(store, each.glued, side).at);
    }
    return places;
  };
  for (const Point& a : placesOf(begin)) {
    for (const Point& b : placesOf(end)) {
      const double length = std::hypot(a.x - b.x, a.y - b.y);
      if (length >= shortest - 1e-9) continue;
      shortest = length;
      from = a;
      to = b;
    }
  }
  return {from, to};
}

}  // namespace quorvel::host
