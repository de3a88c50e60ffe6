// The themes that a drawing's file brings.
#pragma once

#include <vector>

#include "host/sheet/store.h"
#include "render/cells/theme.h"

namespace quorvel {

std::vector<render::Theme> themesOf(const host::Document& document);

}  // namespace quorvel
