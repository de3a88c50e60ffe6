// The column of guidelines, resources and supporting roles below a Task.
#pragma once

#include <string_view>

#include "connect/dsr_visio_connect.h"
#include "display/list_rows.h"

namespace quorvel::addin {

/// Draws the lower fields from `field` on that are switched on and not empty, one below the other without gaps. `old`
/// holds the list rows before the change: the hyperlinks of a line follow its text. Nothing for a text that is no
/// lower field's tag.
void drawTaskLowerFields(const dsrVisioConnect& connect, const Shape& task, std::string_view field,
                         const ListRows& old);

}  // namespace quorvel::addin
