// Makes a foreground page a page of a process map: adds its cells, its decorations and the two layers of the details;
// and deletes them on a page that becomes a background page.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// A page that is initialized already gets no second set of decorations and keeps its cells, except five that are
/// written every time.
void initializePage(const dsrVisioConnect& connect, const Page& page);

/// To be called when a page of a map has changed. On a background page, which is no page of the process, all that
/// initializePage added is deleted, unless something on the page was drawn or changed since. A foreground page that is
/// not initialized is initialized.
void fitToPageKind(const dsrVisioConnect& connect, const Page& page);

}  // namespace quorvel::addin
