// The locks that keep a user from changing the shapes that the add-in draws into a Task.
#pragma once

#include "model/host_model.h"

namespace quorvel::addin {

/// To delete a protected shape, write 0 to its LockDelete first, and delete that shape alone.
void Protection(const Shape& shape);

}  // namespace quorvel::addin
