// What a new page is furnished with: the logo, the legend and the title box.
#pragma once

#include "addin/dsr_visio_connect.h"

namespace quorvel::addin {

// A missing picture file leaves the decoration out.
void addLogo(const dsrVisioConnect& connect, const Page& page);
void addLegend(const dsrVisioConnect& connect, const Page& page);
void addTitleBox(const Page& page);

}  // namespace quorvel::addin
