// What a shape would hold without its master: everything that it inherits, as cells of its own.
#pragma once

#include <memory>
#include <vector>

#include "host/sheet/store.h"

namespace quorvel::host {

struct OwnContent {
  std::vector<Section> sections;
  std::shared_ptr<const TextBody> text;
  std::shared_ptr<const ForeignData> foreign;
  SheetId lineStyle, fillStyle, textStyle;
};

/// Formulas name the shapes of the sheet's own page, not the master's. What styles give is left to the styles.
OwnContent ownContentOf(const Store& store, SheetId sheet);

}  // namespace quorvel::host
