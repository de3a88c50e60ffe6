// Copies of unsaved work, written aside while it is worked on, so that a crash or a power cut costs minutes at most.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "host/engine/engine.h"

namespace quorvel {

/// The document as it stands, in the format that the file's ending says. Nobody is told: the document stays unsaved,
/// under its own name. In the copy User.AddinIsFound is 0, as in every file, so that shapes do not offer the add-in's
/// commands where it is missing. Empty when it went well, else one sentence.
std::string writeCopyAside(host::Engine& engine, host::DocumentId document, const std::string& fileName);

/// Writes a copy of each document with unsaved changes into a folder, again when it has changed since; the copy goes
/// when the document is saved or closed, and all go with this object. What is left behind is of a process that died.
class RecoveryCopies {
 public:
  /// The folder is made when the first copy is written. From here on a copy is written after a step when the last one
  /// is older than `interval`, or than twenty times what it took: large drawings must not stall.
  RecoveryCopies(host::Engine& engine, std::string folder, std::chrono::seconds interval = std::chrono::seconds(60));
  ~RecoveryCopies();
  RecoveryCopies(const RecoveryCopies&) = delete;
  RecoveryCopies& operator=(const RecoveryCopies&) = delete;

  /// Brings the copies up to date now. A copy that can't be written is passed over; the last such sentence stays in
  /// `lastError`, because failing to guard work must not stop it.
  void update();
  std::string lastError;

 private:
  struct Copy {
    std::string file;
    std::uint64_t changeCount = 0;
  };
  void updateWhenDue();
  void write(host::DocumentId id, const host::Document& document);

  host::Engine& engine_;
  std::string folder_;
  std::chrono::steady_clock::duration interval_;
  std::chrono::steady_clock::time_point due_;
  std::map<host::DocumentId, Copy> copies_;
};

/// A copy whose process is gone.
struct LeftBehind {
  std::string copy;      ///< full name of the copy
  std::string original;  ///< where the document was saved last; empty: never
  std::string name;      ///< the document's, to show
};

/// In the order of their names; copies of running processes are left out. Empty for a folder that is not there.
std::vector<LeftBehind> copiesLeftBehind(const std::string& folder);

/// Removes a copy and what belongs to it, once it was opened or is not wanted.
void discardCopy(const std::string& copy);

}  // namespace quorvel
