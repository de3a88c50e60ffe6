// The locks that keep a user from changing the shapes that the add-in draws into a Task.
#pragma once

#include "model/host_model.h"

namespace quorvel::addin {

void Protection(const Shape& shape);
/// Deletes a shape whatever its lock; false when it is still there.
bool deleteProtected(const Shape& shape);

}  // namespace quorvel::addin
