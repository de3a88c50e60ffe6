// The document sheet's cells: reading those that shapes are made from, and the two that are rewritten whenever a
// document is created.
#pragma once

#include <string>
#include <string_view>

#include "model/host_model.h"

namespace quorvel::addin {

/// A cell of the document sheet as text; empty when the document lacks it.
std::string documentText(const Document& document, std::string_view cell);

/// True when the cell that says whether the document was ever saved reads so ("TRUE" or "False"), in any letter case:
/// drawings hold a truth value or a text. False without the cell.
bool wasSavedReads(const Document& document, std::string_view word);

/// The separator between the arguments of a formula on this machine. Every formula that is composed of parts uses it;
/// formulas that are constants are written with commas.
std::string listSeparator(const Document& document);
/// Deletes User.lstSpr and adds it again: it holds the separator of this machine, not of the one that made the drawing.
void renewListSeparator(const Document& document);

/// Writes the version of the document's cells that this add-in writes.
void stampVersion(const Document& document);

}  // namespace quorvel::addin
