// Values that a file does not hold: cells with a formula only, which are evaluated on opening.
#pragma once

#include <span>

#include "host/recalc/cell_address.h"
#include "host/sheet/store.h"

namespace quorvel::host {

/// Gives these cells, and what instances inherit from them, the value of their formula. Each comes after those among
/// them that it reads. Cells whose formula has a function that we lack stay as they are.
void evaluateMissing(Store& store, std::span<const CellAddress> cells);

}  // namespace quorvel::host
