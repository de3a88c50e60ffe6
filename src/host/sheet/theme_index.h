// Which theme a sheet has.
#pragma once

#include "host/sheet/store.h"

namespace quorvel::host {

/// The number in one of the sheet's theme cells (ColorSchemeIndex, VariationColorIndex …); where it says so, that of
/// the group around it or of the page.
int themeIndex(const Store& store, SheetId sheet, const CellKey& key);

/// The number of the theme that colours the sheet; 0: it has none.
int themeNumber(const Store& store, SheetId sheet);

}  // namespace quorvel::host
