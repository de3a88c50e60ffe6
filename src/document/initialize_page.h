// Makes a foreground page a page of a process map: its cells, its decorations and the two layers of the details.
#pragma once

#include "addin/dsr_visio_connect.h"

namespace quorvel::addin {

/// A page that has been through here gets no second set of decorations and keeps its cells, but for five of them that
/// are written every time.
void initializePage(const dsrVisioConnect& connect, const Page& page);

}  // namespace quorvel::addin
