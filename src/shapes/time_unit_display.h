// The abbreviations of the time units as the shapes show them: bringing them up to date, and taking over those of
// shapes that come from another drawing.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Draws the time label of every Task anew and composes the picture of every Task Link, on all pages of the
/// document. Shapes hold the abbreviations in these alone.
void redrawTimeUnits(const Document& document);

/// The shapes have just arrived. When one of them shows another abbreviation for its unit than their document holds,
/// the user is asked, once until the next selection change, whether the document takes it over. The two flags, more
/// than one shape and shapes of several classes, have no effect.
void CheckTimeUnitDisplay(dsrVisioConnect& connect, const Selection& selection, bool MoreThanOne, bool DiffrentShape);

}  // namespace quorvel::addin
