// Reads little-endian numbers in files.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace quorvel {

/// Bytes after the end read as 0.
class LittleEndian {
 public:
  explicit LittleEndian(std::string_view bytes) : bytes_(bytes) {}

  std::size_t size() const { return bytes_.size(); }
  std::uint16_t u16(std::size_t at) const { return static_cast<std::uint16_t>(number(at, 2)); }
  std::int16_t i16(std::size_t at) const { return static_cast<std::int16_t>(number(at, 2)); }
  std::uint32_t u32(std::size_t at) const { return number(at, 4); }
  std::int32_t i32(std::size_t at) const { return static_cast<std::int32_t>(number(at, 4)); }
  std::uint8_t u8(std::size_t at) const { return static_cast<std::uint8_t>(number(at, 1)); }
  float f32(std::size_t at) const {
    const std::uint32_t bits = u32(at);
    float value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
  }
  /// Cut at the end.
  std::string_view part(std::size_t at, std::size_t count) const {
    return at < bytes_.size() ? bytes_.substr(at, count) : std::string_view();
  }

 private:
  std::uint32_t number(std::size_t at, std::size_t count) const {
    if (at > bytes_.size() || count > bytes_.size() - at) return 0;
    std::uint32_t found = 0;
    for (std::size_t i = count; i-- > 0;) found = found << 8 | static_cast<unsigned char>(bytes_[at + i]);
    return found;
  }

  std::string_view bytes_;
};

}  // namespace quorvel
