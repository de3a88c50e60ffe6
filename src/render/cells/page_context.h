// What all shapes of a page share while it is drawn.
#pragma once

#include <vector>

#include "host/sheet/store.h"
#include "render/cells/theme.h"

namespace quorvel::render {

struct PageContext {
  const host::Store& store;
  const host::Document& document;
  host::SheetId pageSheet;
  const Theme* theme = nullptr;  ///< null: none known
  int variationColour = 0, variationStyle = 0;
  double scale = 72;               ///< points on paper for an inch of the drawing
  std::vector<bool> layerVisible;  ///< by layer index
  host::PageId front;              ///< the page that this one is drawn behind; null: it is drawn for itself

  PageContext(const host::Store& of, const host::Page& page, const std::vector<Theme>& themes);
};

}  // namespace quorvel::render
