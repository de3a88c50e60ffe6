// The host's Replace on a map: it sees plain texts only, and what it changes there goes to the cells that they show.
//
// While a modal dialog is open during Replace, the fields of guidelines, resources and descriptions are plain text. All
// are fields again when Replace has ended.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Turns the texts of the drawing into plain ones, when Replace runs for the add-in. Does nothing for a dialog that
/// opens inside another one.
void gvsoApp_BeforeModal(dsrVisioConnect& connect);
/// Puts the description boxes back to their places, when the dialog is the one that the texts were prepared for.
void gvsoApp_AfterModal(dsrVisioConnect& connect);

/// Replace begins to work on the active drawing.
void enterReplaceScope(dsrVisioConnect& connect);
/// Replace has ended: writes the changed texts to their cells, and makes all texts fields again.
void exitReplaceScope(dsrVisioConnect& connect);

/// The text of a shape has changed while Replace runs.
void gvsoApp_TextChanged(dsrVisioConnect& connect, const Shape& shape);

}  // namespace quorvel::addin
