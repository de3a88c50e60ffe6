// Numbers and their suffixes as text, shared by values, the lexer and formats.
#pragma once

#include <cmath>
#include <string>
#include <string_view>

#include "host/formula/units.h"

namespace quorvel::host {

/// Length in bytes of the unsigned number that the text begins with, its exponent included; 0 when there is none.
std::size_t numberLength(std::string_view text);
/// The number of such a text; infinite when it is too large.
double numberOf(std::string_view text);

/// False for numbers so large that a conversion to another unit may not be finite, and for what is no number.
inline bool isRepresentable(double number) { return std::fabs(number) < 1e302; }

/// Rounded to 15 significant digits: what is left of a number once conversions have blurred the last one.
double roundedTo15(double number);
/// The shortest text of the number so rounded.
std::string roundedNumber(double number);

/// As toInternal, but a number with an implicit suffix ("DL", "DA" …) is in internal units already.
double toInternalOfSuffix(double number, Unit unit);

/// The unit of "2 ft 3 in" and its like; the larger one where there is no compound unit.
Unit compoundUnit(Unit larger, Unit smaller);

}  // namespace quorvel::host
