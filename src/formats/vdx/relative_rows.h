// Geometry rows whose coordinates are shares of width and height, which older programs do not know, as rows that they
// do.
#pragma once

#include "formats/package/xml_writing.h"
#include "host/sheet/store.h"

namespace quorvel::formats::vdx {

/// True for a published row tag of such a row.
bool isRelative(std::uint8_t tag);

/// Writes the row that draws the same. Only what the sheet holds itself is written; a curve's control points are one
/// cell there and are written when any of them is held.
void writeRelativeRow(XmlWriter& writer, const host::Store& store, const host::Sheet& sheet,
                      host::SectionNumber section, const host::Row& row, std::uint8_t tag);

}  // namespace quorvel::formats::vdx
