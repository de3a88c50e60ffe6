// Keeps the logo on its page when it is moved.
#pragma once

#include "model/host_model.h"

namespace quorvel::addin {

// The shape must be marked as logo.
void keepLogoInsidePageX(const Shape& shape);
void keepLogoInsidePageY(const Shape& shape);

}  // namespace quorvel::addin
