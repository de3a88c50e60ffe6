// Geometry rows whose coordinates are shares of width and height, which older programs do not know, as rows that they
// do.
#pragma once

#include "formats/package/xml_writing.h"
#include "host/geometry/row_tags.h"
#include "host/sheet/store.h"

namespace quorvel::formats::vdx {

/// Writes the row that draws the same. Only what the sheet holds itself is written; a curve's control points are one
/// cell there and are written when any of them is held. `whole`: what is inherited is written too, as inherited with
/// its value here, because the value depends on the size of the shape.
void writeRelativeRow(XmlWriter& writer, const host::Store& store, const host::Sheet& sheet,
                      host::SectionNumber section, const host::Row& row, host::RowTag tag, bool whole);

}  // namespace quorvel::formats::vdx
