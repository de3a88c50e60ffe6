// The two buttons at the end of a small dialog.
#pragma once

#include "model/form.h"

namespace quorvel::addin {

/// Puts them next to each other into a row of the form's grid (0-based) and gives them Enter and Escape.
inline void layOutOkAndCancel(Control& ok, Control& cancel, int row, int firstColumn = 0) {
  ok.gridRow = cancel.gridRow = row;
  ok.gridColumn = firstColumn;
  cancel.gridColumn = firstColumn + 1;
  ok.isDefaultButton = true;
  cancel.isCancelButton = true;
}

}  // namespace quorvel::addin
