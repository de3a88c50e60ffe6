// The texts of the stencil's masters that a first drop replaces.
#pragma once

#include <string_view>

namespace quorvel::addin::placeholder {

inline constexpr std::string_view taskDescription = "(Task Description)";
inline constexpr std::string_view taskLink = "(Task Link)";

}  // namespace quorvel::addin::placeholder
