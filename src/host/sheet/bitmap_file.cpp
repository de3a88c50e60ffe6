#include "host/sheet/bitmap_file.h"

#include <cstdint>
#include <cstdlib>

#include "base/little_endian.h"

namespace quorvel::host {
namespace {

constexpr std::size_t fileHeaderSize = 14;

bool isBitmap(const LittleEndian& bytes) { return bytes.size() >= 40 && bytes.u32(0) >= 40 && bytes.u32(0) <= 124; }

}  // namespace

std::string bitmapFile(std::string_view bytes) {
  const LittleEndian numbers(bytes);
  if (!isBitmap(numbers)) return {};
  const std::uint32_t header = numbers.u32(0), bits = numbers.u16(14), compression = numbers.u32(16);
  std::uint64_t colours = numbers.u32(32);
  if (colours == 0 && bits <= 8) colours = 1u << bits;
  const std::uint64_t masks = header == 40 && compression == 3 ? 12 : 0;
  const std::uint64_t pixels = fileHeaderSize + header + masks + colours * 4;
  if (pixels > bytes.size() + fileHeaderSize) return {};
  std::string file = "BM";
  const auto put = [&](std::uint64_t number) {
    for (int i = 0; i < 4; ++i) file += static_cast<char>(number >> (8 * i) & 255);
  };
  put(bytes.size() + fileHeaderSize);
  put(0);
  put(pixels);
  return file.append(bytes);
}

std::string_view withoutBitmapHeader(std::string_view file) {
  const bool hasHeader =
      file.starts_with("BM") && file.size() > fileHeaderSize && isBitmap(LittleEndian(file.substr(fileHeaderSize)));
  return hasHeader ? file.substr(fileHeaderSize) : file;
}

BitmapSize bitmapSize(std::string_view bytes) {
  const LittleEndian numbers(bytes);
  if (!isBitmap(numbers)) return {};
  const auto bounded = [](std::int32_t size) { return size > -32768 && size < 32768 ? std::abs(size) : 0; };
  return {bounded(numbers.i32(4)), bounded(numbers.i32(8))};
}

}  // namespace quorvel::host
