#include "host/commands/image_file.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <mutex>
#include <system_error>

#include "base/little_endian.h"

namespace quorvel::host {
namespace {

constexpr double dotsPerInch = 96;
constexpr double largestFile = 256.0 * 1024 * 1024;

struct Bytes {
  const std::string& text;
  LittleEndian little{text};
  bool has(std::size_t at, std::size_t count) const { return at <= text.size() && count <= text.size() - at; }
  unsigned at(std::size_t i) const { return static_cast<unsigned char>(text[i]); }
  unsigned big16(std::size_t i) const { return at(i) << 8 | at(i + 1); }
  unsigned big32(std::size_t i) const { return big16(i) << 16 | big16(i + 2); }
};

struct Header {
  const char* compression = nullptr;
  const char* extension = "";
  double pixelsWide = 0, pixelsHigh = 0;
  double dpiX = dotsPerInch, dpiY = dotsPerInch;
  const char* type = "Bitmap";
};

Header readPng(const Bytes& bytes) {
  if (!bytes.has(0, 33)) return {};
  Header header{"PNG", "png", double(bytes.big32(16)), double(bytes.big32(20))};
  for (std::size_t at = 8; bytes.has(at, 12);) {
    const std::size_t length = bytes.big32(at);
    if (!bytes.has(at + 8, length)) break;
    if (bytes.text.compare(at + 4, 4, "pHYs") == 0 && length >= 9 && bytes.at(at + 16) == 1) {
      if (bytes.big32(at + 8) > 0) header.dpiX = bytes.big32(at + 8) * 0.0254;
      if (bytes.big32(at + 12) > 0) header.dpiY = bytes.big32(at + 12) * 0.0254;
    }
    at += 12 + length;
  }
  return header;
}

Header readJpeg(const Bytes& bytes) {
  Header header{"JPEG", "jpg"};
  for (std::size_t at = 2; bytes.has(at, 4);) {
    if (bytes.at(at) != 0xFF) break;
    const unsigned marker = bytes.at(at + 1);
    const std::size_t length = bytes.big16(at + 2);
    if (marker == 0xE0 && bytes.has(at + 4, 12) && bytes.text.compare(at + 4, 4, "JFIF") == 0) {
      const double perInch = bytes.at(at + 11) == 1 ? 1 : bytes.at(at + 11) == 2 ? 2.54 : 0;
      if (perInch > 0 && bytes.big16(at + 12) > 1) {
        header.dpiX = bytes.big16(at + 12) * perInch;
        header.dpiY = bytes.big16(at + 14) * perInch;
      }
    }
    const bool frame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
    if (frame && bytes.has(at, 9)) {
      header.pixelsHigh = bytes.big16(at + 5);
      header.pixelsWide = bytes.big16(at + 7);
      return header;
    }
    at += 2 + (length < 2 ? 2 : length);
  }
  return {};
}

/// The frame that its maker drew in, hundredths of a millimetre.
Header readEnhancedMetafile(const Bytes& bytes) {
  const auto at = [&](std::size_t i) { return double(bytes.little.i32(i)); };
  return {"", "emf", at(32) - at(24), at(36) - at(28), 2540, 2540, "EnhMetaFile"};
}

/// Without the header that places it, a metafile has no size.
Header readWindowsMetafile(const Bytes& bytes) {
  const auto at = [&](std::size_t i) { return double(bytes.little.i16(i)); };
  const double perInch = bytes.little.u16(14);
  if (!(perInch > 0)) return {};
  return {"", "wmf", std::fabs(at(10) - at(6)), std::fabs(at(12) - at(8)), perInch, perInch, "MetaFile"};
}

Header readHeader(const Bytes& bytes) {
  if (bytes.has(0, 88) && bytes.little.u32(0) == 1 && bytes.text.compare(40, 4, " EMF") == 0)
    return readEnhancedMetafile(bytes);
  if (bytes.has(0, 40) && bytes.little.u32(0) == 0x9AC6CDD7) return readWindowsMetafile(bytes);
  if (bytes.text.starts_with("\x89PNG\r\n\x1a\n")) return readPng(bytes);
  if (bytes.text.starts_with("\xFF\xD8")) return readJpeg(bytes);
  if ((bytes.text.starts_with("GIF87a") || bytes.text.starts_with("GIF89a")) && bytes.has(6, 4))
    return {"GIF", "gif", double(bytes.little.u16(6)), double(bytes.little.u16(8))};
  if (bytes.text.starts_with("BM") && bytes.has(18, 8))
    return {"DIB", "bmp", double(bytes.little.u32(18)), std::fabs(double(bytes.little.i32(22)))};
  return {};
}

/// Icons are imported again and again. Kept are those read last, as long as their files have not changed; shapes share
/// their bytes.
class RecentImages {
 public:
  static constexpr std::uintmax_t largest = 64 * 1024;

  struct Stamp {
    std::uintmax_t size = 0;
    std::filesystem::file_time_type time;
    friend bool operator==(const Stamp&, const Stamp&) = default;
  };

  Maybe<ImageFile> find(const std::string& fileName, const Stamp& stamp) {
    const std::lock_guard lock(mutex_);
    const auto found = std::ranges::find(files_, fileName, &Entry::fileName);
    return found != files_.end() && found->stamp == stamp ? Maybe<ImageFile>(found->image) : Maybe<ImageFile>();
  }
  void keep(const std::string& fileName, const Stamp& stamp, const ImageFile& image) {
    constexpr std::size_t most = 32;
    const std::lock_guard lock(mutex_);
    std::erase_if(files_, [&](const Entry& entry) { return entry.fileName == fileName; });
    if (files_.size() == most) files_.pop_front();
    files_.push_back({fileName, stamp, image});
  }

 private:
  struct Entry {
    std::string fileName;
    Stamp stamp;
    ImageFile image;
  };
  std::mutex mutex_;
  std::deque<Entry> files_;
};

ImageFile read(const std::string& fileName) {
  std::ifstream file(fileName, std::ios::binary | std::ios::ate);
  if (!file || file.tellg() <= 0 || double(file.tellg()) > largestFile) return {};
  file.seekg(0);
  std::string bytes{std::istreambuf_iterator<char>(file), {}};
  const Header header = readHeader(Bytes{bytes});
  if (!header.compression || header.pixelsWide <= 0 || header.pixelsHigh <= 0) return {};
  auto data = std::make_shared<ForeignData>();
  data->type = header.type;
  data->compression = header.compression;
  data->extension = header.extension;
  data->bytes = std::move(bytes);
  return {std::move(data), header.pixelsWide / header.dpiX, header.pixelsHigh / header.dpiY};
}

}  // namespace

ImageFile readImageFile(const std::string& name) {
  static RecentImages recentImages;
  std::error_code failed;
  const std::string fileName = std::filesystem::absolute(name, failed).string();
  if (failed) return read(name);
  RecentImages::Stamp stamp{std::filesystem::file_size(fileName, failed), {}};
  if (!failed) stamp.time = std::filesystem::last_write_time(fileName, failed);
  if (failed || stamp.size > RecentImages::largest) return read(fileName);
  if (const Maybe<ImageFile> kept = recentImages.find(fileName, stamp)) return *kept;
  const ImageFile image = read(fileName);
  if (image.data) recentImages.keep(fileName, stamp, image);
  return image;
}

}  // namespace quorvel::host
