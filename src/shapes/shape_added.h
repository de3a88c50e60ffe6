// A shape has entered a page: dropped, pasted, duplicated or imported.
#pragma once

#include "addin/dsr_visio_connect.h"

namespace quorvel::addin {

/// The active page is a foreground page. Does nothing outside an initialized document of ours.
void gvsoApp_ShapeAdded(dsrVisioConnect& connect, const Shape& shape);

}  // namespace quorvel::addin
