// What follows from a changed cell: the drawing around a Task and the text of a Task Link keep in step with their data.
#pragma once

#include <string_view>

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Called for every cell that changes, in whatever drawing, with its short name, the add-in's own writes included; most
/// of them lead nowhere. Routines that write
/// enter it again; each is such that the second pass finds nothing to do.
void gvsoApp_CellChanged(dsrVisioConnect& connect, const Cell& cell, std::string_view name);

}  // namespace quorvel::addin
