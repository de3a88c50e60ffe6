// Gluing the ends of 1-D shapes, so that they follow what they are glued to.
#pragma once

#include "host/engine/engine.h"

namespace quorvel::host {

/// `end` is BeginX, BeginY, EndX or EndY of a 1-D shape; `target` a cell of a Connections row, or any cell of the
/// object section of a shape on the same page. A connection point is glued to as it is. PinX or PinY of a shape glue to
/// the shape as a whole where both allow it (GlueType): the end then walks around the shape as things move. Else the
/// end is glued to the shape's connection point nearest to the other end (its pin when it has none). Refused for
/// everything else.
Outcome glueTo(Engine& engine, const CellAddress& end, const CellAddress& target);

}  // namespace quorvel::host
