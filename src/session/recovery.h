// Copies of unsaved work, written while the user works, so that a crash or a power failure loses only the last minutes.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/engine/engine.h"
#include "session/held_file.h"

namespace quorvel {

/// Writes the document in the format that the file's ending says. No event is raised: the document stays unsaved,
/// under its own name. In the copy User.AddinIsFound is 0, as in every file, so that shapes do not offer the add-in's
/// commands where it is missing. Empty when it went well, else one sentence.
std::string writeCopyAside(host::Engine& engine, host::DocumentId document, const std::string& fileName);

/// Writes a copy of each document with unsaved changes into a folder, again when it has changed since; the copy is
/// removed when the document is saved or closed. Copies of documents that are unsaved at the end remain, after any end:
/// a process that crashed, a script with an error. Each copy has a name of its own that no other process takes, and is
/// locked as long as its process runs. A child that was forked off writes copies of its own.
class RecoveryCopies : ApplicationEvents {
 public:
  /// The folder is made, for the user alone, when the first copy is written. From here on a copy is written after a
  /// step when the last one is older than `interval`, or than twenty times what it took: large drawings must not become
  /// slow.
  RecoveryCopies(host::Engine& engine, const std::string& folder,
                 std::chrono::seconds interval = std::chrono::seconds(60));
  ~RecoveryCopies() override;
  RecoveryCopies(const RecoveryCopies&) = delete;
  RecoveryCopies& operator=(const RecoveryCopies&) = delete;

  /// Updates the copies now. A copy that can't be written is skipped; the last such sentence stays in
  /// `lastError`, because a failed copy must not stop the work.
  void update();
  std::string lastError;

 private:
  struct Copy {
    std::string file;
    std::string start, ending;  ///< of the name
    std::string companionText;
    std::unique_ptr<HeldFile> companion;
    std::uint64_t changeCount = 0;
  };

  void DocumentSaved(Document) override { removeSettled(); }
  void DocumentSavedAs(Document) override { removeSettled(); }
  void BeforeDocumentClose(Document document) override;

  void updateWhenDue();
  /// Closes the files of the parent process after a fork.
  void leaveToParent();
  void removeSettled();
  static void remove(Copy& copy);
  void write(host::DocumentId id, const host::Document& document);
  std::string make(Copy& copy) const;

  host::Engine& engine_;
  const std::string folder_;
  std::chrono::steady_clock::duration interval_;
  std::chrono::steady_clock::time_point due_;
  std::map<host::DocumentId, Copy> copies_;
  unsigned forks_ = forksSoFar();
};

/// A copy that no running process holds.
struct LeftBehind {
  std::string copy;      ///< full name of the copy
  std::string original;  ///< where the document was saved last; empty: never, or unknown
  std::string name;      ///< the document's, to show
};

/// In the order of their names, also those without the file that says where they come from; only the user's own. Empty
/// for a folder that is not there.
std::vector<LeftBehind> copiesLeftBehind(const std::string& folder);

/// Removes a copy and what belongs to it, after it was opened or when it is not needed; what is removed already is
/// skipped. Empty when it went well, else why not, as the end of a sentence that begins with the file's name: only what
/// was written as a copy is removed, and only when no running process holds it.
std::string discardCopy(const std::string& copy);

}  // namespace quorvel
