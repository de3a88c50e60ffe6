// What the themes of documents give to the cells of their shapes.
#pragma once

#include <string_view>

#include "host/cells/cell_key.h"
#include "host/formula/value.h"
#include "host/sheet/ids.h"

namespace quorvel::host {

class Store;

/// Themes are read outside of the host, which knows only whether a shape has one.
class ThemeValues {
 public:
  virtual ~ThemeValues() = default;
  /// The property of the theme by its name in formulas ("FillColor", "AccentColor2"; "#2" is a colour by number) for a
  /// shape or a page that has a theme. Nothing when the theme has no such property.
  virtual Maybe<Value> valueOf(const Store& store, SheetId sheet, std::string_view property) const = 0;
  /// The colour 0xRRGGBB as the gradient that the theme gives the shape has it at the 1-based stop; the same colour
  /// when that is no gradient.
  virtual Maybe<std::uint32_t> throughGradientStop(const Store& store, SheetId sheet, std::uint32_t rgb,
                                                   int stop) const = 0;
};

}  // namespace quorvel::host
