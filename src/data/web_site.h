// The product's web site and its mailbox.
#pragma once

#include <string_view>

namespace quorvel::addin::website {

inline constexpr std::string_view home = "https://quorvel.example";
inline constexpr std::string_view supportMailbox = "support@quorvel.example";
inline constexpr std::string_view legendExplained = "https://quorvel.example/Legend.htm";

}  // namespace quorvel::addin::website
