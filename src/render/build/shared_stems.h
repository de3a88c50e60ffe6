// Lines that leave or reach one place together: their common stem is painted once. Painted over itself it would look
// thicker than a line is, and run through the text on it.
#pragma once

#include <map>
#include <tuple>

#include "render/scene/scene.h"

namespace quorvel::render {

class SharedStems {
 public:
  /// The open line without what lines of the same look before it have painted from its ends on; empty when that is all
  /// of it. Remembers the line.
  Path withoutPainted(const Path& line, const Stroke& stroke);

 private:
  using Key = std::tuple<long long, long long, long long, long long, std::uint32_t, long long>;
  static Key keyOf(Point from, Point direction, const Stroke& stroke);
  /// Takes from the front of the corners what is painted.
  void cutFront(std::vector<Point>& corners, const Stroke& stroke) const;
  void remember(const std::vector<Point>& corners, const Stroke& stroke);

  std::map<Key, double> lengths_;  ///< painted straight on from a place in a direction
};

}  // namespace quorvel::render
