#include "formats/vdx/image_bytes.h"

#include <array>
#include <cstdint>

namespace quorvel::formats::vdx {
namespace {

constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

}  // namespace

std::string toBase64(std::string_view bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
    std::uint32_t bits = 0;
    for (std::size_t k = 0; k < 3; ++k) bits = bits << 8 | (k < count ? static_cast<unsigned char>(bytes[i + k]) : 0u);
    for (std::size_t k = 0; k < 4; ++k) text += k <= count ? letters[bits >> (18 - 6 * k) & 63] : '=';
  }
  return text;
}

Maybe<std::string> fromBase64(std::string_view text) {
  std::array<int, 256> values;
  values.fill(-1);
  for (std::size_t i = 0; i < letters.size(); ++i) values[static_cast<unsigned char>(letters[i])] = static_cast<int>(i);
  std::string bytes;
  bytes.reserve(text.size() / 4 * 3);
  std::uint32_t bits = 0;
  int count = 0;
  bool ended = false;
  for (const char c : text) {
    if (c == ' ' || c == '\t' || c == '\r' || c == '\n') continue;
    if (c == '=') {
      ended = true;
      continue;
    }
    const int value = values[static_cast<unsigned char>(c)];
    if (value < 0 || ended) return {};
    bits = bits << 6 | static_cast<std::uint32_t>(value);
    if (++count % 4 == 0) {
      bytes += static_cast<char>(bits >> 16 & 0xFF);
      bytes += static_cast<char>(bits >> 8 & 0xFF);
      bytes += static_cast<char>(bits & 0xFF);
      bits = 0;
    }
  }
  if (count % 4 == 1) return {};
  if (count % 4 == 2) bytes += static_cast<char>(bits >> 4 & 0xFF);
  if (count % 4 == 3) {
    bytes += static_cast<char>(bits >> 10 & 0xFF);
    bytes += static_cast<char>(bits >> 2 & 0xFF);
  }
  return bytes;
}

std::string extensionOf(std::string_view foreignType, std::string_view compression) {
  if (foreignType == "EnhMetaFile") return "emf";
  if (foreignType == "MetaFile") return "wmf";
  if (foreignType != "Bitmap") return "bin";
  if (compression == "PNG") return "png";
  if (compression == "JPEG") return "jpg";
  if (compression == "GIF") return "gif";
  if (compression == "TIFF") return "tif";
  return "bmp";
}

}  // namespace quorvel::formats::vdx
