// A few cells for formula tests, from a table.
#pragma once

#include <map>
#include <string>

#include "base/text.h"
#include "host/formula/formula.h"

namespace quorvel::host {

/// Cells are formulas under their name as written in a reference, "Sheet.3!PinX" or "User.Rate", in any letter case.
class TestContext : public EvaluationContext {
 public:
  void set(std::string_view name, std::string_view formula) { cells_[foldCase(name)] = parseFormula(formula); }
  void discard() { cells_.clear(); }

  Value valueOf(const Reference& reference) override {
    ++reads;
    const auto found = cells_.find(nameOf(reference));
    if (found == cells_.end() || !found->second) return Value::error(ErrorCode::Reference);
    return evaluate(*found->second, *this).or_(Value());
  }
  double measureText(const TextMetricsRequest& request) override {
    // A line of text is 2 in wide and a sixth of an inch high.
    if (!request.height) return request.maxWidth >= 0 ? std::min(request.maxWidth, 2.0) : 2;
    return request.maxWidth > 0 && request.maxWidth < 2 ? 2.0 / 6 : 1.0 / 6;
  }
  std::string shapeText(const Reference& reference) override {
    return reference.scope == ReferenceScope::ThisSheet ? "Check\tthe  order" : "Other text";
  }
  /// Every other shape is 10 in right of and 20 in above this one, which is at (1, 2) in its parent.
  Maybe<Value> convertPoint(const Value& point, const Reference* from, const Reference* to) override {
    const double sign = (from && isOther(*from) ? 1 : 0) - (to && isOther(*to) ? 1 : 0);
    return Value::point(point.internal() + sign * 10, point.y() + sign * 20);
  }
  Maybe<Value> toParent(const Value& point, const Reference* shape) override {
    const double other = shape && isOther(*shape) ? 1 : 0;
    return Value::point(point.internal() + 1 + other * 10, point.y() + 2 + other * 20);
  }
  Maybe<Value> property(std::string_view name) override {
    if (name == "PAGENAME") return Value::text("Order entry");
    if (name == "PAGENUMBER") return Value::number(3);
    if (name == "PINX") return Value::number(2, Unit::Inches);
    if (name == "PINY") return Value::number(3, Unit::Inches);
    if (name == "CATEGORIES") return Value::text("Flow; Step");
    if (name == "DOCLASTSAVE") return Value::date(35580.6337);
    return {};
  }
  Value lastValue() override { return {}; }
  /// Geometry1 runs 4 in right and 3 in up, Geometry2 is a curve that is not measured, others are missing.
  Maybe<FormulaPath> path(const Reference& section, bool& exists) override {
    const int number = static_cast<int>(section.cell.section) - static_cast<int>(SectionNumber::Geometry) + 1;
    exists = number == 1 || number == 2;
    if (number != 1) return {};
    return FormulaPath{{{{0, 0}, {4, 0}}, {{4, 0}, {4, 3}}}};
  }
  Maybe<std::vector<double>> boundingBox() override { return std::vector<double>{1, 2, 4, 8}; }
  Maybe<Value> evaluateCell(const Reference& cell, std::vector<std::pair<std::string, Value>> arguments) override {
    const auto found = cells_.find(nameOf(cell));
    if (found == cells_.end() || !found->second) return Value::error(ErrorCode::Reference);
    std::swap(arguments_, arguments);
    const Maybe<Value> value = evaluate(*found->second, *this);
    std::swap(arguments_, arguments);
    return value;
  }
  Maybe<Value> evaluateText(const Reference&, const std::string& text) override {
    const FormulaPtr formula = parseFormula(text);
    return formula ? evaluate(*formula, *this) : Maybe<Value>();
  }
  Maybe<Value> argument(std::string_view name) override {
    for (const auto& [given, value] : arguments_) {
      if (given == name) return value;
    }
    return {};
  }
  Value relatedValue(std::string_view relation, int index, std::string_view category, const Reference& cell) override {
    return Value::text(std::string(relation) + std::to_string(index) + "[" + std::string(category) + "]" +
                       cell.cellText);
  }
  bool hasFormula(const Reference& cell, bool localOnly) override {
    return cells_.contains(nameOf(cell)) && !(localOnly && isOther(cell));
  }
  /// The page is measured in millimetres.
  Unit explicitUnit(Unit unit) override { return unit == Unit::Drawing ? Unit::Millimetres : unit; }
  Maybe<int> fontNumber(std::string_view name) override { return name == "Calibri" ? Maybe<int>(4) : Maybe<int>(); }

  int reads = 0;

 private:
  static bool isOther(const Reference& reference) { return reference.scope != ReferenceScope::ThisSheet; }

  static std::string nameOf(const Reference& reference) {
    std::string sheet;
    switch (reference.scope) {
      case ReferenceScope::ThisSheet:
        break;
      case ReferenceScope::Shape:
        sheet = "Sheet." + std::to_string(reference.shapeId) + "!";
        break;
      case ReferenceScope::ThePage:
        sheet = "ThePage!";
        break;
      case ReferenceScope::TheDocument:
        sheet = "TheDoc!";
        break;
      default:
        // No shape here has a number in its name.
        sheet = (reference.shapeId ? reference.name.substr(0, reference.name.rfind('.')) : reference.name) + "!";
    }
    return foldCase(sheet + reference.cellText);
  }

  std::map<std::string, FormulaPtr> cells_;
  std::vector<std::pair<std::string, Value>> arguments_;
};

}  // namespace quorvel::host
