// A listener that looks after marks of its own in the drawing.
#pragma once

#include "model/host_model.h"

namespace quorvel {

/// What it changes while documents are made, opened, saved and closed, while shapes are selected and while the pointer
/// moves is upkeep: no step for the user to take back, and no change of the document. Whatever other listeners do then
/// is a change as any.
class UpkeepListener : public ApplicationEvents {};

}  // namespace quorvel
