// Numbers in the byte order of the older office formats, lowest byte first.
#pragma once

#include <cstdint>
#include <string_view>

namespace quorvel::formats {

// The number at `place`; all of its bytes must lie in `bytes`.

inline std::uint16_t word16At(std::string_view bytes, std::size_t place) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[place + i]); };
  return static_cast<std::uint16_t>(byte(0) | byte(1) << 8);
}

inline std::uint32_t word32At(std::string_view bytes, std::size_t place) {
  return word16At(bytes, place) | std::uint32_t(word16At(bytes, place + 2)) << 16;
}

}  // namespace quorvel::formats
