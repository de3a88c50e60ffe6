// The functions of formulas as rows of tables by topic, and what a function can read of its call.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "host/formula/formula.h"
#include "host/formula/formula_node.h"

namespace quorvel::host {

class Evaluator;

/// One call while it runs. Arguments are evaluated when they are asked for and only then, so that IF leaves its other
/// branch alone; ask for each once. An argument that is an error or of the wrong kind makes the whole call an error,
/// whatever the function returns.
class Call {
 public:
  Call(Evaluator& evaluator, const FormulaNode& node) : evaluator_(evaluator), node_(node) {}

  int count() const { return static_cast<int>(node_.second); }
  /// The 0-based argument is there and not empty.
  bool given(int argument) const;

  /// Any value, errors included; the number 0 for an argument that is not given.
  Value anyValue(int argument);
  /// The value; an error fails the call.
  Value value(int argument);
  /// A number with its unit, read from text too.
  Value quantity(int argument);
  /// In internal units.
  double number(int argument, double otherwise = 0);
  int whole(int argument, int otherwise = 0);
  std::string text(int argument, std::string_view otherwise = {});
  bool truth(int argument, bool otherwise = false);
  /// Null when the argument is no plain reference.
  const Reference* reference(int argument) const;
  /// The first reference to another sheet anywhere in the argument: the sheet whose coordinates a point has.
  const Reference* foreignReference(int argument) const;

  EvaluationContext& context();
  /// The value's number in the unit that it is written in, drawing units in those of the page, and back.
  double written(const Value& value);
  Value fromWritten(double number, const Value& like);
  /// The function does not know its result: the cell keeps its value.
  Value unknown();
  Value fail(ErrorCode code);
  const Value& failure() const { return failure_; }

 private:
  const FormulaNode* argumentNode(int argument) const;
  const Reference* foreignReferenceBelow(const FormulaNode& node) const;

  Evaluator& evaluator_;
  const FormulaNode& node_;
  Value failure_;
};

enum FunctionTrait : std::uint16_t {
  Pure = 0,
  AsksHost = 1,  ///< the result depends on more than the arguments, so it is never a constant
  Changes = 2,   ///< gives something else though no argument changed
  ReadsText = 4,
  ReadsTransforms = 8,
  Guards = 16,
  FirstUnwatched = 32,  ///< the first argument's references are not watched
  SecondUnwatched = 64,
  TakesCell = 128,       ///< a "!" and a cell may follow the call; they come as its last argument, unwatched
  ReadsRelations = 256,  ///< of containers, lists and callouts
};

struct FunctionRow {
  std::string_view name;  ///< in capitals
  Value (*evaluate)(Call& call);
  std::uint16_t traits = Pure;
};

std::span<const FunctionRow> arithmeticFunctions();
std::span<const FunctionRow> logicFunctions();
std::span<const FunctionRow> textFunctions();
std::span<const FunctionRow> dateTimeFunctions();
std::span<const FunctionRow> geometryFunctions();
std::span<const FunctionRow> colourFunctions();
std::span<const FunctionRow> referenceFunctions();
std::span<const FunctionRow> hostFunctions();
std::span<const FunctionRow> pathFunctions();
std::span<const FunctionRow> relationFunctions();

/// All of them; a parsed call holds the index.
std::span<const FunctionRow> allFunctions();
/// Index of the function of the name in any letter case; negative when there is none. "_NAME" is an old spelling.
int findFunction(std::string_view name);

}  // namespace quorvel::host
