// Characters that no XML file can hold, and so no drawing.
#pragma once

#include <optional>
#include <string_view>

namespace quorvel {

/// The first of them in the text: a control character other than tab and line ends, U+FFFE or U+FFFF. A byte that is no
/// UTF-8 counts as the character of its number.
std::optional<char32_t> firstOutsideXml(std::string_view text);

}  // namespace quorvel
