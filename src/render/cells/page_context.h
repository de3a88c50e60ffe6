// What all shapes of a page share while it is drawn.
#pragma once

#include <vector>

#include "host/sheet/store.h"
#include "render/cells/theme.h"

namespace quorvel::render {

class ShapeCells;

/// What cells marked as themed take.
struct ThemeChoice {
  const Theme* theme = nullptr;  ///< null: none
  int variationColour = 0, variationStyle = 0;
};

struct PageContext : ThemeChoice {
  const host::Store& store;
  const host::Document& document;
  host::SheetId pageSheet;
  double scale = 72;               ///< points on paper for an inch of the drawing
  std::vector<bool> layerVisible;  ///< by layer index
  host::PageId front;              ///< the page that this one is drawn behind; null: it is drawn for itself

  PageContext(const host::Store& of, const host::Page& page, const std::vector<Theme>& themes);
};

/// What the shape's own cells choose; what they leave open is as in `outer`, its group's or the page's choice.
ThemeChoice themeChosenBy(const ShapeCells& shape, const std::vector<Theme>& themes, const ThemeChoice& outer);

}  // namespace quorvel::render
