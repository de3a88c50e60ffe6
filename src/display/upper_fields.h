// The three details on the Task itself: the role above it, frequency and time in its lower band.
#pragma once

#include <string_view>

#include "model/host_model.h"

namespace quorvel::addin {

/// Draws nothing for a field that is switched off or empty, for a time of 0, and for any other text than the three.
void drawTaskUpperField(const Shape& task, std::string_view field);
void deleteTaskUpperField(const Shape& task, std::string_view field);

}  // namespace quorvel::addin
