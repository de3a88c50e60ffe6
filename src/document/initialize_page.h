// Makes a foreground page a page of a process map: its cells, its decorations and the two layers of the details; and
// takes them away from a page that went to the background.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// A page that has been through here gets no second set of decorations and keeps its cells, but for five of them that
/// are written every time.
void initializePage(const dsrVisioConnect& connect, const Page& page);

/// A page of a map has changed its kind. On a background page, which is no page of the process, all that
/// initializePage made is taken away again, unless anything on the page was drawn or touched since. A foreground page
/// that lacks it gets it.
void fitToPageKind(const dsrVisioConnect& connect, const Page& page);

}  // namespace quorvel::addin
