// Choices from fixed lists as plain text, where the host stores an index into the list.
#pragma once

#include <string_view>

#include "model/host_model.h"

namespace quorvel::addin {

/// True for the short name of a property whose value is chosen from one of the add-in's lists.
bool isChosenFromList(std::string_view cellName);

/// A host of release "2007" stores a choice as an INDEX formula, while everything else here reads and compares plain
/// text: the formula is replaced by the entry that it names, or by an empty text where it names none. A cell without an
/// INDEX formula is not changed, so the event that the write raises has no further effect.
void replaceIndexByEntry(const Shape& shape, const Cell& cell, std::string_view cellName);

}  // namespace quorvel::addin
