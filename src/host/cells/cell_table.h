// The cells that the host knows: names, places, kinds of value and defaults, one row each.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "base/maybe.h"
#include "host/cells/cell_key.h"
#include "host/cells/cell_units.h"

namespace quorvel::host {

struct CellDefinition {
  SectionNumber section;  ///< SectionNumber::Geometry means all Geometry sections
  std::uint32_t row;  ///< row number in the object section; 0 for Geometry's component row, 1 for its vertices; else 0
  Column column;
  std::string_view name;  ///< as files write it: "PinX", "Value", "SubAddress"
  CellUnits units;
  StyleSource style;
  double defaultNumber;  ///< value of a cell that no sheet holds
};

std::span<const CellDefinition> cellDefinitions();
/// Null for a cell that we don't know.
const CellDefinition* definitionOf(const CellKey& key);

/// The section of a file's section name: "User", "Property", "Actions", "Character", "Geometry" (the first), … None for
/// a name that we don't know.
SectionNumber sectionOfFileName(std::string_view name);
std::string_view fileNameOf(SectionNumber section);

/// The place of a cell of the object section by its file name, in any letter case; a null key for an unknown name.
CellKey objectCell(std::string_view fileName);
/// The same for a name met in a file: an unknown one gets a place of its own and is carried along.
CellKey objectCellOrNew(std::string_view fileName);
/// Column of a cell of a row by its file name, in any letter case. Geometry rows and the component row share a section.
Maybe<Column> columnOf(SectionNumber section, std::string_view fileName);
Column columnOrNew(SectionNumber section, std::string_view fileName);
/// The file name of a cell, unknown ones included.
std::string_view columnName(const CellKey& key);

}  // namespace quorvel::host
