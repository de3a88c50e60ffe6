// Puts working texts and fields in the place of what the stencil's masters hold.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Walks the dropped shape and what is selected beside it on its page, if that is shown. A shape whose description the
/// user has changed already is left alone.
void InitializeZNBShapes(const dsrVisioConnect& connect, const Shape& dropped, const Page& page);

}  // namespace quorvel::addin
