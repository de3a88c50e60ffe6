// What a new page is furnished with: the logo, the legend and the title box.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

// A missing picture file leaves the decoration out.
void addLogo(const dsrVisioConnect& connect, const Page& page);
void addLegend(const dsrVisioConnect& connect, const Page& page);
void addTitleBox(const Page& page);

/// Is the shape one of the three, with its place and text as they were made?
bool isDecorationAsMade(const Shape& shape);

}  // namespace quorvel::addin
