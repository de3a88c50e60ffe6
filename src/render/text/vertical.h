// Letters that stay upright where text runs downward.
#pragma once

#include <vector>

#include "render/scene/scene.h"

namespace quorvel::render {

/// Takes the letters of writings without a slant to the side, such as Chinese and Japanese, out of a text that is drawn
/// turned by a quarter to the right, and gives each as a text of its own that is not turned.
std::vector<TextItem> uprightLetters(TextItem& text);

}  // namespace quorvel::render
