// Splits delimited text, and reads the index in a host's INDEX formula.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/maybe.h"

namespace quorvel::addin {

/// Splits at every single character of `delimiters`. Empty tokens are dropped. n tokens give the slots 0 to n, of which
/// the last is empty; no token gives no slots at all. Callers rely on the empty slot: they loop to the size less one.
std::vector<std::string> parse(std::string_view text, std::string_view delimiters = "|");

/// The slot, or nothing when the index is outside the slots.
Maybe<std::string> slot(const std::vector<std::string>& slots, long index);

/// The number between the first "(" and the first "," of the formula; 0 when there is none or it needs more than 16
/// bits. The machine's list separator is not used.
int funcIndex(std::string_view formula);

}  // namespace quorvel::addin
