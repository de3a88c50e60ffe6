// The operators of formulas as rows of a table, and what they do to values with units.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "host/formula/value.h"

namespace quorvel::host {

struct BinaryOperator {
  std::string_view sign;  ///< a mark, or a word in capitals
  int precedence;         ///< larger binds tighter
  Value (*apply)(const Value& left, const Value& right);
};

struct UnaryOperator {
  char sign;
  Value (*apply)(const Value& operand);
};

/// Of signs that begin alike the longest is first.
std::span<const BinaryOperator> binaryOperators();
/// "+", "-" and the closing "%".
std::span<const UnaryOperator> unaryOperators();

Value add(const Value& left, const Value& right);
/// `internal` in the unit of `value`; a plain number when it has none to give.
Value withUnitOf(const Value& value, double internal);

/// A text that formulas may grow to; beyond it is an error, so that a few cells cannot fill the memory.
inline constexpr std::size_t textLimit = 4'000'000;

}  // namespace quorvel::host
