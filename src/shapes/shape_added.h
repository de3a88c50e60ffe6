// Handles a shape that was added to a page: dropped, pasted, duplicated or imported.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// `page` is the shape's page, a foreground page. Does nothing outside of maps.
void gvsoApp_ShapeAdded(dsrVisioConnect& connect, const Shape& shape, const Page& page);

}  // namespace quorvel::addin
