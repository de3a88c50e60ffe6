// Rows that single files write with all of their cells: text blocks, characters and paragraphs. Programs that read
// these files take their own defaults for what such a row leaves out.
#pragma once

#include <vector>

#include "host/cells/cell_table.h"
#include "host/sheet/store.h"

namespace quorvel::formats::vdx {

/// The cells of each row of the section, for Object of each text block; none for other sections. `first`: those of the
/// first release that wrote XML.
const std::vector<const host::CellDefinition*>& wholeRow(host::SectionNumber section, bool first);
bool isTextBlock(const host::Row& row);

/// The row with the inherited cells that it lacks.
host::Row whole(const host::Store& store, const host::Sheet& sheet, host::SectionNumber section, const host::Row& row,
                bool first);
/// The other way, for a sheet just read: a cell that only repeats what is inherited goes on following it.
void dropRepeated(const host::Store& store, host::Sheet& sheet, bool first);

}  // namespace quorvel::formats::vdx
