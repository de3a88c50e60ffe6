// The parsed formula's tree, for the parser and the evaluator alone.
#pragma once

#include <cstdint>

namespace quorvel::host {

enum class NodeKind : std::uint8_t { Constant, Reference, Empty, Unary, Binary, Call, UnknownCall };

struct FormulaNode {
  NodeKind kind = NodeKind::Empty;
  std::uint8_t operation = 0;  ///< row of the operator table
  std::uint16_t function = 0;  ///< row of the function table
  std::uint32_t first = 0;     ///< constant, reference, first operand, or place of the first argument
  std::uint32_t second = 0;    ///< second operand, or number of arguments
};

}  // namespace quorvel::host
