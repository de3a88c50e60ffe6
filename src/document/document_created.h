// A drawing has been created from our template.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// The document is ours; it need not be active. There is no toolbar yet that this could build.
void gvsoApp_DocumentCreated(dsrVisioConnect& connect, const Document& document);

}  // namespace quorvel::addin
