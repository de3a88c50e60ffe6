// The zip container of a drawing: read as hostile, written so that equal contents give equal bytes.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "formats/package/packed_bytes.h"

namespace quorvel::formats {

/// Bounds on what a package may hold, so that opening a small file never takes all memory. Saving keeps them too: what
/// would pass one is not written. The defaults allow drawings of some hundred thousand shapes.
struct PackageLimits {
  std::uint64_t entries = 100'000;
  std::uint64_t partBytes = 1ull << 30;   ///< of one part, unpacked; also of a drawing in a single file
  std::uint64_t totalBytes = 1ull << 31;  ///< of all parts together, unpacked
  /// What the XML of a drawing may weigh (see XmlMeasure) in any file …
  std::uint64_t xmlWeight = 1'000'000;
  /// … and also for each byte of the file. Images of one colour are a thousand times as large as their packed
  /// bytes, but XML of a drawing says something new in nearly each element.
  std::uint64_t xmlWeightPerByte = 10;
};

/// An open package. Parts are unpacked when they are asked for, so that only one of the large ones is in memory.
class ZipPackage {
 public:
  ZipPackage();
  ~ZipPackage();
  ZipPackage(const ZipPackage&) = delete;
  ZipPackage& operator=(const ZipPackage&) = delete;

  /// Empty when the package is open; else what is wrong and what to do, as the end of a sentence that begins with the
  /// file's name: "cannot be opened because …; …".
  std::string open(const std::string& fileName, const PackageLimits& limits = {});

  /// Absolute names ("/visio/document.xml") in the order of the file.
  const std::vector<std::string>& names() const { return names_; }
  bool has(std::string_view part) const;
  /// Unpacks the part. False when it is missing, damaged or other than the directory says, and when a limit is passed.
  bool read(std::string_view part, std::string& bytes) const;
  /// The same for a part that is going to be parsed.
  bool readXml(std::string_view part, std::string& bytes) const;
  /// Takes the part as it is packed, once it is sure that it unpacks. False as above.
  bool readPacked(std::string_view part, PackedBytes& bytes) const;
  /// True once a read passed a limit: the file is no drawing, and none of it is to be kept.
  bool isPastLimit() const { return isPastLimit_; }

 private:
  struct Handle;
  /// Unpacks into `plain` unless it is null.
  bool take(std::string_view part, std::string* plain, PackedBytes* packed) const;

  std::unique_ptr<Handle> handle_;
  std::vector<std::string> names_;
  PackageLimits limits_;
  std::uint64_t fileBytes_ = 0;
  mutable std::uint64_t unpacked_ = 0, xmlWeight_ = 0;  ///< so far, of all reads
  mutable bool isPastLimit_ = false;
};

/// The end of a sentence about a file that passes a limit.
inline constexpr std::string_view isPastLimits =
    "unpacks to far more than a drawing needs; do not open it if you do not trust its sender";

struct ZipEntry {
  std::string name;  ///< without a leading "/"
  std::string bytes;
  const PackedBytes* packed = nullptr;  ///< these instead of `bytes`, and as they are
};

/// The bytes of a zip file with the entries in this order, all with the same fixed time; `packed` false leaves them at
/// their size, which is far quicker. Empty when memory runs out.
std::string makeZip(const std::vector<ZipEntry>& entries, bool packed = true);

}  // namespace quorvel::formats
