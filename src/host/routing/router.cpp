#include "host/routing/router.h"

#include <cmath>
#include <limits>
#include <queue>
#include <unordered_set>

#include "host/routing/lanes.h"

namespace quorvel::host {
namespace {

/// Shapes considered for one way, and rounds of the search; where more are needed, the line crosses shapes.
constexpr std::size_t mostObstacles = 160;
constexpr int mostRounds = 40;
constexpr std::size_t mostTaken = 24;

/// Length along a shape, nearer than the distance to keep, counts this much more.
constexpr double nearCost = 2;
/// Length on another line, which then can't be distinguished, counts this much more; on a related one no more than
/// tips the scales, and close beside that one, where two lines look like one that is too thick, a little more.
constexpr double takenCost = 10, sharedCost = 0.0005, besideCost = 0.02;
/// So much more does it count to run through a shape, where there is no other way.
constexpr double crossingCost = 1000;

double bendCost(const RouteRequest& request) {
  double shortest = std::numeric_limits<double>::max();
  for (const Port& from : request.begin) {
    for (const Port& to : request.end)
      shortest = std::min(shortest, std::fabs(from.exit.x - to.exit.x) + std::fabs(from.exit.y - to.exit.y));
  }
  return std::max(2 * (request.clearX + request.clearY), 0.35 * shortest);
}

/// Looks for the cheapest way over the crossings of the lanes. A state is a crossing and the direction of arrival.
class Search {
 public:
  Search(const RouteRequest& request, const Lanes& lanes, bool mayCross)
      : request_(request), lanes_(lanes), mayCross_(mayCross), bend_(bendCost(request)) {}

  bool run(Route& route);

 private:
  using State = std::uint32_t;
  static constexpr State none = std::numeric_limits<State>::max();
  struct Waiting {
    double bound, cost;
    State state;
    /// Equal bounds come out in one order on every machine.
    bool operator<(const Waiting& other) const {
      return bound != other.bound ? bound > other.bound : state > other.state;
    }
  };
  struct Goal {
    std::size_t column, row;
    Side arriving;
    std::size_t port;
  };

  State stateOf(std::size_t column, std::size_t row, Side direction) const {
    return static_cast<State>((row * lanes_.columns() + column) * 4 + static_cast<std::size_t>(direction));
  }
  std::size_t columnOf(State state) const { return state / 4 % lanes_.columns(); }
  std::size_t rowOf(State state) const { return state / 4 / lanes_.columns(); }
  static Side directionOf(State state) { return static_cast<Side>(state % 4); }
  Point spotOf(State state) const { return {lanes_.x(columnOf(state)), lanes_.y(rowOf(state))}; }
  double atLeast(const Point& spot) const;
  void reach(State state, double cost, State from);
  void goOn(State state, double cost);
  Route traced(State state, const Goal& goal) const;

  const RouteRequest& request_;
  const Lanes& lanes_;
  const bool mayCross_;
  const double bend_;
  std::vector<double> costs_;
  std::vector<State> from_;
  std::vector<Goal> goals_;
  std::priority_queue<Waiting> waiting_;
};

double Search::atLeast(const Point& spot) const {
  double least = std::numeric_limits<double>::max();
  for (const Goal& goal : goals_) {
    const Port& port = request_.end[goal.port];
    const double dx = std::fabs(port.exit.x - spot.x), dy = std::fabs(port.exit.y - spot.y);
    constexpr double straight = 1e-6;
    least = std::min(least, dx + dy + port.cost + (dx > straight && dy > straight ? bend_ : 0));
  }
  return least;
}

void Search::reach(State state, double cost, State from) {
  if (cost >= costs_[state]) return;
  costs_[state] = cost;
  from_[state] = from;
  waiting_.push({cost + atLeast(spotOf(state)), cost, state});
}

void Search::goOn(State state, double cost) {
  const std::size_t column = columnOf(state), row = rowOf(state);
  const Side coming = directionOf(state);
  for (const Side side : allSides) {
    if (side == opposite(coming)) continue;
    // A line leaves its port straight.
    if (side != coming && from_[state] == none) continue;
    std::size_t nextColumn = column, nextRow = row;
    Lanes::GroupTransform transform = Lanes::Free;
    double liking = 1;
    switch (side) {
      case Side::Right:
        if (++nextColumn == lanes_.columns()) continue;
        transform = lanes_.toTheRight(column, row);
        break;
      case Side::Left:
        if (nextColumn-- == 0) continue;
        transform = lanes_.toTheRight(nextColumn, row);
        break;
      case Side::Top:
        if (++nextRow == lanes_.rows()) continue;
        transform = lanes_.upward(column, row);
        break;
      case Side::Bottom:
        if (nextRow-- == 0) continue;
        transform = lanes_.upward(column, nextRow);
        break;
    }
    if (transform == Lanes::Blocked && !mayCross_) continue;
    liking = isSideways(side) ? lanes_.likingOfRow(row) : lanes_.likingOfColumn(column);
    const double length = isSideways(side) ? std::fabs(lanes_.x(nextColumn) - lanes_.x(column))
                                           : std::fabs(lanes_.y(nextRow) - lanes_.y(row));
    const std::size_t left = std::min(column, nextColumn), low = std::min(row, nextRow);
    const Lanes::Use use = isSideways(side) ? lanes_.useToTheRight(left, row) : lanes_.useUpward(column, low);
    if (use == Lanes::Shared) liking += sharedCost;
    if (use == Lanes::Beside) liking += besideCost;
    if (use == Lanes::Taken) liking += takenCost;
    if (transform == Lanes::Near) liking += nearCost;
    if (transform == Lanes::Blocked) liking += crossingCost;
    reach(stateOf(nextColumn, nextRow, side), cost + length * liking + (side == coming ? 0 : bend_), state);
  }
}

Route Search::traced(State state, const Goal& goal) const {
  Route route;
  Polyline backwards;
  State at = state;
  for (; at != none; at = from_[at]) backwards.push_back(spotOf(at));
  State first = state;
  while (from_[first] != none) first = from_[first];
  route.endPort = goal.port;
  for (std::size_t i = 0; i < request_.begin.size(); ++i) {
    const Port& port = request_.begin[i];
    if (stateOf(lanes_.columnAt(port.exit.x), lanes_.rowAt(port.exit.y), port.side) == first) route.beginPort = i;
  }
  Polyline line(backwards.rbegin(), backwards.rend());
  // Lanes that differ by noise alone are one: the ends are where the ports are.
  line.front() = request_.begin[route.beginPort].exit;
  line.back() = request_.end[route.endPort].exit;
  line.insert(line.begin(), request_.begin[route.beginPort].at);
  line.push_back(request_.end[route.endPort].at);
  route.line = withoutNeedlessPoints(line);
  return route;
}

bool Search::run(Route& route) {
  costs_.assign(lanes_.columns() * lanes_.rows() * 4, std::numeric_limits<double>::max());
  from_.assign(costs_.size(), none);
  for (std::size_t i = 0; i < request_.end.size(); ++i) {
    const Port& port = request_.end[i];
    goals_.push_back({lanes_.columnAt(port.exit.x), lanes_.rowAt(port.exit.y), opposite(port.side), i});
  }
  for (const Port& port : request_.begin)
    reach(stateOf(lanes_.columnAt(port.exit.x), lanes_.rowAt(port.exit.y), port.side), port.cost, none);
  double best = std::numeric_limits<double>::max();
  State bestState = none;
  const Goal* bestGoal = nullptr;
  while (!waiting_.empty()) {
    const Waiting next = waiting_.top();
    waiting_.pop();
    if (next.bound >= best) break;
    if (next.cost > costs_[next.state]) continue;
    for (const Goal& goal : goals_) {
      if (stateOf(goal.column, goal.row, goal.arriving) != next.state) continue;
      double total = next.cost + request_.end[goal.port].cost;
      // Shapes that touch at their ports: a line of no length is hard to see, so another way is taken when it is short.
      if (from_[next.state] == none) total += 4 * bend_;
      if (total >= best) continue;
      best = total;
      bestState = next.state;
      bestGoal = &goal;
    }
    goOn(next.state, next.cost);
  }
  if (!bestGoal) return false;
  route = traced(bestState, *bestGoal);
  return true;
}

/// Among known obstacles: on the usual lines, else on all there are, else through what cannot be gone around.
Route findAmong(const RouteRequest& request, const std::vector<Obstacle>& obstacles,
                const std::vector<OtherLine>& taken) {
  Route route;
  const Lanes usual(request, obstacles, taken, Lanes::Detail::Usual);
  if (Search(request, usual, false).run(route)) return route;
  const Lanes every(request, obstacles, taken, Lanes::Detail::Every);
  if (Search(request, every, false).run(route)) return route;
  Search(request, usual, true).run(route);
  route.crossesObstacle = true;
  return route;
}

}  // namespace

Polyline withoutNeedlessPoints(const Polyline& line) {
  constexpr double epsilon = 1e-6;
  Polyline kept;
  for (const Point& spot : line) {
    if (!kept.empty() && std::fabs(spot.x - kept.back().x) < epsilon && std::fabs(spot.y - kept.back().y) < epsilon)
      continue;
    while (kept.size() >= 2) {
      const Point &a = kept[kept.size() - 2], &b = kept.back();
      const double cross = (b.x - a.x) * (spot.y - b.y) - (b.y - a.y) * (spot.x - b.x);
      const double ahead = (b.x - a.x) * (spot.x - b.x) + (b.y - a.y) * (spot.y - b.y);
      const double scale = std::hypot(b.x - a.x, b.y - a.y) + std::hypot(spot.x - b.x, spot.y - b.y);
      if (ahead < 0 || std::fabs(cross) > epsilon * scale) break;
      kept.pop_back();
    }
    kept.push_back(spot);
  }
  if (kept.size() == 1) kept.push_back(kept.front());
  return kept;
}

double costOf(const Polyline& line, const RouteRequest& request) {
  const Polyline bends = withoutNeedlessPoints(line);
  return lengthOf(bends) + bendCost(request) * (bends.size() > 2 ? static_cast<double>(bends.size() - 2) : 0);
}

Route findRoute(const RouteRequest& request, const ObstacleSource& source) {
  if (request.begin.empty() || request.end.empty()) return {};
  std::vector<Obstacle> known, met;
  std::unordered_set<std::uint32_t> numbers;
  const auto learn = [&](const Box& box) {
    met.clear();
    source.touching(box, met);
    bool learned = false;
    for (const Obstacle& obstacle : met) {
      if (known.size() >= mostObstacles || !numbers.insert(obstacle.number).second) continue;
      known.push_back(obstacle);
      learned = true;
    }
    return learned;
  };
  Polyline ends;
  for (const auto* ports : {&request.begin, &request.end}) {
    for (const Port& port : *ports) ends.push_back(port.exit);
  }
  const Box between = boundsOf(ends).grown(request.clearX, request.clearY);
  // Between ends far apart are more shapes than a way meets; they are added one by one.
  constexpr double far = 64;
  if (between.width() < far * request.clearX && between.height() < far * request.clearY) learn(between);
  for (const Point& end : ends) learn(Box{end.x, end.y, end.x, end.y}.grown(2 * request.clearX, 2 * request.clearY));
  // Other lines only near the ends' own box: a way that leads far out is long enough to be distinguished.
  std::vector<OtherLine> taken;
  source.linesTouching(boundsOf(ends).grown(2 * request.clearX, 2 * request.clearY), taken);
  if (taken.size() > mostTaken) taken.resize(mostTaken);
  Route route;
  bool learned = true;
  for (int round = 0; round < mostRounds && learned; ++round) {
    route = findAmong(request, known, taken);
    // Shapes beyond those known matter only along the way.
    learned = false;
    for (std::size_t i = 1; i < route.line.size(); ++i)
      learned |= learn(Box::around(route.line[i - 1], route.line[i]).grown(request.clearX, request.clearY));
  }
  if (!route.crossesObstacle && (learned || known.size() >= mostObstacles)) {
    met.clear();
    source.touching(boundsOf(route.line), met);
    for (const Obstacle& obstacle : met)
      route.crossesObstacle |= !obstacle.passSideways && !obstacle.passUpright && crosses(route.line, obstacle.box);
  }
  return route;
}

}  // namespace quorvel::host
