#include "host/routing/box_index.h"

#include <algorithm>
#include <cmath>

namespace quorvel::host {

BoxIndex::Squares BoxIndex::squaresOf(const Box& box) const {
  // Far beyond any page, so that a hostile coordinate does not overflow.
  constexpr double limit = 1e9;
  const auto square = [&](double at) {
    return static_cast<std::int64_t>(std::floor(std::clamp(std::isnan(at) ? 0 : at / square_, -limit, limit)));
  };
  return {square(box.left), square(box.bottom), square(box.right), square(box.top)};
}

bool BoxIndex::isLarge(const Squares& squares) {
  constexpr std::int64_t most = 8;
  return squares.right - squares.left > most || squares.top - squares.bottom > most;
}

void BoxIndex::put(std::uint32_t number, const Box& box) {
  remove(number);
  boxes_.emplace(number, box);
  const Squares squares = squaresOf(box);
  if (isLarge(squares)) {
    large_.push_back(number);
    return;
  }
  for (std::int64_t x = squares.left; x <= squares.right; ++x) {
    for (std::int64_t y = squares.bottom; y <= squares.top; ++y) squares_[key(x, y)].push_back(number);
  }
}

void BoxIndex::remove(std::uint32_t number) {
  const auto found = boxes_.find(number);
  if (found == boxes_.end()) return;
  const Squares squares = squaresOf(found->second);
  boxes_.erase(found);
  if (isLarge(squares)) {
    std::erase(large_, number);
    return;
  }
  for (std::int64_t x = squares.left; x <= squares.right; ++x) {
    for (std::int64_t y = squares.bottom; y <= squares.top; ++y) {
      const auto square = squares_.find(key(x, y));
      std::erase(square->second, number);
      if (square->second.empty()) squares_.erase(square);
    }
  }
}

const Box* BoxIndex::find(std::uint32_t number) const {
  const auto found = boxes_.find(number);
  return found == boxes_.end() ? nullptr : &found->second;
}

bool BoxIndex::any(const Box& box, const std::function<bool(std::uint32_t number, const Box& its)>& isMet) const {
  const Squares squares = squaresOf(box);
  const double asked = double(squares.right - squares.left + 1) * double(squares.top - squares.bottom + 1);
  const auto holds = [&](std::uint32_t number, const Box& its) { return its.touches(box) && isMet(number, its); };
  if (asked > double(squares_.size()))
    return std::any_of(boxes_.begin(), boxes_.end(),
                       [&](const auto& entry) { return holds(entry.first, entry.second); });
  const auto anyOf = [&](const std::vector<std::uint32_t>& numbers) {
    return std::any_of(numbers.begin(), numbers.end(),
                       [&](std::uint32_t number) { return holds(number, boxes_.at(number)); });
  };
  if (anyOf(large_)) return true;
  for (std::int64_t x = squares.left; x <= squares.right; ++x) {
    for (std::int64_t y = squares.bottom; y <= squares.top; ++y) {
      const auto square = squares_.find(key(x, y));
      if (square != squares_.end() && anyOf(square->second)) return true;
    }
  }
  return false;
}

void BoxIndex::touching(const Box& box, std::vector<std::uint32_t>& out) const {
  const std::size_t from = out.size();
  any(box, [&](std::uint32_t number, const Box&) {
    out.push_back(number);
    return false;
  });
  std::sort(out.begin() + static_cast<std::ptrdiff_t>(from), out.end());
  out.erase(std::unique(out.begin() + static_cast<std::ptrdiff_t>(from), out.end()), out.end());
}

}  // namespace quorvel::host
