#include "host/routing/lanes.h"

#include <cmath>

namespace quorvel::host {
namespace {

/// Lines nearer to each other than this are one, and a line this near to a border runs along it.
constexpr double epsilon = 1e-6;
constexpr double middleLiking = 1, portLiking = 1.001, parallelLiking = 1.0015, besideLiking = 1.002,
                 borderLiking = 1.05;

}  // namespace

Lanes::Lanes(const RouteRequest& request, const std::vector<Obstacle>& obstacles, const std::vector<OtherLine>& taken,
             Detail detail) {
  collect(request, obstacles, detail);
  collectBeside(taken, request.clearX, request.clearY);
  settle(xs_);
  settle(ys_);
  level_.assign(columns() * rows(), Free);
  upright_.assign(columns() * rows(), Free);
  for (const Obstacle& obstacle : obstacles) mark(obstacle, request.clearX, request.clearY);
  usedLevel_.assign(columns() * rows(), Unused);
  usedUpright_.assign(columns() * rows(), Unused);
  for (const OtherLine& other : taken) {
    for (std::size_t i = 1; i < other.line.size(); ++i) {
      markUsed(other.line[i - 1], other.line[i], other.isRelated ? Shared : Taken);
      if (other.isRelated) markBeside(other.line[i - 1], other.line[i], request.clearX, request.clearY);
    }
  }
}

/// Next to an existing line, so that two run side by side.
void Lanes::collectBeside(const std::vector<OtherLine>& taken, double clearX, double clearY) {
  for (const auto& [line, isRelated] : taken) {
    for (std::size_t i = 1; i < line.size() && !isRelated; ++i) {
      const Point &a = line[i - 1], &b = line[i];
      if (std::fabs(a.x - b.x) < epsilon) {
        for (const double x : {a.x - clearX, a.x + clearX}) xs_.push_back({x, parallelLiking});
      } else if (std::fabs(a.y - b.y) < epsilon) {
        for (const double y : {a.y - clearY, a.y + clearY}) ys_.push_back({y, parallelLiking});
      }
    }
  }
}

/// Pieces of the grid on a level or upright line.
void Lanes::markUsed(const Point& from, const Point& to, Use use) {
  const Box piece = Box::around(from, to);
  const auto raise = [use](std::uint8_t& used) { used = std::max<std::uint8_t>(used, use); };
  if (piece.height() < epsilon) {
    const std::size_t row = rowAt(from.y);
    if (std::fabs(y(row) - from.y) > 10 * epsilon) return;
    for (std::size_t column = 0; column + 1 < columns(); ++column) {
      if (x(column) < piece.right - epsilon && x(column + 1) > piece.left + epsilon)
        raise(usedLevel_[row * columns() + column]);
    }
  } else if (piece.width() < epsilon) {
    const std::size_t column = columnAt(from.x);
    if (std::fabs(x(column) - from.x) > 10 * epsilon) return;
    for (std::size_t row = 0; row + 1 < rows(); ++row) {
      if (y(row) < piece.top - epsilon && y(row + 1) > piece.bottom + epsilon)
        raise(usedUpright_[row * columns() + column]);
    }
  }
}

/// Pieces of the grid along a level or upright line that are too near to it to be distinguished from it.
void Lanes::markBeside(const Point& from, const Point& to, double clearX, double clearY) {
  const Box piece = Box::around(from, to);
  const auto mark = [](std::uint8_t& used) { used = std::max<std::uint8_t>(used, Beside); };
  const auto isBeside = [](double at, double line, double clear) {
    const double distance = std::fabs(at - line);
    return distance > 10 * epsilon && distance < clear - epsilon;
  };
  if (piece.height() < epsilon) {
    for (std::size_t row = 0; row < rows(); ++row) {
      if (!isBeside(y(row), from.y, clearY)) continue;
      for (std::size_t column = 0; column + 1 < columns(); ++column) {
        if (x(column) < piece.right - epsilon && x(column + 1) > piece.left + epsilon)
          mark(usedLevel_[row * columns() + column]);
      }
    }
  } else if (piece.width() < epsilon) {
    for (std::size_t column = 0; column < columns(); ++column) {
      if (!isBeside(x(column), from.x, clearX)) continue;
      for (std::size_t row = 0; row + 1 < rows(); ++row) {
        if (y(row) < piece.top - epsilon && y(row + 1) > piece.bottom + epsilon)
          mark(usedUpright_[row * columns() + column]);
      }
    }
  }
}

void Lanes::collect(const RouteRequest& request, const std::vector<Obstacle>& obstacles, Detail detail) {
  for (const auto* ports : {&request.begin, &request.end}) {
    for (const Port& port : *ports) {
      xs_.push_back({port.exit.x, portLiking});
      ys_.push_back({port.exit.y, portLiking});
      const double out = port.side == Side::Right || port.side == Side::Top ? 1 : -1;
      if (isSideways(port.side)) {
        xs_.push_back({port.exit.x + out * request.clearX, besideLiking});
      } else {
        ys_.push_back({port.exit.y + out * request.clearY, besideLiking});
      }
    }
  }
  // Half way between sides that face each other.
  for (const Port& from : request.begin) {
    for (const Port& to : request.end) {
      if (to.side != opposite(from.side)) continue;
      if (isSideways(from.side)) {
        xs_.push_back({(from.exit.x + to.exit.x) / 2, middleLiking});
      } else {
        ys_.push_back({(from.exit.y + to.exit.y) / 2, middleLiking});
      }
    }
  }
  for (const Obstacle& obstacle : obstacles) {
    const Box& box = obstacle.box;
    for (const double x : {box.left - request.clearX, box.right + request.clearX}) xs_.push_back({x, besideLiking});
    for (const double y : {box.bottom - request.clearY, box.top + request.clearY}) ys_.push_back({y, besideLiking});
    if (detail != Detail::Every) continue;
    for (const double x : {box.left, box.right}) xs_.push_back({x, borderLiking});
    for (const double y : {box.bottom, box.top}) ys_.push_back({y, borderLiking});
  }
  collectNarrow(request, obstacles);
}

/// The middle of a passage between two shapes that is too narrow to keep the distance from both.
void Lanes::collectNarrow(const RouteRequest& request, const std::vector<Obstacle>& obstacles) {
  const double narrowX = 2 * request.clearX, narrowY = 2 * request.clearY;
  for (const Obstacle& first : obstacles) {
    for (const Obstacle& second : obstacles) {
      const Box &a = first.box, &b = second.box;
      const double gapX = b.left - a.right, gapY = b.bottom - a.top;
      const bool besides = b.bottom - a.top < narrowY && a.bottom - b.top < narrowY;
      const bool above = b.left - a.right < narrowX && a.left - b.right < narrowX;
      if (gapX > epsilon && gapX < narrowX && besides) xs_.push_back({(a.right + b.left) / 2, besideLiking});
      if (gapY > epsilon && gapY < narrowY && above) ys_.push_back({(a.top + b.bottom) / 2, besideLiking});
    }
  }
}

void Lanes::settle(std::vector<Line>& lines) {
  std::sort(lines.begin(), lines.end(), [](const Line& a, const Line& b) { return a.at < b.at; });
  std::vector<Line> settled;
  for (const Line& line : lines) {
    if (settled.empty() || line.at - settled.back().at > epsilon) {
      settled.push_back(line);
    } else {
      settled.back().liking = std::min(settled.back().liking, line.liking);
    }
  }
  lines = std::move(settled);
}

std::size_t Lanes::nearest(const std::vector<Line>& lines, double at) {
  const auto above =
      std::lower_bound(lines.begin(), lines.end(), at, [](const Line& line, double x) { return line.at < x; });
  if (above == lines.begin()) return 0;
  const auto below = above - 1;
  const bool up = above != lines.end() && above->at - at < at - below->at;
  return static_cast<std::size_t>((up ? above : below) - lines.begin());
}

void Lanes::mark(const Obstacle& obstacle, double clearX, double clearY) {
  const auto within = [](const std::vector<Line>& lines, double low, double high) {
    const auto from =
        std::lower_bound(lines.begin(), lines.end(), low, [](const Line& l, double x) { return l.at < x; });
    const auto to =
        std::upper_bound(lines.begin(), lines.end(), high, [](double x, const Line& l) { return x < l.at; });
    return std::pair(static_cast<std::size_t>(from - lines.begin()), static_cast<std::size_t>(to - lines.begin()));
  };
  const auto fill = [&](const Box& box, GroupTransform transform, bool level, bool upright) {
    const auto [innerX, endX] = within(xs_, box.left + epsilon, box.right - epsilon);
    const auto [innerY, endY] = within(ys_, box.bottom + epsilon, box.top - epsilon);
    // An edge runs through the box when it starts or ends inside, so it begins one line earlier.
    const std::size_t firstX = innerX > 0 ? innerX - 1 : 0, firstY = innerY > 0 ? innerY - 1 : 0;
    const auto raise = [&](std::uint8_t& cell) { cell = std::max<std::uint8_t>(cell, transform); };
    if (level) {
      for (std::size_t row = innerY; row < endY; ++row) {
        for (std::size_t column = firstX; column < endX; ++column) {
          if (x(column) < box.right - epsilon && column + 1 < columns() && x(column + 1) > box.left + epsilon)
            raise(level_[row * columns() + column]);
        }
      }
    }
    if (upright) {
      for (std::size_t row = firstY; row < endY; ++row) {
        if (!(y(row) < box.top - epsilon && row + 1 < rows() && y(row + 1) > box.bottom + epsilon)) continue;
        for (std::size_t column = innerX; column < endX; ++column) raise(upright_[row * columns() + column]);
      }
    }
  };
  fill(obstacle.box.grown(clearX, clearY), Near, !obstacle.passSideways, !obstacle.passUpright);
  fill(obstacle.box, Blocked, !obstacle.passSideways, !obstacle.passUpright);
}

}  // namespace quorvel::host
