// Finding a text in a shape's text and replacing it.
#pragma once

#include <string_view>

#include "host/sheet/sheet.h"

namespace quorvel::host {

struct ReplaceOptions {
  bool matchCase = false;
  bool wholeWords = false;  ///< no letter or digit next to it
};

/// Replaces each occurrence in the plain characters, from the start, and gives their number. An occurrence may lie over
/// pieces of different formats: what replaces it has that of its first character. Fields are left as they are, and no
/// occurrence reaches into one. `find` has at least one character.
int replaceIn(TextBody& body, std::string_view find, std::string_view replacement, const ReplaceOptions& options);

}  // namespace quorvel::host
