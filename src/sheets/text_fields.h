// Texts of shapes that are one field and show a cell.
#pragma once

#include <string>

#include "base/ask_again.h"
#include "model/host_model.h"

namespace quorvel::addin {

/// False for plain text, and when the host refuses the question.
inline bool hasTextField(const Shape& shape) { return shape.CellExists("Fields.Value[1]", 0) == true; }

/// The shape's text becomes a field that shows the formula's value.
inline void showInText(const Shape& shape, const std::string& formula) {
  // In front of a text that remains, the field would only be a part of it.
  if (askAgain([&] { return shape.SetText(std::string()); }))
    askAgain([&] { return shape.Characters().AddCustomField(formula, 0); });
}

}  // namespace quorvel::addin
