// The consequences of a changed cell: the details around a Task and the text of a Task Link follow their data.
#pragma once

#include <string_view>

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Called with the short name of every cell that changes, in any drawing, also for the add-in's own writes; most have
/// no consequence. The writes of a consequence raise the event again; the second call then changes nothing.
void gvsoApp_CellChanged(dsrVisioConnect& connect, const Cell& cell, std::string_view name);

}  // namespace quorvel::addin
