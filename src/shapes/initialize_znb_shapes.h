// Replaces the texts of the stencil's masters by empty texts and fields.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Visits the dropped shape and the selected shapes of its page, if that is shown. A shape whose description the user
/// has changed is skipped.
void InitializeZNBShapes(const dsrVisioConnect& connect, const Shape& dropped, const Page& page);

}  // namespace quorvel::addin
