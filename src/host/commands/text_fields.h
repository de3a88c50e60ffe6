// Text of a shape and the fields in it.
#pragma once

#include <string_view>

#include "host/engine/engine.h"

namespace quorvel::host {

/// Replaces the text by plain characters; its fields are deleted.
Outcome setText(Engine& engine, SheetId shape, std::string_view text);

/// The text with new pieces; its fields stay those of the rows.
void setTextBody(Engine& engine, SheetId shape, TextBody body);

/// Inserts a field in front of the character at the 0-based place in the text, fields expanded; a place inside a field
/// is that field's start. Rows of fields are in text order, so those behind it move one down. An empty formula makes a
/// field whose formula is set afterwards.
Outcome addCustomField(Engine& engine, SheetId shape, std::string_view formula, int format, int place = 0);

/// True for Fields.Value[1] of a shape that has neither a field nor text: writing it makes the field.
bool isFirstField(const Engine& engine, const CellAddress& cell);
Outcome writeFirstField(Engine& engine, SheetId shape, std::string_view formula);

/// A user's text edit. The begin raises its event first, in which a listener may unlock the text, and is refused when
/// LockTextEdit is 1 afterwards. The end raises TextChanged when the text differs, and then its own event.
Outcome beginTextEdit(Engine& engine, SheetId shape);
Outcome endTextEdit(Engine& engine, SheetId shape, std::string_view typed);

}  // namespace quorvel::host
