// Writes sheets: only what a sheet holds itself, with what is carried from its file.
#pragma once

#include <string>

#include "formats/common/carried.h"
#include "formats/package/xml_writing.h"
#include "host/sheet/store.h"

namespace quorvel::formats {

/// IsCustom… attributes and both names, as they were read while they are unchanged.
void writeNames(XmlWriter& writer, const CarriedName* carry, const std::string& name, const std::string& universalName);
void writeAttributes(XmlWriter& writer, const AttributeList& attributes);
/// True for the number of a master that the shape's file lacked, when the document has another one of this number now:
/// the shape must not become its instance.
bool namesAnotherMaster(const host::Store& store, const host::Sheet& sheet, std::string_view attribute,
                        std::string_view value);

void writeStyleAttributes(XmlWriter& writer, const host::Store& store, const host::Sheet& sheet);
/// LineStyle, FillStyle, TextStyle, UniqueID and carried attributes.
void writeSheetAttributes(XmlWriter& writer, const host::Store& store, const host::Sheet& sheet);
/// Cells, sections and carried elements.
void writeSheetContents(XmlWriter& writer, const host::Store& store, const host::Sheet& sheet);

/// A section of `sheet`, whole or in part.
void writeSection(XmlWriter& writer, const host::Store& store, const host::Sheet& sheet, const host::Section& section);
/// The kind of a Geometry row of the sheet, or else of its master's row. 0 when neither has one.
std::uint8_t rowTypeOf(const host::Store& store, const host::Sheet& sheet, host::SectionNumber section,
                       const host::Row& row);
/// One Cell element. `row` is what its row carries; may be null.
void writeCellElement(XmlWriter& writer, const host::CellKey& key, const host::Cell& cell, const CarriedRow* row);

/// The attributes for the size of an enhanced metafile, where its file had none.
void writeMetafileSize(XmlWriter& writer, const host::ForeignData& picture, const CarriedForeign* carry);

}  // namespace quorvel::formats
