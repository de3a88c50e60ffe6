// The locks that keep a user's hands off the shapes that we draw into a Task.
#pragma once

#include "model/host_model.h"

namespace quorvel::addin {

/// Who removes a protected shape writes 0 to its LockDelete first, and deletes that one shape alone.
void Protection(const Shape& shape);

}  // namespace quorvel::addin
