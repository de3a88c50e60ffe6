// What a shape has from its theme, and what is used instead on pages without one.
#pragma once

#include <string_view>

#include "host/formula/formula.h"
#include "host/sheet/store.h"

namespace quorvel::host {

/// Files hold this text in place of a value where the theme decides.
inline bool isThemed(const Value& value) { return value.isText() && value.textView() == "Themed"; }

/// A property of the sheet's theme by its name in formulas.
ThemeAnswer themeProperty(const Store& store, SheetId sheet, std::string_view property);

/// The value that the theme gives to the cell of the sheet.
ThemeAnswer themedCell(const Store& store, SheetId sheet, const CellKey& key);

}  // namespace quorvel::host
