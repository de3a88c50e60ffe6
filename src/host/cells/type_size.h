// The lengths of type and lines, which people give in points.
#pragma once

#include "host/cells/cell_key.h"

namespace quorvel::host {

/// The cell is one such as Char.Size, LineWeight or LeftMargin: a number without a unit is in points there.
bool takesPoints(const CellKey& key);

}  // namespace quorvel::host
