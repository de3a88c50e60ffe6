// The cells that tell formulas of a drawing whether the add-in is there, and dialogs whether the drawing was ever
// saved. The file says that the add-in is not there: programs without it must show what works without it.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

// Each for the document of the event. A document without a cell is left without it.

void beforeSave(const Document& document);
void beforeSaveAs(dsrVisioConnect& connect, const Document& document);
/// The document counts as unchanged after it.
void afterSave(const Document& document);
void afterSaveAs(dsrVisioConnect& connect, const Document& document);
/// Undoes what a Save As began and did not end. Nothing when none is under way.
void endCancelledSaveAs(dsrVisioConnect& connect);

}  // namespace quorvel::addin
