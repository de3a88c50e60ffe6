// Languages: packages name them by tags ("en-US"), single files by the numbers of older systems (1033).
#pragma once

#include "host/cells/cell_key.h"
#include "host/sheet/sheet.h"

namespace quorvel::formats::vdx {

bool holdsLanguage(const host::CellKey& key);
/// Puts the tag in place of a number; a number that is no language's stays.
void tagLanguage(host::Cell& cell);
/// Puts the number in place of a tag; 0, for no language, where there is none.
void numberLanguage(host::Cell& cell);

}  // namespace quorvel::formats::vdx
