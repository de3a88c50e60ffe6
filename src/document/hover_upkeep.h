// Hides a shape's hyperlinks from the host's menu while the pointer is on one of the shape's indicator icons.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// `x` and `y` are inches on the active page. Turns the Invisible cell of all hyperlink rows of a shape on while the
/// pointer is inside one of the shape's indicators, and off again outside; writes only what differs. A shape without
/// indicators keeps its rows as they are.
void gvsoApp_MouseMove(const dsrVisioConnect& connect, double x, double y);

}  // namespace quorvel::addin
