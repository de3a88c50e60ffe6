#include "render/build/image.h"

#include <cstdint>
#include <cstring>

#include "render/build/metafile.h"

namespace quorvel::render {
namespace {

std::uint32_t littleEndian(const std::string& bytes, std::size_t at, int count) {
  std::uint32_t number = 0;
  for (int i = count - 1; i >= 0; --i) number = number << 8 | static_cast<unsigned char>(bytes[at + std::size_t(i)]);
  return number;
}

/// A bitmap as drawings embed it lacks the file header; empty when it is none.
std::string withBitmapHeader(const std::string& bytes) {
  if (bytes.size() < 40 || littleEndian(bytes, 0, 4) < 40 || littleEndian(bytes, 0, 4) > 124) return {};
  const std::uint32_t header = littleEndian(bytes, 0, 4), bits = littleEndian(bytes, 14, 2);
  const std::uint32_t compression = littleEndian(bytes, 16, 4);
  std::uint64_t colours = littleEndian(bytes, 32, 4);
  if (colours == 0 && bits <= 8) colours = 1u << bits;
  const std::uint64_t masks = header == 40 && compression == 3 ? 12 : 0;
  const std::uint64_t pixels = 14 + header + masks + colours * 4;
  if (pixels > bytes.size() + 14) return {};
  std::string file = "BM";
  const auto put = [&](std::uint64_t number) {
    for (int i = 0; i < 4; ++i) file += static_cast<char>(number >> (8 * i) & 255);
  };
  put(bytes.size() + 14);
  put(0);
  put(pixels);
  return file + bytes;
}

}  // namespace

Picture pictureOf(const host::ForeignData& foreign) {
  const std::string& bytes = foreign.bytes;
  const auto startsWith = [&](std::string_view magic) { return bytes.compare(0, magic.size(), magic) == 0; };
  const auto given = [&](const char* type) { return Picture{type, std::make_shared<std::string>(bytes), {}}; };
  // The content tells more reliably than what the file says about it.
  if (startsWith("\x89PNG")) return given("image/png");
  if (startsWith("\xFF\xD8\xFF")) return given("image/jpeg");
  if (startsWith("GIF8")) return given("image/gif");
  if (startsWith("BM")) return given("image/bmp");
  if (startsWith(std::string_view("II*\0", 4)) || startsWith(std::string_view("MM\0*", 4))) return given("image/tiff");
  if (foreign.type == "Bitmap" || foreign.compression == "DIB")
    if (std::string file = withBitmapHeader(bytes); !file.empty())
      return {"image/bmp", std::make_shared<std::string>(std::move(file)), {}};
  return {{}, nullptr, metafilePaths(bytes)};
}

}  // namespace quorvel::render
