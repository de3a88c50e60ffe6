// Steps that a user can take back: scopes group, their owner commits, leaving early rolls back.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "host/undo/exchange.h"

namespace quorvel::host {

class UndoLog {
 public:
  UndoLog(Store& store, DependencyGraph& graph, PlacementJournal& placements)
      : store_(store), graph_(graph), placements_(placements) {}

  /// Opens a scope; gives its number. The outermost scope is a step of `document`, and nested ones join it. A null
  /// document is found out: the step is one of the document that is changed first.
  int begin(DocumentId document, std::string name);
  /// False for a number that is not the innermost open scope. `commit` false takes back what was done in the scope.
  bool end(int scope, bool commit);
  bool isOpen() const { return !scopes_.empty(); }
  std::string_view name(int scope) const;

  /// Takes an exchange that was applied just now; the document is no longer as it was saved. Outside a scope it is a
  /// step of its own.
  void add(Exchange exchange);

  /// False when there is nothing to take back, inside a scope, or while one is being taken back.
  bool undo(DocumentId document);
  bool redo(DocumentId document);
  std::size_t undoCount(DocumentId document) const;
  std::size_t redoCount(DocumentId document) const;
  void forget(DocumentId document);

  /// Grows with every change of the document that is not housekeeping, taking back included.
  std::uint64_t changeCount(DocumentId document) const {
    return document.value < changeCounts_.size() ? changeCounts_[document.value] : 0;
  }
  /// Called after each step, when the document is whole again. May read everything and change nothing.
  std::function<void()> onStep;

  /// While one stands, changes are housekeeping: kept by nobody and never taken back.
  class Suspension {
   public:
    explicit Suspension(UndoLog& log) : log_(log) { ++log_.suspended_; }
    ~Suspension() { --log_.suspended_; }
    Suspension(const Suspension&) = delete;
    Suspension& operator=(const Suspension&) = delete;

   private:
    UndoLog& log_;
  };

 private:
  struct Step {
    DocumentId document;
    std::string name;
    std::vector<Exchange> entries;
  };
  struct Scope {
    int number;
    DocumentId document;
    std::string name;
    std::size_t firstEntry;
  };
  void takeBack(std::vector<Exchange>& entries, std::size_t from);
  bool move(std::vector<Step>& from, std::vector<Step>& to, DocumentId document);
  void keep(Step step);
  void markChanged(DocumentId document);
  void tellStep() {
    if (onStep) onStep();
  }

  Store& store_;
  DependencyGraph& graph_;
  PlacementJournal& placements_;
  std::vector<Step> done_, undone_;
  std::vector<Scope> scopes_;
  Step open_;
  /// Scopes are announced by number as the host's own commands are; those have the numbers below 65,536.
  int lastNumber_ = 0xFFFF;
  int suspended_ = 0;
  std::vector<std::uint64_t> changeCounts_;  ///< by document number
};

}  // namespace quorvel::host
