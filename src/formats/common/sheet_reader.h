// Reads a sheet with its cells, sections and rows from an element of a part.
#pragma once

#include "formats/common/read_state.h"
#include "formats/package/xml_reading.h"

namespace quorvel::formats {

/// The carried part of a sheet, made when missing. Only while the drawing is read.
CarriedSheet& carriedOf(host::Sheet& sheet);

/// Name and NameU; a missing one is taken from the other.
void readNames(pugi::xml_node node, std::string& name, std::string& universalName, CarriedName& carried);
/// True when a writer without the carried names would not write them as they were.
bool needsCarrying(const CarriedName& names);

/// Takes one attribute of a sheet's element; false when it is none that all sheets have.
bool readStyleAttribute(const ReadState& state, host::Sheet& sheet, std::string_view name, std::string_view value);

/// Takes a Cell, Section or unknown child into the sheet.
void readSheetChild(ReadState& state, host::Sheet& sheet, pugi::xml_node child);

/// Styles, UniqueID and unknown attributes of a sheet that is no shape.
void readSheetAttributes(ReadState& state, host::Sheet& sheet, pugi::xml_node node);

/// A PageSheet, DocumentSheet or StyleSheet: attributes and all children.
void readPlainSheet(ReadState& state, host::Sheet& sheet, pugi::xml_node node);

}  // namespace quorvel::formats
