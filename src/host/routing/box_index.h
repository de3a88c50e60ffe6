// Boxes found by place: what touches a box is asked of a few squares of a grid, not of every box.
#pragma once

#include <cstdint>
#include <functional>
#include <unordered_map>
#include <vector>

#include "host/routing/plane.h"

namespace quorvel::host {

class BoxIndex {
 public:
  /// `square`: length of a side of the grid's squares; about the size of a usual box serves best.
  explicit BoxIndex(double square = 2) : square_(square) {}

  /// Puts the box under the number, in place of the one it had.
  void put(std::uint32_t number, const Box& box);
  void remove(std::uint32_t number);
  /// Null for a number without a box.
  const Box* find(std::uint32_t number) const;
  /// Appends the numbers whose boxes touch `box`, each once, in rising order.
  void touching(const Box& box, std::vector<std::uint32_t>& out) const;
  /// Whether `isMet` holds for a box that touches `box`; asked until it does, of some boxes more than once.
  bool any(const Box& box, const std::function<bool(std::uint32_t number, const Box& its)>& isMet) const;
  std::size_t size() const { return boxes_.size(); }

 private:
  struct Squares {
    std::int64_t left, bottom, right, top;
  };
  Squares squaresOf(const Box& box) const;
  /// A box over more squares than this is kept in a list of its own.
  static bool isLarge(const Squares& squares);
  static std::uint64_t key(std::int64_t x, std::int64_t y) {
    return (static_cast<std::uint64_t>(x) << 32) ^ (static_cast<std::uint64_t>(y) & 0xFFFFFFFFu);
  }

  double square_;
  std::unordered_map<std::uint32_t, Box> boxes_;
  std::unordered_map<std::uint64_t, std::vector<std::uint32_t>> squares_;
  std::vector<std::uint32_t> large_;
};

}  // namespace quorvel::host
