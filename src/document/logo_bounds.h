// Keeps the logo on its page when it is moved.
#pragma once

#include "model/host_model.h"

namespace quorvel::addin {

// Each acts on a shape marked as logo only.
void keepLogoInsidePageX(const Shape& shape);
void keepLogoInsidePageY(const Shape& shape);

/// A cell has changed: calls the routine of the axis that moved, if any did.
void keepLogoInsidePage(const Cell& cell);

}  // namespace quorvel::addin
