// Reads the streams of a compound file, the container of the older office formats, without trusting any number in it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/maybe.h"

namespace quorvel::formats {

class CompoundFile {
 public:
  struct Stream {
    std::uint32_t firstSector = 0;
    std::uint32_t size = 0;  ///< in bytes, as the directory says; the chain of sectors may be shorter
  };

  CompoundFile();
  ~CompoundFile();
  CompoundFile(const CompoundFile&) = delete;
  CompoundFile& operator=(const CompoundFile&) = delete;

  /// False for all but a regular file that begins as a compound file, has a complete table of sectors and passes no
  /// limit.
  bool open(const std::string& fileName);

  /// The stream of this name outside all folders of the file; the name is ASCII, in its exact letter case.
  Maybe<Stream> stream(std::string_view name) const;

  /// Reads `count` bytes from `from` on. False when the stream has fewer or is damaged before their end.
  bool read(const Stream& stream, std::size_t from, std::size_t count, std::string& bytes) const;

 private:
  struct Handle;
  std::unique_ptr<Handle> handle_;
};

}  // namespace quorvel::formats
