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

/// An end that walks stays where it is, and walks no longer.
void freeWalkingEnd(Engine& engine, SheetId connector, bool begin);

/// Call when a formula was written to a cell: an end whose formula glues no longer is set free altogether, and one that
/// is glued by hand gets its entry among the page's connects. `before`: the formula that stood there.
void followGlue(Engine& engine, const CellAddress& cell, const FormulaPtr& before);

}  // namespace quorvel::host
