// Find and Replace: runs the host's Replace so that the changed texts of a map go to their cells.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// The command. A host without the menu entry only leaves the add-in waiting for its Replace.
void cbrBtnFindReplace_Click(dsrVisioConnect& connect);

}  // namespace quorvel::addin
