// Hyperlinks within a drawing keep leading to a page that gets another name.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// To be called when a page of a map has changed. Compares no names: the page sheet holds the name that links were last
/// brought up to date for, and any change of the page finds those that still use it. The user is asked once; after No
/// the links keep the old name for good. A page without that cell is the target of no link. A name with a "/" cannot be
/// linked to: the user is warned, and the links wait for the next name.
void gvsoApp_PageChanged(dsrVisioConnect& connect, const Page& page);

}  // namespace quorvel::addin
