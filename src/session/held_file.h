// A file that a running program locks, so that others can find out whether its owner still runs. Process numbers cannot
// show that: in containers every program has the same.
#pragma once

#include <string>
#include <string_view>

namespace quorvel {

/// How many forks led to this process: objects made before a fork belong to the parent.
unsigned forksSoFar();

/// Locked from its creation to the end of the object or of the process that made it, even if its children go on.
class HeldFile {
 public:
  /// Makes the file for this user alone. It must not exist; `error` says why it could not be made.
  HeldFile(const std::string& fileName, std::string& error);
  ~HeldFile();
  HeldFile(const HeldFile&) = delete;
  HeldFile& operator=(const HeldFile&) = delete;

  /// Replaces what is in it. False when that failed.
  bool write(std::string_view text);

 private:
  bool isOurs() const;

  int file_ = -1;
  unsigned forks_ = 0;
};

/// True while the file exists and its owner, in any process, has it locked.
bool isHeld(const std::string& fileName);

}  // namespace quorvel
