// Writes of cells that no later event makes up for: a refused call is repeated once.
#pragma once

#include <string>
#include <string_view>

#include "base/ask_again.h"
#include "base/basic_text.h"
#include "model/host_model.h"

namespace quorvel::addin {

/// Each is false when the cell could not be written.
inline bool putFormula(const Shape& shape, std::string_view cell, const std::string& formula) {
  return askAgain([&] { return shape.Cells(cell).FormulaForce(formula); });
}
inline bool putText(const Shape& shape, std::string_view cell, std::string_view text) {
  return putFormula(shape, cell, quoted(text));
}

}  // namespace quorvel::addin
