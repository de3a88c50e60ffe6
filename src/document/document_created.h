// Handles a drawing that was created from the product's template.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// The document has the product's template; it need not be active. No toolbar is built.
void gvsoApp_DocumentCreated(dsrVisioConnect& connect, const Document& document);

}  // namespace quorvel::addin
