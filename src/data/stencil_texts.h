// What our stencil and the code must agree on: the texts that a master holds until its first drop.
#pragma once

#include <string_view>

namespace quorvel::addin::placeholder {

inline constexpr std::string_view taskDescription = "(Task Description)";
inline constexpr std::string_view taskLink = "(Task Link)";

}  // namespace quorvel::addin::placeholder
