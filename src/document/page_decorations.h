// The decorations of a new page: the logo, the legend and the title box.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

// A decoration whose image file is missing is left out.
void addLogo(const dsrVisioConnect& connect, const Page& page);
void addLegend(const dsrVisioConnect& connect, const Page& page);
void addTitleBox(const Page& page);

/// True when the shape is one of the three and its position and text are unchanged.
bool isDecorationAsMade(const Shape& shape);

}  // namespace quorvel::addin
