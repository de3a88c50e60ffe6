// Brings the Tasks of an older drawing to the cells that Tasks have now.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// All Tasks of the drawing that are on a page itself. `version` is that of the cells that the drawing has. A second
/// run adds nothing twice.
void updateTasks(dsrVisioConnect& connect, const Document& document, double version);

}  // namespace quorvel::addin
