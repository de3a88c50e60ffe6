// Numbers that name things of one kind and cannot be mixed with numbers of another.
#pragma once

#include <compare>
#include <cstdint>
#include <functional>

namespace quorvel {

/// A number that names one thing of the kind `Tag`. 0 names nothing.
template <class Tag>
struct StrongId {
  std::uint32_t value = 0;

  constexpr explicit operator bool() const { return value != 0; }
  friend constexpr auto operator<=>(StrongId, StrongId) = default;
};

}  // namespace quorvel

template <class Tag>
struct std::hash<quorvel::StrongId<Tag>> {
  std::size_t operator()(quorvel::StrongId<Tag> id) const noexcept { return std::hash<std::uint32_t>{}(id.value); }
};
