// Brings the Task Links and Process Connectors of an older drawing to the cells that they have now.
#pragma once

#include "model/host_model.h"

namespace quorvel::addin {

/// Those of the drawing that are on a page itself. A second run changes nothing.
void updateTaskLink(const Document& document);

}  // namespace quorvel::addin
