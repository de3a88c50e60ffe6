// The command that puts the date of the last save into the selected shapes.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Asks for the format. Shapes of a process map are left as they are, without a message.
void insertLastSaveDate(dsrVisioConnect& connect);

}  // namespace quorvel::addin
