// The paths of Geometry sections as short lines, for formulas that measure them.
#pragma once

#include "base/maybe.h"
#include "host/formula/formula.h"
#include "host/sheet/store.h"

namespace quorvel::host {

/// The segments of the section, gaps between them left out. Nothing for a section that has no length, as an infinite
/// line; `exists` is false when the sheet has no such section.
Maybe<FormulaPath> measuredPath(const Store& store, SheetId sheet, SectionNumber section, bool& exists);

/// Left, bottom, right and top of all sections of the shape and its members, in the parent's coordinates. Sections that
/// have no length count with their vertices. Nothing for a shape that draws nothing.
Maybe<std::vector<double>> drawnBox(const Store& store, SheetId shape);

}  // namespace quorvel::host
