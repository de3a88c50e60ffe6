// The mark of a Task's notes goes when the user empties them.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// To be called as the shape data dialog opens and closes: of the selected shapes, those without notes lose the mark.
void removeMarksOfEmptyNotes(const dsrVisioConnect& connect);

}  // namespace quorvel::addin
