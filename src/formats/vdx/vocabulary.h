// The elements of the single-file XML format: which one holds which cells, and which release added it.
#pragma once

#include <string_view>

#include "formats/package/xml_reading.h"
#include "host/cells/cell_table.h"

namespace quorvel::formats::vdx {

inline constexpr std::string_view coreNamespace = singleFileNamespace;
/// The first release that wrote XML named its elements so; nothing else distinguishes its files.
inline constexpr std::string_view firstNamespace = firstFileNamespace;

/// The vocabulary that a cell belongs to. What was added later is in elements of its own namespace next to those of the
/// core, so that older programs ignore it.
enum class Vocabulary { Core, Second, Third, Package };

/// Prefix and namespace of elements in Second and Third.
std::string_view prefixOf(Vocabulary vocabulary);
std::string_view namespaceOf(Vocabulary vocabulary);

/// The namespace of the element's prefix, by the declarations on it and around it; empty: undeclared.
std::string_view namespaceOf(pugi::xml_node node);
/// Whose element this is; Core also for elements without a namespace. False for those of others.
bool vocabularyOf(pugi::xml_node node, Vocabulary& vocabulary);

/// The vocabulary of a cell. Package: this format has no word for it.
Vocabulary vocabularyOf(const host::CellKey& key);

/// The element around the cells of a row of the object section ("XForm", "Line" …); empty when there is none.
std::string_view elementOfObjectRow(std::uint32_t row);
/// The row of that element; negative for other elements.
int objectRowOf(std::string_view element);

/// The element that is a row of the section ("Prop", "Char" …) or, for Geometry, the section; empty when there is none.
std::string_view elementOf(host::SectionNumber section);
/// None for other elements.
host::SectionNumber sectionOf(std::string_view element);
/// True for sections whose rows without a name go by "Row_" and their ID, as formulas refer to them.
bool namesItsRows(host::SectionNumber section);

/// The element name of a cell inside its row's element.
std::string_view cellElement(const host::CellKey& key);

}  // namespace quorvel::formats::vdx
