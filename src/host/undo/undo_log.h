// Steps that a user can take back: scopes group, their owner commits, leaving early rolls back. What is kept of each
// document is bounded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "host/undo/exchange.h"

namespace quorvel::host {

/// How much of each document can be taken back. Beyond that the oldest steps are removed, each as a whole. The newest
/// is kept even when it alone takes more bytes.
struct UndoLimits {
  std::size_t steps = 500;
  std::size_t bytes = std::size_t{256} << 20;
};

class UndoLog {
 public:
  explicit UndoLog(const Exchanged& drawing) : drawing_(drawing), store_(drawing.store) {}

  /// Who opened a scope: a script ends only its own ones, so that a listener can't end the command that called it.
  enum class Owner : std::uint8_t { Command, Script };

  /// Opens a scope; gives its number. The outermost scope is a step of `document`, and nested ones join it. A null
  /// document is found out: the step is one of the document that is changed first, as is one that changed others only.
  int begin(DocumentId document, std::string name, Owner owner = Owner::Command);
  /// False for a number that is not open. `commit` false takes back what was done in the scope. Scopes that were opened
  /// inside it and left open end with it. A document in which nothing remains changed is as saved as it was before.
  bool end(int scope, bool commit);
  /// False for a number that is not the innermost open scope, or not a script's.
  bool endByScript(int scope, bool commit);
  bool isOpen() const { return !scopes_.empty(); }
  std::string_view name(int scope) const;
  /// Whether the open step is one of the document, or has changed it.
  bool isInOpenStep(DocumentId document) const;

  /// Entries of the open step so far.
  std::size_t openEntries() const { return open_.entries.size(); }
  /// Whether something was changed from that entry on that is not undone with the shapes that were made in the
  /// innermost scope.
  bool hasLastingChangeFrom(std::size_t entry) const;

  /// Takes an exchange that was applied just now; the document is no longer as it was saved. Outside a scope it is a
  /// step of its own.
  void add(Exchange exchange);
  /// The document was saved just now, or its mark was set by hand: taking back the open step is a change from here on.
  void noteSaved(DocumentId document);
  /// The document changed in a way that is no step.
  void noteChanged(DocumentId document);

  /// False when there is nothing to take back, inside a scope, or while one is being taken back.
  bool undo(DocumentId document);
  bool redo(DocumentId document);
  std::size_t undoCount(DocumentId document) const;
  std::size_t redoCount(DocumentId document) const;
  void discard(DocumentId document);

  const UndoLimits& limits() const { return limits_; }
  void setLimits(const UndoLimits& limits);
  /// Bytes that the document's steps take, those that can be done again included. Measured when a step was last done or
  /// taken back.
  std::size_t bytes(DocumentId document) const;

  /// Grows with every change of the document that is not housekeeping, taking back included.
  std::uint64_t changeCount(DocumentId document) const {
    return document.value < changeCounts_.size() ? changeCounts_[document.value] : 0;
  }
  /// Called after each step, when the document is whole again. May read everything and change nothing.
  std::function<void()> onStep;

  bool isSuspended() const { return suspended_; }
  /// While it lives, changes are housekeeping, which is not kept and never taken back, or steps as usual.
  class Attribution {
   public:
    Attribution(UndoLog& log, bool housekeeping) : log_(log), before_(std::exchange(log.suspended_, housekeeping)) {}
    ~Attribution() { log_.suspended_ = before_; }
    Attribution(const Attribution&) = delete;
    Attribution& operator=(const Attribution&) = delete;

   private:
    UndoLog& log_;
    bool before_;
  };

 private:
  enum class Mark : std::uint8_t { Saved, Unsaved, SavedMeanwhile };
  struct Step {
    DocumentId document;
    std::string name;
    std::vector<Exchange> entries;
    std::vector<std::pair<DocumentId, Mark>> touched;  ///< documents that it changed, with what they were before
    std::size_t bytes = 0;
  };
  struct Scope {
    int number;
    Owner owner;
    DocumentId document;
    std::string name;
    std::size_t firstEntry;
  };
  /// Steps of one document; the next one to be taken back or done again is the last.
  struct History {
    std::deque<Step> done, undone;
    std::size_t bytes = 0;
  };
  void takeBack(std::vector<Exchange>& entries, std::size_t from);
  bool move(DocumentId document, std::deque<Step> History::*from, std::deque<Step> History::*to);
  void keep(Step step);
  void finish();
  void trim(History& history) const;
  void touch(DocumentId document);
  void markChanged(DocumentId document);
  void notifyStep() {
    if (onStep) onStep();
  }

  const Exchanged drawing_;
  Store& store_;
  UndoLimits limits_;
  std::map<DocumentId, History> histories_;
  std::vector<Scope> scopes_;
  Step open_;
  /// Scopes have numbers in events, as the host's own commands have; those have the numbers below 65,536.
  int lastNumber_ = 0xFFFF;
  bool suspended_ = false;
  std::vector<std::uint64_t> changeCounts_;  ///< by document number
};

}  // namespace quorvel::host
