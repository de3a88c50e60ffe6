// Writing one cell: check, commit without events, recalculate, then notify.
#pragma once

#include <string_view>

#include "host/engine/engine.h"

namespace quorvel::host {

/// The formula without a leading "=" and the blanks around it.
std::string_view withoutEqualSign(std::string_view formula);

/// `formula` as a user writes it, a leading "=" allowed; "No Formula" and empty text clear the cell. Refused on a
/// guarded cell without `force`, for text that is no formula, for a cell that does not exist, and below the deepest
/// nesting of writes. A write that changes neither formula nor value raises nothing. Else: FormulaChanged of the cell
/// when its formula text changed, CellChanged when its value changed (kind and unit count), then CellChanged of all
/// that followed.
Outcome writeFormula(Engine& engine, const CellAddress& cell, std::string_view formula, bool force);

/// Writes a number as a constant in the units code (0: a bare number in internal units).
Outcome writeResult(Engine& engine, const CellAddress& cell, int unitsCode, double number, bool force);

}  // namespace quorvel::host
