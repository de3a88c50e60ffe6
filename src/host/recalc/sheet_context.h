// What formulas ask of the world, answered from the sheets.
#pragma once

#include "host/formula/formula.h"
#include "host/recalc/cell_address.h"
#include "host/sheet/store.h"
#include "host/text/text.h"

namespace quorvel::host {

class SheetContext : public EvaluationContext {
 public:
  /// `definition`: the sheet that holds the formula; `cell.sheet` the one it is evaluated for.
  SheetContext(const Store& store, const TextMetrics& metrics, SheetId definition, const CellAddress& cell)
      : store_(store), metrics_(metrics), definition_(definition), cell_(cell) {}

  Value valueOf(const Reference& reference) override;
  double measureText(const TextMetricsRequest& request) override;
  std::string shapeText(const Reference& reference) override;
  Maybe<Value> convertPoint(const Value& point, const Reference* from, const Reference* to) override;
  Maybe<Value> toParent(const Value& point, const Reference* shape) override;
  Maybe<Value> walkedTo() override;
  Maybe<Value> property(std::string_view name) override;
  Value lastValue() override;

  /// A theme's value was read that the file does not spell out: whatever was computed from it is worth nothing.
  bool readUnknown() const { return readUnknown_; }

 protected:
  SheetId resolve(const Reference* reference) const;

  const Store& store_;
  const TextMetrics& metrics_;
  SheetId definition_;
  CellAddress cell_;
  bool readUnknown_ = false;
};

}  // namespace quorvel::host
