// The order in which people expect IDs and names: "A2" before "A10".
#pragma once

#include <string_view>

namespace quorvel::report {

/// Below 0, 0 or above 0. Runs of digits are compared as numbers, the rest without regard to case; texts that differ
/// otherwise are never equal.
int compareNaturally(std::string_view a, std::string_view b);

}  // namespace quorvel::report
