#include "formats/package/atomic_file.h"

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <system_error>

namespace quorvel::formats {
namespace {

namespace fs = std::filesystem;

std::string systemReason(int code) { return std::generic_category().message(code); }

bool writeAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(file, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

/// A rename is only safe on the disk once its folder is.
void flushFolder(const fs::path& folder) {
  const int handle = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) return;
  ::fsync(handle);
  ::close(handle);
}

}  // namespace

std::string replaceFile(const std::string& fileName, std::string_view bytes, Flush flush) {
  std::error_code error;
  fs::path target = fileName;
  if (fs::is_symlink(target, error)) {
    const fs::path real = fs::canonical(target, error);
    if (!error) target = real;
  }
  if (fs::is_directory(target, error)) return "cannot be written because a folder has that name; choose another name";
  const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
  if (!fs::is_directory(folder, error))
    return "cannot be written because its folder does not exist; make the folder or choose another";

  mode_t mode = 0666;
  bool keepMode = false;
  struct stat old;
  if (::stat(target.c_str(), &old) == 0) {
    if (::access(target.c_str(), W_OK) != 0)
      return "cannot be written because it is read-only; save under another name";
    mode = old.st_mode & 07777;
    keepMode = true;
  }

  fs::path beside;
  int file = -1;
  for (int attempt = 0; attempt < 100 && file < 0; ++attempt) {
    // No number of the process: others have the same, and what they left when they were killed must not be in the way.
    std::uint64_t random = 0;
    if (::getrandom(&random, sizeof random, 0) != static_cast<ssize_t>(sizeof random)) break;
    beside = folder / (".quorvel-" + std::to_string(random) + ".tmp");
    file = ::open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (file < 0 && errno != EEXIST) break;
  }
  if (file < 0) return "cannot be written (" + systemReason(errno) + "); choose another folder";

  int reason = 0;
  const bool flushes = flush == Flush::ToDisk;
  if (!writeAll(file, bytes) || (keepMode && ::fchmod(file, mode) != 0) || (flushes && ::fsync(file) != 0))
    reason = errno;
  if (::close(file) != 0 && reason == 0) reason = errno;
  if (reason == 0 && ::rename(beside.c_str(), target.c_str()) != 0) reason = errno;
  if (reason != 0) {
    ::unlink(beside.c_str());
    return "was not written (" + systemReason(reason) + "); what was there before is unchanged";
  }
  if (flushes) flushFolder(folder);
  return {};
}

}  // namespace quorvel::formats
