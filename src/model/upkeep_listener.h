// A listener that keeps its own marks in the drawing up to date.
#pragma once

#include "model/host_model.h"

namespace quorvel {

/// What it changes while documents are made, opened, saved and closed, while shapes are selected and while the pointer
/// moves is upkeep: no undo step and no change of the document. What other listeners do in the same event is a normal
/// change.
class UpkeepListener : public ApplicationEvents {};

}  // namespace quorvel
