#include "session/button_face.h"

#include <cstdint>
#include <cstdlib>

namespace quorvel {
namespace {

/// Numbers of a bitmap file, the lowest byte first. Bytes behind the end read as 0.
class Bytes {
 public:
  explicit Bytes(std::string_view bytes) : bytes_(bytes) {}
  std::uint32_t number(std::size_t at, std::size_t size) const {
    std::uint32_t value = 0;
    for (std::size_t i = size; i-- > 0;) {
      const bool isThere = at + i < bytes_.size();
      value = value << 8 | (isThere ? static_cast<unsigned char>(bytes_[at + i]) : 0U);
    }
    return value;
  }
  std::size_t size() const { return bytes_.size(); }

 private:
  std::string_view bytes_;
};

// Places in the two headers of a bitmap file.
constexpr std::size_t pixelsAt = 10, widthAt = 18, heightAt = 22, bitsAt = 28, compressionAt = 30;
constexpr std::size_t bytesOfColour = 3, rowAlignment = 4;
constexpr std::int32_t largest = 256;

std::uint32_t withoutOrder(std::uint32_t blueGreenRed) {
  return (blueGreenRed & 0xFF) << 16 | (blueGreenRed & 0xFF00) | (blueGreenRed >> 16 & 0xFF);
}

}  // namespace

Maybe<host::ButtonFace> buttonFace(std::string_view bitmap, unsigned transparentColour) {
  const Bytes bytes(bitmap);
  const auto width = static_cast<std::int32_t>(bytes.number(widthAt, 4));
  const auto height = static_cast<std::int32_t>(bytes.number(heightAt, 4));
  const std::uint32_t bits = bytes.number(bitsAt, 2), start = bytes.number(pixelsAt, 4);
  const bool isKnown = bitmap.starts_with("BM") && (bits == 24 || bits == 32) && bytes.number(compressionAt, 4) == 0;
  if (!isKnown || width < 1 || width > largest || height == 0 || height > largest || height < -largest) return {};
  const std::size_t pixel = bits / 8, columns = static_cast<std::size_t>(width),
                    rows = static_cast<std::size_t>(std::abs(height));
  const std::size_t stride = (columns * pixel + rowAlignment - 1) / rowAlignment * rowAlignment;
  if (start > bytes.size() || bytes.size() - start < stride * rows) return {};
  host::ButtonFace face;
  face.width = width;
  face.height = static_cast<int>(rows);
  const std::uint32_t transparent = withoutOrder(transparentColour);
  for (std::size_t row = 0; row < rows; ++row) {
    // The lowest row comes first, unless the height is negative.
    const std::size_t stored = height > 0 ? rows - 1 - row : row;
    for (std::size_t column = 0; column < columns; ++column) {
      const std::uint32_t colour = bytes.number(start + stored * stride + column * pixel, bytesOfColour);
      face.colours.push_back(colour);
      face.mask.push_back(colour == transparent);
    }
  }
  return face;
}

}  // namespace quorvel
