// Text of a shape and the fields in it.
#pragma once

#include <string_view>

#include "host/engine/engine.h"

namespace quorvel::host {

/// Replaces the text by plain characters; its fields are deleted.
Outcome setText(Engine& engine, SheetId shape, std::string_view text);

/// Inserts a field at the start of the text, so that it becomes the first row. An empty formula makes a field whose
/// formula is set afterwards.
Outcome addCustomField(Engine& engine, SheetId shape, std::string_view formula, int format);

/// True for Fields.Value[1] of a shape that has neither a field nor text: writing it makes the field.
bool isFirstField(const Engine& engine, const CellAddress& cell);
Outcome writeFirstField(Engine& engine, SheetId shape, std::string_view formula);

/// A user's text edit. The begin is refused while LockTextEdit is 1; the end raises TextChanged when the text differs.
Outcome beginTextEdit(Engine& engine, SheetId shape);
Outcome endTextEdit(Engine& engine, SheetId shape, std::string_view typed);

}  // namespace quorvel::host
