// The paths of Geometry sections as short lines, for formulas that measure them.
#pragma once

#include "base/maybe.h"
#include "host/formula/formula.h"
#include "host/sheet/store.h"

namespace quorvel::host {

/// A row from MoveTo on makes a segment; a MoveTo after the first starts a path of its own, of which only what comes
/// before it is measured. Nothing for a section with splines or curves by weights, which are not measured here;
/// `exists` false when the sheet has no such section.
Maybe<FormulaPath> pathOf(const Store& store, SheetId sheet, SectionNumber section, bool& exists);

/// Left, bottom, right and top of all sections of the shape and its members, in the parent's coordinates. Curves that
/// are not measured count with their end points. Nothing for a shape that draws nothing.
Maybe<std::vector<double>> drawnBox(const Store& store, SheetId shape);

}  // namespace quorvel::host
