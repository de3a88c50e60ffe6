#include "session/held_file.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <mutex>
#include <system_error>
#include <vector>

namespace quorvel {
namespace {

/// The files that this process locks. A child would still lock them after their owner has ended, so it closes its own
/// copies; the owner's lock remains.
struct HeldFiles {
  std::mutex access;
  std::vector<int> files;
  unsigned forks = 0;
};

HeldFiles& heldFiles() {
  // Never destroyed: objects that end with the program still use it.
  static HeldFiles* const held = [] {
    static HeldFiles* made;
    made = new HeldFiles;
    pthread_atfork([] { made->access.lock(); }, [] { made->access.unlock(); },
                   [] {
                     for (const int file : made->files) ::close(file);
                     made->files.clear();
                     ++made->forks;
                     made->access.unlock();
                   });
    return made;
  }();
  return *held;
}

}  // namespace

unsigned forksSoFar() { return heldFiles().forks; }

HeldFile::HeldFile(const std::string& fileName, std::string& error) {
  HeldFiles& held = heldFiles();
  const std::lock_guard lock(held.access);
  forks_ = held.forks;
  file_ = ::open(fileName.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
  if (file_ < 0) {
    error = std::generic_category().message(errno);
    return;
  }
  held.files.push_back(file_);
  // Another process that tests the lock may have it for a moment. Where locks are not supported, there is none.
  while (::flock(file_, LOCK_EX) != 0 && errno == EINTR) continue;
}

HeldFile::~HeldFile() {
  HeldFiles& held = heldFiles();
  const std::lock_guard lock(held.access);
  if (!isOurs()) return;
  std::erase(held.files, file_);
  ::close(file_);
}

/// In a child the file's number may belong to another file by now.
bool HeldFile::isOurs() const { return file_ >= 0 && forks_ == heldFiles().forks; }

bool HeldFile::write(std::string_view text) {
  if (!isOurs()) return false;
  const ssize_t written = ::pwrite(file_, text.data(), text.size(), 0);
  return written == static_cast<ssize_t>(text.size()) && ::ftruncate(file_, written) == 0;
}

bool isHeld(const std::string& fileName) {
  const int file = ::open(fileName.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (file < 0) return false;
  const bool locked = ::flock(file, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  ::close(file);
  return locked;
}

}  // namespace quorvel
