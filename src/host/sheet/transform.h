// From a shape's own coordinates to its parent's and the page's. Inches, y upward.
#pragma once

#include "host/geometry/matrix.h"
#include "host/sheet/store.h"

namespace quorvel::host {

/// The shape's coordinates into those of the group or page that holds it; the identity for a page's sheet.
Matrix toParentMatrix(const Store& store, SheetId shape);
Matrix toPageMatrix(const Store& store, SheetId shape);

}  // namespace quorvel::host
