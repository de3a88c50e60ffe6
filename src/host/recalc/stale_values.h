// Inherited values that an instance's own cells have made untrue.
#pragma once

#include <vector>

#include "host/recalc/cell_address.h"
#include "host/sheet/store.h"

namespace quorvel::host {

/// Appends the cells of instances that have a formula and its value from their master, while the instance has another
/// value, or a text, for what the formula reads. Some programs write such values into the file with the instance,
/// others leave them to the reader. Cells that the instance holds itself are not among them: the file's value counts.
void collectStaleValues(const Store& store, DocumentId document, std::vector<CellAddress>& cells);

}  // namespace quorvel::host
