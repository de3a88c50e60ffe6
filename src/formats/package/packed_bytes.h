// Bytes held as a zip file packs them, so that carrying a part costs what it weighs there.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace quorvel::formats {

class PackedBytes {
 public:
  PackedBytes() = default;
  /// Bytes that are not packed.
  PackedBytes(std::string plain) : held_(std::move(plain)), size_(held_.size()) {}
  /// Deflated bytes, with the size and checksum (CRC-32) of what they unpack to.
  PackedBytes(std::string deflated, std::uint64_t size, std::uint32_t checksum)
      : held_(std::move(deflated)), size_(size), checksum_(checksum), isDeflated_(true) {}

  /// Unpacked, in bytes.
  std::uint64_t size() const { return size_; }
  /// Empty when they are damaged.
  std::string unpacked() const;

  bool isDeflated() const { return isDeflated_; }
  const std::string& held() const { return held_; }
  std::uint32_t checksum() const { return checksum_; }

 private:
  std::string held_;
  std::uint64_t size_ = 0;
  std::uint32_t checksum_ = 0;
  bool isDeflated_ = false;
};

struct Unpacking {
  bool isWhole = false;    ///< the packed bytes ended
  bool isTooLong = false;  ///< there was more than the limit; the rest was left
  std::uint64_t size = 0;  ///< of the unpacked bytes
  std::uint32_t checksum = 0;
};

/// Unpacks deflated bytes, measuring while it does. A null `bytes` only measures; else they are put there.
Unpacking unpack(std::string_view deflated, std::uint64_t limit, std::string* bytes);
std::uint32_t checksumOf(std::string_view bytes);

}  // namespace quorvel::formats
