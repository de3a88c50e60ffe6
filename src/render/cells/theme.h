// A document's theme: the colours, fills, lines and fonts that cells marked as themed take.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/maybe.h"

namespace quorvel::render {

/// A colour of the theme that may still depend on the shape's own choice (the placeholder).
struct ThemeColour {
  enum Base : std::uint8_t { Fixed, Scheme, Placeholder };
  enum Change : std::uint8_t { Tint, Shade, LuminanceFactor, LuminanceShift, SaturationFactor, HueShift, Alpha };
  Base base = Placeholder;
  std::uint32_t rgb = 0;
  int scheme = 0;  ///< index into Theme::colours
  std::vector<std::pair<Change, double>> changes;
};

struct ThemeFill {
  struct Stop {
    double offset = 0;
    ThemeColour colour;
  };
  std::vector<Stop> stops;  ///< one: a plain colour; none: no fill
  double angle = 0;         ///< radians, clockwise from the right
  bool radial = false;
};

struct ThemeLine {
  ThemeColour colour;
  double weight = 0.75;  ///< points
  int pattern = 1;
  double rounding = 0;  ///< inches
  int beginArrow = 0, endArrow = 0, beginSize = 2, endSize = 2;
};

struct ThemeFont {
  ThemeColour colour;
  int style = 0;  ///< the bits of a character row's Style cell
};

struct Theme {
  /// In the order of the file's scheme: dark 1, light 1, dark 2, light 2, accents 1 to 6, link, followed link.
  std::array<std::uint32_t, 12> colours{0x000000, 0xFFFFFF, 0x44546A, 0xE7E6E6, 0x5B9BD5, 0xED7D31,
                                        0xA5A5A5, 0xFFC000, 0x4472C4, 0x70AD47, 0x0563C1, 0x954F72};
  std::uint32_t background = 0xFFFFFF;
  int schemeNumber = 0;  ///< what the page's scheme cells name it by; 0: unnumbered
  struct VariationColours {
    std::array<std::uint32_t, 7> colours{};
    bool monotone = false;  ///< every shape takes the first
  };
  std::vector<VariationColours> variationColours;
  struct VariationStyle {
    int fill = 1, line = 1, effect = 1, font = 1;  ///< 1-based
  };
  std::vector<std::array<VariationStyle, 4>> variationStyles;
  std::vector<ThemeFill> fills;
  std::vector<ThemeLine> lines, connectorLines;
  std::vector<ThemeFont> fonts, connectorFonts;
  std::string fontFamily;

  /// The colour that a quick style's colour number names: 0 dark 1, 1 light 1, 2 to 7 the accents, 8 the background,
  /// 100 to 106 the colours of the variation, all of them the first in a variation of one colour; 200 to 206 the same,
  /// each its own.
  std::uint32_t quickColour(int number, int variation) const;
  /// Opacity comes back through `opacity` when given.
  std::uint32_t resolve(const ThemeColour& colour, std::uint32_t placeholder, double* opacity = nullptr) const;
};

/// Reads a theme part. Nothing for text that is no theme.
Maybe<Theme> readTheme(std::string_view xml);

}  // namespace quorvel::render
