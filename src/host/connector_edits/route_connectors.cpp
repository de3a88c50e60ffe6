#include "host/connector_edits/route_connectors.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "host/cells/cell_table.h"
#include "host/connector_edits/route_drawing.h"
#include "host/connectors/connector_ends.h"
#include "host/connectors/route_map.h"
#include "host/connectors/route_ports.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

/// Handlers of what routing changed may move shapes again; an endless exchange ends after this many rounds.
constexpr int mostRounds = 8;
constexpr double epsilon = 1e-6;

enum FixedCode { Freely = 0, AsNeeded = 1, Never = 2, OnCrossover = 3 };

int fixedCodeOf(const Store& store, SheetId connector) {
  static const CellKey key = objectCell("ConFixedCode");
  const int code = static_cast<int>(cellNumber(store, connector, key));
  // The codes above are marks of automatic layout; such a line is as free as any.
  return code >= Freely && code <= OnCrossover ? code : static_cast<int>(Freely);
}

bool isSame(const Point& a, const Point& b, double within) {
  return std::fabs(a.x - b.x) < within && std::fabs(a.y - b.y) < within;
}

/// Whether the end is at the border of the shape that it walks around.
bool isAtBorder(const Store& store, const ConnectorEnd& end) {
  constexpr double near = 0.02;
  const Box box = boxOnPage(store, end.glued);
  return box.grown(near, near).holds(end.at) && !box.grown(-near, -near).holds(end.at);
}

/// Whether a connector whose ends changed needs another line. One that was moved as a whole doesn't, nor one that was
/// made with a line that meets its ends, as a pasted one.
bool isPulled(const Store& store, const PlacementJournal::Entry& entry) {
  const ConnectorEnd first = endOf(store, entry.sheet, true), second = endOf(store, entry.sheet, false);
  const Point begin = first.at, end = second.at;
  if (entry.appeared) {
    const Polyline line = lineOnPage(store, entry.sheet);
    constexpr double meeting = 1e-3;
    const bool stray = (first.walks && !isAtBorder(store, first)) || (second.walks && !isAtBorder(store, second));
    return stray || (!line.empty() && !(isSame(line.front(), begin, meeting) && isSame(line.back(), end, meeting)));
  }
  const auto& before = entry.endsBefore;
  const Point beginBy{begin.x - before[0], begin.y - before[1]}, endBy{end.x - before[2], end.y - before[3]};
  // Where nothing moved, the end was glued or set free.
  return isSame(beginBy, {}, epsilon) || !isSame(beginBy, endBy, epsilon);
}

/// What the line of one connector has to go around.
class WayObstacles : public ObstacleSource {
 public:
  WayObstacles(const Store& store, const RouteMap& map, const ConnectorEnd& begin, const ConnectorEnd& end,
               const RouteRequest& request, SheetId connector, bool sharesLines)
      : store_(store), map_(map), connector_(connector), sharesLines_(sharesLines) {
    for (const bool first : {true, false}) {
      const ConnectorEnd& own = first ? begin : end;
      const SheetId top = own.glued ? topOf(store, own.glued) : SheetId{};
      for (const Port& port : first ? request.begin : request.end) spots_.push_back({port.exit, port.at, top});
    }
    for (const Port& from : request.begin) {
      for (const Port& to : request.end) {
        if (to.side != opposite(from.side)) continue;
        isNearlyStraight_ |= isSideways(from.side) ? std::fabs(from.exit.y - to.exit.y) < request.clearY
                                                   : std::fabs(from.exit.x - to.exit.x) < request.clearX;
      }
    }
  }

  void linesTouching(const Box& box, std::vector<OtherLine>& out) const override {
    if (sharesLines_) return;
    const std::vector<SheetId> others = map_.connectorsTouching(box);
    // Among so many, overlaps cannot be avoided.
    constexpr std::size_t most = 48;
    if (others.size() > most) return;
    for (const SheetId other : others) {
      if (other != connector_) out.push_back({lineOnPage(store_, other), isRelated(other)});
    }
  }

  void touching(const Box& box, std::vector<Obstacle>& out) const override {
    static const CellKey permeableX = objectCell("ShapePermeableX"), permeableY = objectCell("ShapePermeableY");
    for (const SheetId shape : map_.shapesTouching(box)) {
      const Box its = *map_.boxOf(shape);
      if (holdsAnEnd(shape, its)) continue;
      Obstacle obstacle;
      obstacle.number = shape.value;
      obstacle.box = its;
      if (!isOwn(shape)) {
        if (map_.isFrame(store_, shape)) continue;
        obstacle.passSideways = cellNumber(store_, shape, permeableX) != 0;
        obstacle.passUpright = cellNumber(store_, shape, permeableY) != 0;
      }
      out.push_back(obstacle);
    }
  }

 private:
  struct GluedEnd {
    Point exit, at;
    SheetId top;  ///< the shape at the top of the page that the end is glued to
  };
  bool isOwn(SheetId shape) const {
    return std::any_of(spots_.begin(), spots_.end(), [&](const GluedEnd& spot) { return spot.top == shape; });
  }
  /// Lines that leave one place for several, or come from several to one, have a stem in common. Two between the same
  /// shapes would hide each other, and an end that walks has other sides to leave by; but not for a way that is nearly
  /// straight, which would run close beside the other line instead.
  bool isRelated(SheetId other) const {
    const auto shares = [&](bool begin) {
      const ConnectorEnd own = endOf(store_, connector_, begin);
      return own.glued && (!own.walks || isNearlyStraight_) && own.glued == endOf(store_, other, begin).glued;
    };
    return shares(true) != shares(false);
  }
  /// A shape around an end that is glued elsewhere can't be gone around.
  bool holdsAnEnd(SheetId shape, const Box& box) const {
    return std::any_of(spots_.begin(), spots_.end(), [&](const GluedEnd& spot) {
      return spot.top != shape && (box.holds(spot.exit, epsilon) || box.holds(spot.at, epsilon));
    });
  }

  const Store& store_;
  const RouteMap& map_;
  const SheetId connector_;
  const bool sharesLines_;  ///< lines of a tree have stems in common
  bool isNearlyStraight_ = false;
  std::vector<GluedEnd> spots_;
};

RouteRequest requestOf(const Store& store, SheetId page, const ConnectorEnd& begin, const ConnectorEnd& end,
                       const RouteStyle& style) {
  static const CellKey lineToNodeX = objectCell("LineToNodeX"), lineToNodeY = objectCell("LineToNodeY");
  RouteRequest request;
  // A distance of nothing would make lines run along borders.
  constexpr double least = 0.01;
  request.clearX = std::max(least, cellNumber(store, page, lineToNodeX));
  request.clearY = std::max(least, cellNumber(store, page, lineToNodeY));
  request.begin = portsOf(store, begin, end, style);
  request.end = portsOf(store, end, begin, style);
  return request;
}

/// The line of a connector inside a group: obstacles inside the group are ignored.
Polyline plainLine(const Point& begin, const Point& end) {
  const double middle = (begin.x + end.x) / 2;
  return withoutNeedlessPoints({begin, {middle, begin.y}, {middle, end.y}, end});
}

class NoObstacles : public ObstacleSource {
 public:
  void touching(const Box&, std::vector<Obstacle>&) const override {}
};

/// Whether the line of a connector inside a group no longer meets its ends, or an end what it walks around.
bool hasLostAnEnd(const Store& store, SheetId connector) {
  constexpr double meeting = 1e-3;
  const ConnectorEnd begin = endOf(store, connector, true), end = endOf(store, connector, false);
  if ((begin.walks && !isAtBorder(store, begin)) || (end.walks && !isAtBorder(store, end))) return true;
  const Polyline line = lineOnPage(store, connector);
  return !line.empty() && !(isSame(line.front(), begin.at, meeting) && isSame(line.back(), end.at, meeting));
}

bool isInsideOneOf(const Store& store, SheetId shape, const std::set<SheetId>& groups) {
  for (const Sheet* each = store.sheet(shape); each && each->parent; each = store.sheet(each->parent)) {
    if (groups.contains(each->parent)) return true;
  }
  return false;
}

class Routing : public CommandObserver {
 public:
  void commandBegins(Engine& engine) override;
  void commandEnds(Engine& engine) override;

 private:
  struct Moved {
    SheetId shape;
    Maybe<Box> before, after;
  };
  /// Why a connector is checked.
  enum Reason : std::uint8_t {
    Eased,  ///< a shape near the line was removed: redrawn only if the way gets better
    Met,    ///< a shape was put on the line: drawn if that can be helped
    Pulled  ///< an end moved
  };
  struct PageWork {
    std::vector<Moved> moved;
    std::set<SheetId> movedMembers;  ///< of groups that stay where they are
    std::map<SheetId, Reason> connectors;
    void add(SheetId connector, Reason reason) {
      const auto [place, made] = connectors.try_emplace(connector, reason);
      if (!made) place->second = std::max(place->second, reason);
    }
  };
  using Work = std::map<PageId, PageWork>;

  /// Null for pages of masters, deleted pages, and one without a map.
  RouteMap* mapOf(const Engine& engine, PageId page);
  void discardMaps(const Engine& engine, DocumentId document);
  void absorb(Engine& engine, const std::vector<PlacementJournal::Entry>& entries);
  Work sort(Engine& engine, const std::vector<PlacementJournal::Entry>& entries);
  static void follow(const Store& store, RouteMap& map, SheetId shape);
  void addPulled(const Engine& engine, PageWork& work) const;
  void addMet(const Engine& engine, const RouteMap& map, PageId page, PageWork& work) const;
  void route(Engine& engine, const RouteMap& map, SheetId connector, Reason reason, std::vector<CellAddress>& changed);

  std::unordered_map<PageId, RouteMap> maps_;
};

RouteMap* Routing::mapOf(const Engine& engine, PageId id) {
  const Page* page = engine.store().page(id);
  if (!page || page->master) {
    maps_.erase(id);
    return nullptr;
  }
  const auto found = maps_.find(id);
  return found == maps_.end() ? nullptr : &found->second;
}

/// Instances show what their master holds: their places are unknown after a change of it.
void Routing::discardMaps(const Engine& engine, DocumentId document) {
  std::erase_if(maps_, [&](const auto& entry) {
    const Page* page = engine.store().page(entry.first);
    return !page || page->document == document;
  });
}

/// The shape itself may be in a group now, and is not part of the map then.
void Routing::follow(const Store& store, RouteMap& map, SheetId shape) {
  map.update(store, shape);
  if (const SheetId top = topOf(store, shape); top != shape) map.update(store, top);
}

void Routing::absorb(Engine& engine, const std::vector<PlacementJournal::Entry>& entries) {
  if (engine.placements().takeOverflow()) maps_.clear();
  for (const PlacementJournal::Entry& entry : entries) {
    const Page* page = engine.store().page(entry.page);
    if (page && page->master) discardMaps(engine, page->document);
    if (RouteMap* map = mapOf(engine, entry.page)) follow(engine.store(), *map, entry.sheet);
  }
}

void Routing::commandBegins(Engine& engine) {
  if (!engine.placements().isEmpty()) absorb(engine, engine.placements().take());
}

Routing::Work Routing::sort(Engine& engine, const std::vector<PlacementJournal::Entry>& entries) {
  const Store& store = engine.store();
  Work work;
  std::set<SheetId> seen;
  std::set<PageId> fresh;
  for (const PlacementJournal::Entry& entry : entries) {
    const Page* page = store.page(entry.page);
    if (page && page->master) discardMaps(engine, page->document);
    if (!page || page->master) continue;
    // A map that is made now has the present places; the earlier ones are in the journal.
    if (!mapOf(engine, entry.page)) {
      std::erase_if(maps_, [&](const auto& each) { return !store.page(each.first); });
      maps_.emplace(entry.page, RouteMap(store, entry.page));
      fresh.insert(entry.page);
    }
    RouteMap* map = mapOf(engine, entry.page);
    const SheetId top = topOf(store, entry.sheet);
    PageWork& here = work[entry.page];
    // What was grouped or ungrouped has not moved, so that the lines around it are still right.
    if (entry.unmoved) {
      follow(store, *map, entry.sheet);
      continue;
    }
    if (top != entry.sheet) map->update(store, entry.sheet);
    if (top == entry.sheet && entry.ended && isRoutable(store, top) && isPulled(store, entry)) here.add(top, Pulled);
    if (top != entry.sheet && entry.ended && mayBeRedrawn(store, entry.sheet) && hasLostAnEnd(store, entry.sheet))
      here.add(entry.sheet, Pulled);
    if (top != entry.sheet && entry.placed) here.movedMembers.insert(entry.sheet);
    if (!seen.insert(top).second) continue;
    Maybe<Box> before = map->boxOf(top);
    if (fresh.contains(entry.page)) {
      const auto& box = entry.boxBefore;
      if (top == entry.sheet) before = entry.wasOnTop ? Maybe<Box>(Box{box[0], box[1], box[2], box[3]}) : Maybe<Box>();
    }
    map->update(store, top);
    const Maybe<Box> after = map->boxOf(top);
    if (bool(before) != bool(after) || (before && !(*before == *after))) here.moved.push_back({top, before, after});
  }
  return work;
}

/// Connectors with an end that walks around a moved shape, or around a member of it, and that did not move with it.
void Routing::addPulled(const Engine& engine, PageWork& work) const {
  std::set<SheetId> sheets, roots = work.movedMembers;
  for (const Moved& moved : work.moved) roots.insert(moved.shape);
  const auto take = [&](SheetId shape) {
    if (!engine.store().sheet(shape)) return;
    for (const SheetId sheet : engine.store().subtree(shape)) sheets.insert(sheet);
  };
  for (const SheetId root : roots) take(root);
  std::vector<CellAddress> readers;
  for (const SheetId sheet : sheets) engine.graph().appendReadersOf(sheet, readers);
  for (const CellAddress& reader : readers) {
    if (reader.key != triggerCell(true) && reader.key != triggerCell(false)) continue;
    if (!mayBeRedrawn(engine.store(), reader.sheet)) continue;
    // A connector in a group that moved came with it.
    if (isInsideOneOf(engine.store(), reader.sheet, roots)) continue;
    if (endOf(engine.store(), reader.sheet, reader.key == triggerCell(true)).walks) work.add(reader.sheet, Pulled);
  }
}

/// Connectors that a shape was put on, and those that led around its old place.
void Routing::addMet(const Engine& engine, const RouteMap& map, PageId page, PageWork& work) const {
  static const CellKey lineToNodeX = objectCell("LineToNodeX"), lineToNodeY = objectCell("LineToNodeY");
  const Store& store = engine.store();
  const SheetId sheet = store.page(page)->sheet;
  const double clearX = cellNumber(store, sheet, lineToNodeX), clearY = cellNumber(store, sheet, lineToNodeY);
  for (const Moved& moved : work.moved) {
    if (moved.after && !map.isFrame(store, moved.shape)) {
      for (const SheetId connector : map.connectorsTouching(*moved.after)) {
        const Polyline line = lineOnPage(store, connector);
        if (!crosses(line, *moved.after) || (moved.before && crosses(line, *moved.before))) continue;
        if (moved.after->holds(line.front(), epsilon) || moved.after->holds(line.back(), epsilon)) continue;
        if (fixedCodeOf(store, connector) == Freely || fixedCodeOf(store, connector) == OnCrossover)
          work.add(connector, Met);
      }
    }
    if (moved.before) {
      const Box beside = moved.before->grown(clearX, clearY);
      for (const SheetId connector : map.connectorsTouching(beside)) {
        if (fixedCodeOf(store, connector) != Freely) continue;
        const Polyline line = lineOnPage(store, connector);
        // Lines found here keep just this distance from what they go around.
        if (line.size() > 2 && crosses(line, beside.grown(2 * epsilon, 2 * epsilon)) &&
            !crosses(line, beside.grown(-2 * epsilon, -2 * epsilon)))
          work.add(connector, Eased);
      }
    }
  }
}

void Routing::route(Engine& engine, const RouteMap& map, SheetId connector, Reason reason,
                    std::vector<CellAddress>& changed) {
  static const CellKey dynamicsOff = objectCell("DynamicsOff");
  const Store& store = engine.store();
  if (!mayBeRedrawn(store, connector)) return;
  const bool isMember = !isRoutable(store, connector);
  const SheetId page = store.page(store.sheet(connector)->page)->sheet;
  if (cellNumber(store, page, dynamicsOff) != 0) return;
  const ConnectorEnd begin = endOf(store, connector, true), end = endOf(store, connector, false);
  const RouteStyle style = routeStyleOf(store, connector);
  const bool keepsShape = fixedCodeOf(store, connector) == Never || !isStraightLined(store, connector);
  if (style.kind != RouteStyle::RightAngle || keepsShape) {
    if (reason != Pulled) return;
    const Polyline line = straightLine(store, begin, end, style);
    if (!keepsShape) return drawLine(engine, connector, line, changed);
    // Its ends still walk; between them the line keeps its shape.
    moveEnds(engine, connector, line, changed);
    return stretchLine(engine, connector, changed);
  }
  if (isMember && !begin.walks && !end.walks) return drawLine(engine, connector, plainLine(begin.at, end.at), changed);
  const RouteRequest request = requestOf(store, page, begin, end, style);
  if (isMember) return drawLine(engine, connector, findRoute(request, NoObstacles()).line, changed);
  const Route found = findRoute(request, WayObstacles(store, map, begin, end, request, connector, style.strict));
  if (found.line.size() < 2) return;
  if (reason == Met && found.crossesObstacle) return;
  if (reason == Eased &&
      (found.crossesObstacle || costOf(found.line, request) > costOf(lineOnPage(store, connector), request) - epsilon))
    return;
  drawLine(engine, connector, found.line, changed);
}

void Routing::commandEnds(Engine& engine) {
  for (int round = 0; round < mostRounds && !engine.placements().isEmpty(); ++round) {
    Work work = sort(engine, engine.placements().take());
    if (engine.placements().takeOverflow()) maps_.clear();
    std::vector<CellAddress> changed;
    for (auto& [page, here] : work) {
      RouteMap* map = mapOf(engine, page);
      if (!map) continue;
      // Connectors in groups are not on the map.
      if (map->hasConnectors() || !here.movedMembers.empty()) addPulled(engine, here);
      if (map->hasConnectors()) addMet(engine, *map, page, here);
      for (const auto& [connector, reason] : here.connectors) {
        route(engine, *map, connector, reason, changed);
        follow(engine.store(), *map, connector);
      }
    }
    // What was drawn here is no reason to draw again.
    absorb(engine, engine.placements().take());
    for (const CellAddress& cell : changed) engine.raise(&ApplicationEvents::CellChanged, cell);
  }
}

}  // namespace

Polyline freshLine(const Store& store, const RouteMap& map, SheetId connector) {
  const ConnectorEnd begin = endOf(store, connector, true), end = endOf(store, connector, false);
  const RouteStyle style = routeStyleOf(store, connector);
  if (style.kind != RouteStyle::RightAngle) return straightLine(store, begin, end, style);
  const SheetId page = store.page(store.sheet(connector)->page)->sheet;
  const RouteRequest request = requestOf(store, page, begin, end, style);
  return findRoute(request, WayObstacles(store, map, begin, end, request, connector, style.strict)).line;
}

std::unique_ptr<CommandObserver> routingObserver() { return std::make_unique<Routing>(); }

}  // namespace quorvel::host
