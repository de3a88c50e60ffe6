// Routes between shapes: a table of layouts with the expected lines, and random ones in which nothing is crossed
// that can be avoided.
#include "host/routing/router.h"

#include <gtest/gtest.h>

#include <cmath>
#include <deque>
#include <random>
#include <sstream>

#include "host/routing/box_index.h"

namespace quorvel::host {
namespace {

class Boxes : public ObstacleSource {
 public:
  explicit Boxes(std::vector<Obstacle> obstacles) : obstacles_(std::move(obstacles)) {
    for (std::size_t i = 0; i < obstacles_.size(); ++i) {
      obstacles_[i].number = static_cast<std::uint32_t>(i);
      index_.put(obstacles_[i].number, obstacles_[i].box);
    }
  }
  void touching(const Box& box, std::vector<Obstacle>& out) const override {
    std::vector<std::uint32_t> numbers;
    index_.touching(box, numbers);
    for (const std::uint32_t number : numbers) out.push_back(obstacles_[number]);
  }
  const std::vector<Obstacle>& all() const { return obstacles_; }

 private:
  std::vector<Obstacle> obstacles_;
  BoxIndex index_;
};

Port sideOf(const Box& box, Side side, double cost = 0) {
  const Point middle = middleOf(box, side);
  return {middle, middle, side, cost};
}

std::vector<Port> everySideOf(const Box& box) {
  std::vector<Port> ports;
  for (const Side side : allSides) ports.push_back(sideOf(box, side));
  return ports;
}

std::string written(const Polyline& line) {
  std::ostringstream text;
  for (const Point& spot : line) text << '(' << spot.x << ',' << spot.y << ')';
  return text.str();
}

bool isRightAngled(const Polyline& line) {
  for (std::size_t i = 1; i < line.size(); ++i) {
    if (std::fabs(line[i].x - line[i - 1].x) > 1e-5 && std::fabs(line[i].y - line[i - 1].y) > 1e-5) return false;
  }
  return true;
}

/// The line leaves the place in the direction.
bool leaves(const Polyline& line, const Port& port) {
  const Point a = line.front(), b = line[1];
  const double x = b.x - a.x, y = b.y - a.y;
  switch (port.side) {
    case Side::Right:
      return x > 0 && std::fabs(y) < 1e-5;
    case Side::Left:
      return x < 0 && std::fabs(y) < 1e-5;
    case Side::Top:
      return y > 0 && std::fabs(x) < 1e-5;
    case Side::Bottom:
      return y < 0 && std::fabs(x) < 1e-5;
  }
  return false;
}

struct Case {
  const char* name;
  Box from, to;
  std::vector<Box> others;
  std::vector<Side> begin, end;  ///< empty: any
  std::size_t bends;
  double length;
};

TEST(Router, DrawsTheExpectedLines) {
  using S = Side;
  const Case cases[] = {
      {"side by side", {0, 0, 2, 1}, {4, 0, 6, 1}, {}, {}, {}, 0, 2},
      {"one above the other", {0, 0, 2, 1}, {0, 3, 2, 4}, {}, {}, {}, 0, 2},
      {"diagonal, one corner", {0, 0, 2, 1}, {4, 3, 6, 4}, {}, {}, {}, 1, 5.5},
      {"a step between facing sides", {0, 0, 2, 1}, {4, 2, 6, 3}, {}, {S::Right}, {S::Left}, 2, 4},
      {"a shape between", {0, 0, 1, 1}, {4, 0, 5, 1}, {{2, -0.5, 3, 1.5}}, {S::Right}, {S::Left}, 4, 5.25},
      {"a lower shape between is passed below",
       {0, 0, 1, 1},
       {4, 0, 5, 1},
       {{2, 0.2, 3, 3}},
       {S::Right},
       {S::Left},
       4,
       3.85},
      {"back around", {0, 0, 1, 1}, {4, 0, 5, 1}, {}, {S::Left}, {S::Right}, 4, 6.75},
      {"out on the far side", {0, 0, 1, 1}, {4, 0, 5, 1}, {}, {S::Right}, {S::Right}, 4, 5.5},
      {"down and across", {0, 4, 2, 5}, {4, 0, 6, 1}, {}, {S::Bottom}, {S::Left}, 1, 6.5},
      {"down a tree", {0, 4, 2, 5}, {4, 0, 6, 1}, {}, {S::Bottom}, {S::Top}, 2, 7},
      {"a passage too narrow for the distance",
       {0, 0, 1, 1},
       {4, 0, 5, 1},
       {{2, 0.6, 3, 9}, {2, -9, 3, 0.4}},
       {},
       {},
       0,
       3},
      {"to itself", {0, 0, 2, 1}, {0, 0, 2, 1}, {}, {S::Right}, {S::Top}, 3, 2},
  };
  for (const Case& each : cases) {
    std::vector<Obstacle> obstacles;
    obstacles.push_back({0, each.from});
    if (!(each.to == each.from)) obstacles.push_back({0, each.to});
    for (const Box& other : each.others) obstacles.push_back({0, other});
    RouteRequest request;
    for (const Side side : each.begin) request.begin.push_back(sideOf(each.from, side));
    for (const Side side : each.end) request.end.push_back(sideOf(each.to, side));
    if (each.begin.empty()) request.begin = everySideOf(each.from);
    if (each.end.empty()) request.end = everySideOf(each.to);
    const Boxes boxes(std::move(obstacles));
    const Route route = findRoute(request, boxes);
    ASSERT_GE(route.line.size(), 2u) << each.name;
    const std::string line = written(route.line);
    EXPECT_FALSE(route.crossesObstacle) << each.name << line;
    for (const Obstacle& obstacle : boxes.all()) EXPECT_FALSE(crosses(route.line, obstacle.box)) << each.name << line;
    EXPECT_EQ(route.line.size() - 2, each.bends) << each.name << line;
    EXPECT_NEAR(lengthOf(route.line), each.length, 1e-6) << each.name << line;
  }
}

TEST(Router, BendsHalfWayAndKeepsItsDistance) {
  const Box from{0, 0, 1, 1}, to{4, 2, 5, 3}, between{1.8, 1, 2.6, 6};
  RouteRequest request;
  request.begin = {sideOf(from, Side::Right)};
  request.end = {sideOf(to, Side::Left)};
  const Route free = findRoute(request, Boxes({{0, from}, {0, to}}));
  EXPECT_EQ(written(free.line), "(1,0.5)(2.5,0.5)(2.5,2.5)(4,2.5)");
  const Route around = findRoute(request, Boxes({{0, from}, {0, to}, {0, between}}));
  EXPECT_EQ(around.line.size(), 4u) << written(around.line);
  EXPECT_FALSE(crosses(around.line, between.grown(0.12, 0.12))) << written(around.line);
}

TEST(Router, RunsBesideOtherLinesAndCrossesThemAtRightAngles) {
  struct WithLine : Boxes {
    WithLine(std::vector<Obstacle> obstacles, Polyline taken, bool related = false)
        : Boxes(std::move(obstacles)), line(std::move(taken)), isRelated(related) {}
    void linesTouching(const Box&, std::vector<OtherLine>& out) const override { out.push_back({line, isRelated}); }
    Polyline line;
    bool isRelated;
  };
  const Box from{0, 0, 1, 1}, to{4, 2, 5, 3};
  RouteRequest request;
  request.begin = {sideOf(from, Side::Right)};
  request.end = {sideOf(to, Side::Left)};
  const std::vector<Obstacle> boxes = {{0, from}, {0, to}};
  EXPECT_EQ(written(findRoute(request, WithLine(boxes, {{2.5, -3}, {2.5, 5}})).line),
            "(1,0.5)(2.625,0.5)(2.625,2.5)(4,2.5)");
  EXPECT_EQ(written(findRoute(request, WithLine(boxes, {{-3, 1.5}, {9, 1.5}})).line),
            "(1,0.5)(2.5,0.5)(2.5,2.5)(4,2.5)");
  // One that leaves by the same port may use the stem, and does not bend to leave it.
  const Polyline stem{{1, 0.5}, {2.5, 0.5}, {2.5, -3}};
  EXPECT_EQ(written(findRoute(request, WithLine(boxes, stem, true)).line), "(1,0.5)(2.5,0.5)(2.5,2.5)(4,2.5)");
  EXPECT_NE(written(findRoute(request, WithLine(boxes, stem)).line), "(1,0.5)(2.5,0.5)(2.5,2.5)(4,2.5)");
  // It also does not bend to run close to it.
  const Box level{4, 0.05, 5, 1.05};
  request.end = {sideOf(level, Side::Left)};
  EXPECT_EQ(written(findRoute(request, WithLine({{0, from}, {0, level}}, stem, true)).line),
            "(1,0.5)(2.5,0.5)(2.5,0.55)(4,0.55)");
}

TEST(Router, CrossesOnlyWhatItMust) {
  const Box from{0, 0, 1, 1}, to{10, 0, 11, 1};
  const std::vector<Box> cage = {
      {8, -3.5, 8.5, 4.5}, {12.5, -3.5, 13, 4.5}, {8.2, 4, 12.7, 4.5}, {8.2, -3.5, 12.7, -3}};
  std::vector<Obstacle> obstacles = {{0, from}, {0, to}, {0, {4, -2, 5, 3}}};
  for (const Box& wall : cage) obstacles.push_back({0, wall});
  RouteRequest request;
  request.begin = everySideOf(from);
  request.end = everySideOf(to);
  const Boxes boxes(obstacles);
  const Route route = findRoute(request, boxes);
  EXPECT_TRUE(route.crossesObstacle);
  int crossed = 0;
  for (const Obstacle& obstacle : boxes.all()) crossed += crosses(route.line, obstacle.box);
  EXPECT_EQ(crossed, 1) << written(route.line);
}

TEST(Router, RunsThroughWhatLetsItThrough) {
  const Box from{0, 0, 1, 1}, to{4, 0, 5, 1}, band{2, -3, 3, 4};
  RouteRequest request;
  request.begin = {sideOf(from, Side::Right)};
  request.end = {sideOf(to, Side::Left)};
  EXPECT_EQ(findRoute(request, Boxes({{0, from}, {0, to}, {0, band, true, false}})).line.size(), 2u);
  EXPECT_EQ(findRoute(request, Boxes({{0, from}, {0, to}, {0, band, false, true}})).line.size(), 6u);
}

/// Whether two places are joined by whole squares that no box covers: boxes lie on whole numbers here.
bool isJoined(const std::vector<Obstacle>& boxes, const std::vector<Port>& begin, const std::vector<Port>& end) {
  constexpr int low = -4, size = 40;
  std::vector<char> covered(size * size, 0), seen(size * size, 0);
  const auto at = [&](int x, int y) { return static_cast<std::size_t>((y - low) * size + x - low); };
  for (const Obstacle& obstacle : boxes) {
    for (int x = int(obstacle.box.left); x < int(obstacle.box.right); ++x) {
      for (int y = int(obstacle.box.bottom); y < int(obstacle.box.top); ++y) covered[at(x, y)] = 1;
    }
  }
  const auto square = [](const Port& port) {
    const double out = 0.5;
    const double x = port.at.x + (port.side == Side::Right ? out : port.side == Side::Left ? -out : 0);
    const double y = port.at.y + (port.side == Side::Top ? out : port.side == Side::Bottom ? -out : 0);
    return std::pair(static_cast<int>(std::floor(x)), static_cast<int>(std::floor(y)));
  };
  std::deque<std::pair<int, int>> open;
  const auto visit = [&](int x, int y) {
    if (x < low || y < low || x >= low + size || y >= low + size || covered[at(x, y)] || seen[at(x, y)]) return;
    seen[at(x, y)] = 1;
    open.emplace_back(x, y);
  };
  for (const Port& port : begin) visit(square(port).first, square(port).second);
  while (!open.empty()) {
    const auto [x, y] = open.front();
    open.pop_front();
    visit(x + 1, y);
    visit(x - 1, y);
    visit(x, y + 1);
    visit(x, y - 1);
  }
  for (const Port& port : end) {
    if (seen[at(square(port).first, square(port).second)]) return true;
  }
  return false;
}

TEST(Router, NeverCrossesWhereAFreeRouteExists) {
  int free = 0, caught = 0;
  for (unsigned seed = 1; seed <= 400; ++seed) {
    std::mt19937 random(seed);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    std::vector<Obstacle> obstacles;
    const int wanted = 2 + below(60);
    for (int i = 0; i < wanted; ++i) {
      // Odd sizes put the middles of sides into the middles of squares.
      const double left = below(28), bottom = below(28);
      const Box box{left, bottom, left + 1 + 2 * below(3), bottom + 1 + 2 * below(3)};
      const bool overlaps = std::any_of(obstacles.begin(), obstacles.end(), [&](const Obstacle& other) {
        return other.box.grown(-0.1, -0.1).touches(box);
      });
      if (!overlaps) obstacles.push_back({0, box});
    }
    if (obstacles.size() < 2) continue;
    RouteRequest request;
    request.clearX = request.clearY = below(2) ? 0.125 : 0.7;
    request.begin = everySideOf(obstacles[0].box);
    request.end = everySideOf(obstacles[1].box);
    if (below(2)) request.begin = {request.begin[static_cast<std::size_t>(below(4))]};
    const Boxes boxes(obstacles);
    const Route route = findRoute(request, boxes);
    ASSERT_GE(route.line.size(), 2u) << "seed " << seed;
    const std::string message = "seed " + std::to_string(seed) + " " + written(route.line);
    EXPECT_TRUE(isRightAngled(route.line)) << message;
    if (route.line.front() == route.line.back()) continue;  // the shapes touch there
    EXPECT_TRUE(leaves(route.line, request.begin[route.beginPort])) << message;
    EXPECT_TRUE(leaves({route.line.rbegin(), route.line.rend()}, request.end[route.endPort])) << message;
    EXPECT_EQ(withoutNeedlessPoints(route.line), route.line) << message;
    bool crossed = false;
    for (const Obstacle& obstacle : boxes.all()) crossed |= crosses(route.line, obstacle.box);
    EXPECT_EQ(crossed, route.crossesObstacle) << message;
    if (isJoined(obstacles, request.begin, request.end)) {
      EXPECT_FALSE(crossed) << message;
      ++free;
    } else {
      ++caught;
    }
  }
  EXPECT_GT(free, 100);
  EXPECT_GT(caught, 0) << "too few layouts have obstacles";
}

TEST(BoxIndex, FindsTheSameAsATestOfEachBox) {
  std::mt19937 random(7);
  const auto number = [&](double limit) { return std::uniform_real_distribution<double>(-limit, limit)(random); };
  BoxIndex index(1.5);
  std::vector<std::pair<std::uint32_t, Box>> boxes;
  for (int step = 0; step < 3000; ++step) {
    const auto id = static_cast<std::uint32_t>(random() % 200);
    std::erase_if(boxes, [&](const auto& entry) { return entry.first == id; });
    const double x = number(50), y = number(50), reach = step % 10 == 0 ? 60 : 3;
    const Box box = Box::around({x, y}, {x + number(reach), y + number(reach)});
    if (step % 4 == 0) {
      index.remove(id);
    } else {
      index.put(id, box);
      boxes.emplace_back(id, box);
    }
    const Box asked = Box::around({number(60), number(60)}, {number(60), number(60)});
    std::vector<std::uint32_t> expected, found;
    for (const auto& [other, its] : boxes) {
      if (its.touches(asked)) expected.push_back(other);
    }
    std::sort(expected.begin(), expected.end());
    index.touching(asked, found);
    ASSERT_EQ(found, expected) << step;
  }
  EXPECT_EQ(index.size(), boxes.size());
}

}  // namespace
}  // namespace quorvel::host
