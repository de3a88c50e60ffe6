// Lists of words in one text, as categories of shapes are kept.
#pragma once

#include <algorithm>
#include <string_view>

#include "base/text.h"

namespace quorvel::host {

/// Whether a list separated by semicolons holds the word, in any letter case, blanks around either left out.
inline bool hasWord(std::string_view list, std::string_view word) {
  const auto words = splitAt(list, ';');
  return std::any_of(words.begin(), words.end(),
                     [&](std::string_view each) { return equalIgnoringCase(trimmed(each), trimmed(word)); });
}

}  // namespace quorvel::host
