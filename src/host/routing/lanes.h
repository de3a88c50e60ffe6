// The lines of a grid on which a way is looked for: at a distance beside shapes, between them, and through the ports.
#pragma once

#include <vector>

#include "host/routing/route_request.h"

namespace quorvel::host {

/// Level and upright lines, what is in the way between them, and how much each is to be liked.
class Lanes {
 public:
  enum class Detail : std::uint8_t {
    Usual,  ///< lines that keep the distance, and the middle of passages too narrow for it
    Every,  ///< also the borders of shapes: if there is a way at all, there is one on these lines
  };
  enum GroupTransform : std::uint8_t { Free, Near, Blocked };
  enum Use : std::uint8_t {
    Unused,
    Shared,  ///< on a related line
    Beside,  ///< nearer to a related line than lines keep from each other, and not on it
    Taken
  };

  Lanes(const RouteRequest& request, const std::vector<Obstacle>& obstacles, const std::vector<OtherLine>& taken,
        Detail detail);

  std::size_t columns() const { return xs_.size(); }
  std::size_t rows() const { return ys_.size(); }
  double x(std::size_t column) const { return xs_[column].at; }
  double y(std::size_t row) const { return ys_[row].at; }
  /// Factors just above 1: of two ways of one length the one through the middle is taken.
  double likingOfColumn(std::size_t column) const { return xs_[column].liking; }
  double likingOfRow(std::size_t row) const { return ys_[row].liking; }
  std::size_t columnAt(double x) const { return nearest(xs_, x); }
  std::size_t rowAt(double y) const { return nearest(ys_, y); }
  /// From the crossing to the next one right, or the next one up.
  GroupTransform toTheRight(std::size_t column, std::size_t row) const {
    return static_cast<GroupTransform>(level_[row * columns() + column]);
  }
  GroupTransform upward(std::size_t column, std::size_t row) const {
    return static_cast<GroupTransform>(upright_[row * columns() + column]);
  }
  /// What exists there already.
  Use useToTheRight(std::size_t column, std::size_t row) const {
    return static_cast<Use>(usedLevel_[row * columns() + column]);
  }
  Use useUpward(std::size_t column, std::size_t row) const {
    return static_cast<Use>(usedUpright_[row * columns() + column]);
  }

 private:
  struct Line {
    double at = 0, liking = 1;
  };
  void collect(const RouteRequest& request, const std::vector<Obstacle>& obstacles, Detail detail);
  void collectNarrow(const RouteRequest& request, const std::vector<Obstacle>& obstacles);
  void collectBeside(const std::vector<OtherLine>& taken, double clearX, double clearY);
  void mark(const Obstacle& obstacle, double clearX, double clearY);
  void markUsed(const Point& from, const Point& to, Use use);
  void markBeside(const Point& from, const Point& to, double clearX, double clearY);
  static void settle(std::vector<Line>& lines);
  static std::size_t nearest(const std::vector<Line>& lines, double at);

  std::vector<Line> xs_, ys_;
  std::vector<std::uint8_t> level_, upright_, usedLevel_, usedUpright_;
};

}  // namespace quorvel::host
