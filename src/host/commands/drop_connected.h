// Dropping a shape beside another one with a connector between them.
#pragma once

#include "host/commands/shapes.h"

namespace quorvel::host {

/// `target` is in no group. `direction`: 1 above, 2 below, 3 left, 4 right of it; 0 is as 4. The connector
/// is an instance of `connector`, or a line for null, glued from `target` to the new shape, which is selected at the
/// end. One undo step; what a handler removed during it stays removed.
ShapeOutcome dropConnected(Engine& engine, PageId page, MasterId master, SheetId target, int direction,
                           MasterId connector);

}  // namespace quorvel::host
