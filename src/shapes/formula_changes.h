// A formula has been typed or written: times are captured and choices become plain text before anything reads them.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Goes by the cell's name, in any drawing. It comes before the change of the cell's value is told, so that a typed
/// time is safe when the time's own formula is put back.
void gvsoApp_FormulaChanged(dsrVisioConnect& connect, const Cell& cell);

}  // namespace quorvel::addin
