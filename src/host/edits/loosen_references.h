// What becomes of formulas that read a shape which is about to be deleted.
#pragma once

#include <vector>

#include "host/engine/engine.h"

namespace quorvel::host {

/// Ends that are glued to the leaving shapes stay where they are, as constants; in every other formula of the drawing
/// the reference becomes REF(). Numbers of deleted shapes may be used again after the file is reopened, and a
/// formula that still named one would then read another shape. Gives the cells to evaluate once the shapes are deleted.
std::vector<CellAddress> loosenReferencesTo(Engine& engine, const std::vector<SheetId>& leaving);

}  // namespace quorvel::host
