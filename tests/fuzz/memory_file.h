// Bytes under a file name without a disk, for readers that open files by name.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <string_view>

namespace quorvel::fuzz {

class MemoryFile {
 public:
  explicit MemoryFile(std::string_view bytes) : descriptor_(memfd_create("drawing", MFD_CLOEXEC)) {
    if (descriptor_ < 0 || write(descriptor_, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
      std::abort();
  }
  ~MemoryFile() { close(descriptor_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  std::string name() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  const int descriptor_;
};

}  // namespace quorvel::fuzz
