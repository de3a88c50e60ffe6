#include "host/formula/evaluator.h"

#include <cmath>
#include <limits>

#include "host/formula/functions.h"
#include "host/formula/number_text.h"
#include "host/formula/operators.h"

namespace quorvel::host {
namespace {

/// For formulas without references and questions.
class NoContext : public EvaluationContext {
 public:
  Value valueOf(const Reference&) override { return Value::error(ErrorCode::Reference); }
  double measureText(const TextMetricsRequest&) override { return 0; }
  std::string shapeText(const Reference&) override { return {}; }
  Maybe<Value> convertPoint(const Value&, const Reference*, const Reference*) override { return {}; }
  Maybe<Value> toParent(const Value&, const Reference*) override { return {}; }
  Maybe<Value> property(std::string_view) override { return {}; }
  Value lastValue() override { return {}; }
};

bool isFinite(const Value& value) { return isRepresentable(value.internal()) && isRepresentable(value.y()); }

}  // namespace

Maybe<Value> Evaluator::run() {
  Value value = valueOf(static_cast<std::uint32_t>(formula_.nodes_.size() - 1));
  if (unknown_) return {};
  return value;
}

Value Evaluator::valueOf(std::uint32_t index) {
  const FormulaNode& node = formula_.nodes_[index];
  switch (node.kind) {
    case NodeKind::Constant:
      return formula_.constants_[node.first];
    case NodeKind::Reference:
      return context_.valueOf(formula_.references_[node.first]);
    case NodeKind::Empty:
      return {};
    case NodeKind::Unary: {
      const Value operand = valueOf(node.first);
      return operand.isError() ? operand : unaryOperators()[node.operation].apply(operand);
    }
    case NodeKind::Binary: {
      const Value left = valueOf(node.first);
      const Value right = valueOf(node.second);
      const Value result = binaryOperators()[node.operation].apply(left, right);
      return isFinite(result) ? result : Value::error(ErrorCode::Number);
    }
    case NodeKind::Call: {
      Call call(*this, node);
      const Value result = allFunctions()[node.function].evaluate(call);
      if (call.failure().isError()) return call.failure();
      return isFinite(result) ? result : Value::error(ErrorCode::Number);
    }
    case NodeKind::UnknownCall:
      return unknown();
  }
  return {};
}

const FormulaNode* Call::argumentNode(int argument) const {
  return argument < count() ? &evaluator_.node(evaluator_.argument(node_, argument)) : nullptr;
}

bool Call::given(int argument) const {
  const FormulaNode* node = argumentNode(argument);
  return node && node->kind != NodeKind::Empty;
}

Value Call::anyValue(int argument) {
  return argument < count() ? evaluator_.valueOf(evaluator_.argument(node_, argument)) : Value();
}

Value Call::value(int argument) {
  Value value = anyValue(argument);
  if (value.isError() && !failure_.isError()) failure_ = value;
  return value;
}

Value Call::quantity(int argument) {
  const Value given = value(argument);
  if (!given.isText()) return given;
  if (given.textView().empty()) return {};
  const Maybe<Value> quantity = given.asQuantity();
  if (quantity) return *quantity;
  return fail(ErrorCode::Value);
}

double Call::number(int argument, double otherwise) {
  return given(argument) ? quantity(argument).internal() : otherwise;
}

int Call::whole(int argument, int otherwise) {
  if (!given(argument)) return otherwise;
  const double wanted = number(argument);
  constexpr int limit = std::numeric_limits<int>::max() / 4;
  if (!(std::fabs(wanted) < limit)) return wanted < 0 ? -limit : limit;
  return static_cast<int>(wanted);
}

std::string Call::text(int argument, std::string_view otherwise) {
  return given(argument) ? value(argument).asText() : std::string(otherwise);
}

bool Call::truth(int argument, bool otherwise) { return given(argument) ? value(argument).asBoolean() : otherwise; }

const Reference* Call::reference(int argument) const {
  const FormulaNode* node = argumentNode(argument);
  return node && node->kind == NodeKind::Reference ? &evaluator_.reference(*node) : nullptr;
}

const Reference* Call::foreignReference(int argument) const {
  const FormulaNode* node = argumentNode(argument);
  return node ? foreignReferenceBelow(*node) : nullptr;
}

const Reference* Call::foreignReferenceBelow(const FormulaNode& node) const {
  switch (node.kind) {
    case NodeKind::Reference: {
      const Reference& reference = evaluator_.reference(node);
      return reference.scope == ReferenceScope::ThisSheet ? nullptr : &reference;
    }
    case NodeKind::Unary:
      return foreignReferenceBelow(evaluator_.node(node.first));
    case NodeKind::Binary: {
      const Reference* left = foreignReferenceBelow(evaluator_.node(node.first));
      return left ? left : foreignReferenceBelow(evaluator_.node(node.second));
    }
    case NodeKind::Call:
      for (std::uint32_t i = 0; i < node.second; ++i) {
        if (const Reference* found =
                foreignReferenceBelow(evaluator_.node(evaluator_.argument(node, static_cast<int>(i)))))
          return found;
      }
      return nullptr;
    default:
      return nullptr;
  }
}

EvaluationContext& Call::context() { return evaluator_.context(); }

double Call::written(const Value& value) {
  if (value.kind() != ValueKind::Number) return value.internal();
  // Conversion leaves noise in the last places, which rounding must not see.
  return roundedTo15(fromInternal(value.internal(), context().explicitUnit(value.unit())));
}

Value Call::fromWritten(double number, const Value& like) {
  if (like.kind() != ValueKind::Number) return Value::number(number);
  return Value::number(toInternal(number, context().explicitUnit(like.unit())), like.unit());
}

Value Call::unknown() { return evaluator_.unknown(); }

Value Call::fail(ErrorCode code) {
  if (!failure_.isError()) failure_ = Value::error(code);
  return failure_;
}

Maybe<Value> evaluate(const Formula& formula, EvaluationContext& context) {
  if (formula.constant()) return formula.constant();
  return Evaluator(formula, context).run();
}

Maybe<Value> evaluatePure(const Formula& formula) {
  NoContext context;
  return Evaluator(formula, context).run();
}

}  // namespace quorvel::host
