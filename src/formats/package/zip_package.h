// The zip container of a drawing: read as hostile, written so that equal contents give equal bytes.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel::formats {

/// Bounds on what a package may hold. The defaults leave room for drawings of a hundred thousand shapes.
struct PackageLimits {
  std::uint64_t entries = 20'000;
  std::uint64_t partBytes = 1ull << 30;         ///< of one part, unpacked
  std::uint64_t totalBytes = 3ull << 29;        ///< of all parts together, unpacked
  std::uint64_t unboundedRatioBytes = 4 << 20;  ///< a part below this may be packed as tightly as it likes
  std::uint64_t ratio = 200;                    ///< largest share of unpacked to packed bytes of a larger part
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
  /// Unpacks the part. False when it is missing, damaged or longer than the directory says.
  bool read(std::string_view part, std::string& bytes) const;

 private:
  struct Handle;
  std::unique_ptr<Handle> handle_;
  std::vector<std::string> names_;
};

struct ZipEntry {
  std::string name;  ///< without a leading "/"
  std::string bytes;
};

/// The bytes of a zip file with the entries in this order, all with the same fixed time; `packed` false leaves them at
/// their size, which is far quicker. Empty when memory runs out.
std::string makeZip(const std::vector<ZipEntry>& entries, bool packed = true);

}  // namespace quorvel::formats
