// Formats of numbers, quantities and texts.
#pragma once

#include <string>
#include <string_view>

#include "host/formula/value.h"

namespace quorvel::host {

/// Applies a format of digit places, unit labels, text places and literals. `text` is what "@" shows; `quantity` is
/// nothing for a value without a number.
std::string formatNumber(const Maybe<Value>& quantity, std::string_view text, std::string_view format);

/// The format has a digit place.
bool hasDigitPlaces(std::string_view format);
/// The format has a text place.
bool hasTextPlaces(std::string_view format);

}  // namespace quorvel::host
