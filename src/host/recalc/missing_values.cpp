#include "host/recalc/missing_values.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "host/recalc/recalculator.h"
#include "host/recalc/sheet_context.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

/// Cells are evaluated one inside the other; a hostile file must not exhaust the stack.
constexpr int deepest = 500;

/// Files round their values.
bool isSameNumber(const Value& a, const Value& b) {
  const Maybe<double> x = a.asNumber(), y = b.asNumber();
  constexpr double rounding = 1e-9;
  return a.kind() == b.kind() && !a.isText() && x && y && std::fabs(*x - *y) <= rounding * std::max(1.0, std::fabs(*x));
}

class MissingValues {
 public:
  MissingValues(Store& store, std::span<const CellAddress> cells) : store_(store) {
    for (const CellAddress& cell : cells) add(cell);
    addInstances(cells);
  }

  void evaluateAll() {
    // What measures texts and places reads cells that it does not name: those are brought up to date first.
    for (const bool measuring : {false, true}) {
      for (const CellAddress& cell : order_) {
        const FoundCell found = findCell(store_, cell.sheet, cell.key);
        const Formula* const formula = found.formula ? found.formula->formula.get() : nullptr;
        if (formula && (formula->readsText() || formula->readsTransforms()) == measuring) bringUpToDate(cell, 0);
      }
    }
  }

 private:
  enum class State : std::uint8_t { Waiting, Evaluating, Done };

  class Context : public SheetContext {
   public:
    Context(MissingValues& owner, SheetId definition, const CellAddress& cell, int depth)
        : SheetContext(owner.store_, tableTextMetrics(), definition, cell), owner_(owner), depth_(depth) {}
    Value valueOf(const Reference& reference) override {
      const SheetId target = resolve(&reference);
      if (target && !owner_.bringUpToDate({target, keyOn(target, reference)}, depth_ + 1))
        return Value::error(ErrorCode::Circle);
      return SheetContext::valueOf(reference);
    }

   private:
    MissingValues& owner_;
    int depth_;
  };

  void add(const CellAddress& cell) {
    if (states_.emplace(cell, State::Waiting).second) order_.push_back(cell);
  }

  /// An instance that does not hold such a cell has the formula of its master, but sizes of its own.
  void addInstances(std::span<const CellAddress> cells) {
    std::unordered_map<SheetId, std::vector<CellKey>> inMasters;
    DocumentId document;
    for (const CellAddress& cell : cells) {
      const Sheet& sheet = *store_.sheet(cell.sheet);
      const Page* const page = store_.page(sheet.page);
      document = sheet.document;
      if (page && page->master) inMasters[cell.sheet].push_back(cell.key);
    }
    if (inMasters.empty()) return;
    const auto look = [&](PageId page) {
      for (const SheetId top : store_.page(page)->shapes) {
        for (const SheetId id : store_.subtree(top)) addInherited(id, inMasters);
      }
    };
    for (const MasterId master : store_.document(document)->masters) look(store_.master(master)->contents);
    for (const PageId page : store_.document(document)->pages) look(page);
  }

  void addInherited(SheetId id, const std::unordered_map<SheetId, std::vector<CellKey>>& inMasters) {
    SheetId at = store_.sheet(id)->prototype;
    for (int depth = 0; at && depth < 64; ++depth) {
      if (const auto found = inMasters.find(at); found != inMasters.end()) {
        for (const CellKey& key : found->second) {
          const FoundCell cell = findCell(store_, id, key);
          if (cell.formulaSheet == at && cell.value == cell.formula) add({id, key});
        }
      }
      at = store_.sheet(at)->prototype;
    }
  }

  /// False for a cell that is being evaluated already.
  bool bringUpToDate(const CellAddress& cell, int depth) {
    const auto state = states_.find(cell);
    if (state == states_.end() || state->second == State::Done) return true;
    if (state->second == State::Evaluating || depth > deepest) return false;
    state->second = State::Evaluating;
    const FoundCell found = findCell(store_, cell.sheet, cell.key);
    Maybe<Value> value;
    if (found.formula && found.formula->formula) {
      Context context(*this, found.formulaSheet, cell, depth);
      value = evaluate(*found.formula->formula, context);
      if (context.readUnknown()) value = {};
    }
    states_[cell] = State::Done;
    if (value) set(cell, fitToCell(store_, cell, *value));
    return true;
  }

  void set(const CellAddress& cell, const Value& value) {
    const Value before = cellValue(store_, cell.sheet, cell.key);
    if (before == value || isSameNumber(before, value)) return;
    Sheet& sheet = *store_.sheet(cell.sheet);
    if (Cell* const local = sheet.findLocal(cell.key)) {
      local->value = value;
      return;
    }
    Cell& made = sheet.local(cell.key);
    made.inheritsFormula = true;
    made.value = value;
    made.isComputed = sheet.holdsComputed = true;
  }

  Store& store_;
  std::vector<CellAddress> order_;
  std::unordered_map<CellAddress, State> states_;
};

}  // namespace

void evaluateMissing(Store& store, std::span<const CellAddress> cells) {
  if (!cells.empty()) MissingValues(store, cells).evaluateAll();
}

}  // namespace quorvel::host
