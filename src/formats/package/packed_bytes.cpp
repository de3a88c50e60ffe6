#include "formats/package/packed_bytes.h"

#include <zlib.h>

#include <algorithm>
#include <vector>

namespace quorvel::formats {
namespace {

/// What zlib takes in one call is counted in 32 bits.
constexpr std::size_t largestBite = 1u << 30;

std::uint32_t withMore(std::uint32_t checksum, std::string_view bytes) {
  while (!bytes.empty()) {
    const std::string_view bite = bytes.substr(0, largestBite);
    checksum = static_cast<std::uint32_t>(
        crc32(checksum, reinterpret_cast<const Bytef*>(bite.data()), static_cast<uInt>(bite.size())));
    bytes.remove_prefix(bite.size());
  }
  return checksum;
}

}  // namespace

std::string PackedBytes::unpacked() const {
  if (!isDeflated_) return held_;
  std::string bytes;
  bytes.reserve(size_);
  const Unpacking result = unpack(held_, size_, &bytes);
  if (!result.isWhole || result.size != size_ || result.checksum != checksum_) bytes.clear();
  return bytes;
}

Unpacking unpack(std::string_view deflated, std::uint64_t limit, std::string* bytes) {
  Unpacking result;
  z_stream stream{};
  if (inflateInit2(&stream, -MAX_WBITS) != Z_OK) return result;
  std::vector<char> buffer(256 << 10);
  int status = Z_OK;
  while (status == Z_OK || status == Z_BUF_ERROR) {
    if (stream.avail_in == 0) {
      if (deflated.empty()) break;
      const std::string_view bite = deflated.substr(0, largestBite);
      stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bite.data()));
      stream.avail_in = static_cast<uInt>(bite.size());
      deflated.remove_prefix(bite.size());
    }
    do {
      stream.next_out = reinterpret_cast<Bytef*>(buffer.data());
      stream.avail_out = static_cast<uInt>(buffer.size());
      status = inflate(&stream, Z_NO_FLUSH);
      const std::string_view out(buffer.data(), buffer.size() - stream.avail_out);
      result.size += out.size();
      result.isTooLong = result.size > limit;
      if (result.isTooLong) break;
      result.checksum = withMore(result.checksum, out);
      if (bytes) bytes->append(out);
    } while (status == Z_OK && stream.avail_out == 0);
    if (result.isTooLong) break;
  }
  inflateEnd(&stream);
  result.isWhole = status == Z_STREAM_END && !result.isTooLong;
  return result;
}

std::uint32_t checksumOf(std::string_view bytes) { return withMore(0, bytes); }

}  // namespace quorvel::formats
