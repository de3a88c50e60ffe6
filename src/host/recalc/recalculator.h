// Brings values up to date after writes. Cannot fail: a circle is an error value, an unchanged value stops there, and
// the run says what changed. Cost follows the dependents, not the drawing.
#pragma once

#include <functional>
#include <span>
#include <vector>

#include "host/recalc/cell_address.h"
#include "host/recalc/dependency_graph.h"
#include "host/sheet/store.h"
#include "host/text/text.h"

namespace quorvel::host {

class Recalculator {
 public:
  /// `setValue` stores a new value in a cell (as its own, or beside an inherited formula) and keeps what was there for
  /// undo.
  using SetValue = std::function<void(const CellAddress&, const Value&)>;

  Recalculator(Store& store, DependencyGraph& graph) : store_(store), graph_(graph) {}

  void setTextMetrics(const TextMetrics& metrics) { metrics_ = &metrics; }
  const TextMetrics& textMetrics() const { return *metrics_; }

  /// Evaluates the seeds, then all that follows from them and from `changed`
  /// (cells whose value was set already). Gives the cells whose value changed in the run, in order of evaluation;
  /// `changed` not among them.
  std::vector<CellAddress> run(std::span<const CellAddress> seeds, std::span<const CellAddress> changed,
                               const SetValue& setValue);

  /// What the cell's formula gives now; nothing when it has none, or one with a function that we lack.
  Maybe<Value> evaluateNow(const CellAddress& cell);

  /// Evaluations since the start, for tests and measurements.
  std::size_t evaluations() const { return evaluations_; }

 private:
  friend class SheetContext;
  struct Run;

  Store& store_;
  DependencyGraph& graph_;
  const TextMetrics* metrics_ = &tableTextMetrics();
  std::size_t evaluations_ = 0;
};

/// A number for a font whose cell holds a name: packages name fonts and lack the numbers that formulas have.
bool isFontWithoutName(const Store& store, const CellAddress& cell, const Value& value);

/// Gives a result the kind that its cell holds: bare numbers in length cells are inches, in those of type and lines
/// points, in angle cells degrees, in a duration property days.
Value fitToCell(const Store& store, const CellAddress& cell, const Value& value);
/// The same for what a user writes into the cell: a bare number is taken in the unit of the value that the cell has,
/// else in that of the page.
Value fitWritten(const Store& store, const CellAddress& cell, const Value& value);

}  // namespace quorvel::host
