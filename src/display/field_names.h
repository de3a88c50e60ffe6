// The names of a Task's detail fields, by their position.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Fills `fieldNames` from index 1 to 17.
void fillFieldNames(dsrVisioConnect& connect);

}  // namespace quorvel::addin
