// The mark on what is selected: the background of the text that it is known by.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// To be called when the selection of a window has changed that shows a foreground page of the document. What the
/// window has marked before loses its mark. Each selected Task is marked on its description, detail lines and sub-task
/// boxes on their own text; a Task that was selected with the right button has no mark. Does nothing outside of maps.
void markSelection(dsrVisioConnect& connect, const Window& window, const Document& document);

/// To be called for a shape that was added: a copy of a marked one that is not selected itself loses the mark at the
/// next change of a selection. It is not done at once, because that would be part of the undo step.
void unmarkCopyLater(dsrVisioConnect& connect, const Shape& copy);

/// What is saved or drawn for others shows no selection: to be called before and after. A mark that is not shown again
/// comes back with the next change of the selection.
void hideMarks(const dsrVisioConnect& connect, const Document& document);
void showMarks(const dsrVisioConnect& connect, const Document& document);

/// To be called before the document closes.
void forgetSelection(dsrVisioConnect& connect, const Document& document);

}  // namespace quorvel::addin
