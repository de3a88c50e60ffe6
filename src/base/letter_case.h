// Small and capital letters of all alphabets. Text is UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace quorvel {

/// Letter for letter, so that the text keeps its number of characters: a letter without a single counterpart, such as
/// the German sharp s, stays.
std::string upperCase(std::string_view text);
std::string lowerCase(std::string_view text);

}  // namespace quorvel
