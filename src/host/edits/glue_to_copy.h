// A copy takes the place of a shape that is deleted: what is glued to the shape becomes glued to the copy.
#pragma once

#include <vector>

#include "host/engine/engine.h"

namespace quorvel::host {

/// `leaving`: the shape and its members, before they are removed. `copies`: what Deletions kept; the last copy that
/// still exists counts. Raises no event; gives the cells of ends whose formulas changed, to be evaluated when the shape
/// is removed.
std::vector<CellAddress> glueToCopy(Engine& engine, const std::vector<SheetId>& leaving,
                                    const std::vector<SheetMap>& copies);

}  // namespace quorvel::host
