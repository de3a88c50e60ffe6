// The abbreviations of the time units that shapes show: updating them, and reading those of shapes that come from
// another drawing.
#pragma once

#include <vector>

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Redraws the time label of every Task and writes the format of every Task Link, on all pages of the document. No
/// other part of a shape holds the abbreviations.
void redrawTimeUnits(const Document& document);

/// For shapes that were just added to one document. When one of them shows another abbreviation for its unit than the
/// document has, the user is asked, once until the next selection change, whether to store it in the document.
void reconcileTimeUnits(dsrVisioConnect& connect, const std::vector<Shape>& arrived);

/// The same for selected shapes. The two flags, more than one shape and shapes of several classes, have no effect.
void CheckTimeUnitDisplay(dsrVisioConnect& connect, const Selection& selection, bool MoreThanOne, bool DiffrentShape);

}  // namespace quorvel::addin
