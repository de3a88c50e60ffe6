// A handful of cells for formula tests: what formulas ask of the world, from a table.
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
  void forget() { cells_.clear(); }

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
  /// Every other shape lies 10 in right of and 20 in above this one, which stands at (1, 2) in its parent.
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
    if (name == "DOCLASTSAVE") return Value::date(35580.6337);
    return {};
  }
  Value lastValue() override { return {}; }

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
        sheet = reference.name + "!";
    }
    return foldCase(sheet + reference.cellText);
  }

  std::map<std::string, FormulaPtr> cells_;
};

}  // namespace quorvel::host
