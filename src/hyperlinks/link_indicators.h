// What shows that a shape has hyperlinks goes with the last of them.
#pragma once

#include <span>

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// To be called after the links of these shapes were written. Of those without links: a detail line loses its icon and
/// the kept links of its row, a sub-task box and a Task lose their mark, and a Process Connector its target. A
/// connector or box whose first link leads to no Task shows no ID, unless it was typed.
void syncLinkIndicators(const dsrVisioConnect& connect, std::span<const Shape> selection);

}  // namespace quorvel::addin
