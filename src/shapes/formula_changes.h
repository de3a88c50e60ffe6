// Handles a formula that was typed or written: stores times, and replaces choices by plain text, before they are read.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Selects by the cell's name, in any drawing. This event is raised before CellChanged, so a typed time is stored
/// before the time's own formula is written again.
void gvsoApp_FormulaChanged(dsrVisioConnect& connect, const Cell& cell);

}  // namespace quorvel::addin
