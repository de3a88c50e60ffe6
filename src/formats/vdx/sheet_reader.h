// Reads a sheet with its cells, sections and rows from an element of a single-file drawing.
#pragma once

#include "formats/package/xml_reading.h"
#include "formats/vdx/read_state.h"

namespace quorvel::formats::vdx {

/// Takes a child of a sheet's element: cells, a row of a section, or what we don't know.
void readSheetChild(FileState& state, host::Sheet& sheet, pugi::xml_node child);

/// A PageSheet, DocumentSheet or StyleSheet: attributes and all children.
void readPlainSheet(ReadState& state, host::Sheet& sheet, pugi::xml_node node);

/// Puts the rows of all sections into the order of their numbers, which files need not keep.
void orderRows(host::Sheet& sheet);

}  // namespace quorvel::formats::vdx
