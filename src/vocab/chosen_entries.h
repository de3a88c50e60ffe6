// Choices from fixed lists as plain text, where the host stores them as places in the list.
#pragma once

#include <string_view>

#include "model/host_model.h"

namespace quorvel::addin {

/// Is it one of the properties whose value is chosen from a list of ours? By the cell's short name.
bool isChosenFromList(std::string_view cellName);

/// A host of release "2007" stores a choice as an INDEX formula, while everything else here reads and compares plain
/// text: the formula is replaced by the entry that it names, or by an empty text where it names none. A cell without an
/// INDEX formula is left alone, which also ends the second pass that the write raises.
void replaceIndexByEntry(const Shape& shape, const Cell& cell, std::string_view cellName);

}  // namespace quorvel::addin
