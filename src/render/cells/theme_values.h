// What a theme gives to the formulas of a shape.
#pragma once

#include <string_view>
#include <vector>

#include "host/sheet/store.h"
#include "render/cells/theme.h"

namespace quorvel::render {

/// The property of the theme that the sheet's page has, by its name in formulas; nothing when the themes do not say.
Maybe<host::Value> themeProperty(const host::Store& store, const std::vector<Theme>& themes, host::SheetId sheet,
                                 std::string_view property);

/// `rgb` as the gradient of the shape's fill has it at the 1-based stop; the same colour when that fill is plain.
std::uint32_t throughGradientStop(const host::Store& store, const std::vector<Theme>& themes, host::SheetId sheet,
                                  std::uint32_t rgb, int stop);

}  // namespace quorvel::render
