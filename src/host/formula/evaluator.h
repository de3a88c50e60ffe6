// Walks a formula's tree. Functions see it through Call only.
#pragma once

#include "host/formula/formula.h"
#include "host/formula/formula_node.h"

namespace quorvel::host {

class Evaluator {
 public:
  Evaluator(const Formula& formula, EvaluationContext& context) : formula_(formula), context_(context) {}

  /// Nothing when a function does not know its result.
  Maybe<Value> run();

  Value valueOf(std::uint32_t node);
  EvaluationContext& context() { return context_; }
  Value unknown() {
    unknown_ = true;
    return {};
  }
  const FormulaNode& node(std::uint32_t index) const { return formula_.nodes_[index]; }
  std::uint32_t argument(const FormulaNode& call, int index) const {
    return formula_.arguments_[call.first + static_cast<std::uint32_t>(index)];
  }
  const Reference& reference(const FormulaNode& node) const { return formula_.references_[node.first]; }

 private:
  const Formula& formula_;
  EvaluationContext& context_;
  bool unknown_ = false;
};

/// The value of a formula that asks nothing of any context.
Maybe<Value> evaluatePure(const Formula& formula);

}  // namespace quorvel::host
