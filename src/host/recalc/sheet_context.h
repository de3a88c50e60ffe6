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
  /// `drawn`: the page in front while a background page is drawn; null for the sheet's own.
  SheetContext(const Store& store, const TextMetrics& metrics, SheetId definition, const CellAddress& cell,
               PageId drawn = {})
      : store_(store), metrics_(metrics), definition_(definition), cell_(cell), drawn_(drawn) {}

  Value valueOf(const Reference& reference) override;
  double measureText(const TextMetricsRequest& request) override;
  std::string shapeText(const Reference& reference) override;
  Maybe<Value> convertPoint(const Value& point, const Reference* from, const Reference* to) override;
  Maybe<Value> toParent(const Value& point, const Reference* shape) override;
  Maybe<Value> walkedTo() override;
  Maybe<FormulaPath> path(const Reference& section, bool& exists) override;
  Maybe<std::vector<double>> boundingBox() override;
  Maybe<Value> evaluateCell(const Reference& cell, std::vector<std::pair<std::string, Value>> arguments) override;
  Maybe<Value> evaluateText(const Reference& shape, const std::string& text) override;
  Unit explicitUnit(Unit unit) override;
  ThemeAnswer themeValue(std::string_view property) override;
  Maybe<std::uint32_t> throughGradientStop(std::uint32_t rgb, int stop) override;
  Maybe<Value> argument(std::string_view name) override;
  Value relatedValue(std::string_view relation, int index, std::string_view category, const Reference& cell) override;
  bool hasFormula(const Reference& cell, bool localOnly) override;
  Maybe<int> fontNumber(std::string_view name) override;
  std::string listSeparator() override { return std::string(1, store_.locale().listSeparator); }
  std::string decimalSeparator() override { return std::string(1, store_.locale().decimalSeparator); }
  Maybe<Value> property(std::string_view name) override;
  Value lastValue() override;

  /// A theme's value was read that the file does not contain: what was computed from it must be discarded.
  bool readUnknown() const { return readUnknown_; }

 protected:
  SheetId resolve(const Reference* reference) const;
  /// The cell that the reference means on the sheet that it resolves to.
  CellKey keyOn(SheetId target, const Reference& reference) const;

  const Store& store_;
  const TextMetrics& metrics_;
  SheetId definition_;
  CellAddress cell_;
  PageId drawn_;
  bool readUnknown_ = false;

 private:
  Maybe<Value> evaluateInside(const Formula& formula, SheetContext& inner);
  Maybe<Value> shapeProperty(std::string_view name) const;

  /// Formulas evaluated inside formulas, which must end.
  static constexpr int deepest = 16;
  int depth_ = 0;
  std::vector<std::pair<std::string, Value>> arguments_;
};

}  // namespace quorvel::host
