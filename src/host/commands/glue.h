// Gluing the ends of 1-D shapes, so that they follow what they are glued to.
#pragma once

#include "host/engine/engine.h"

namespace quorvel::host {

/// `end` is BeginX, BeginY, EndX or EndY of a 1-D shape; `target` a cell of a Connections row, or any cell of the
/// object section of a shape on the same page, which glues to that shape's connection point nearest to the other end
/// (its pin when it has none). Refused for everything else.
Outcome glueTo(Engine& engine, const CellAddress& end, const CellAddress& target);

}  // namespace quorvel::host
