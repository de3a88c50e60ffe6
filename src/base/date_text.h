// Dates and times as texts by a pattern, with English names.
#pragma once

#include <ctime>
#include <string>
#include <string_view>

namespace quorvel {

/// d dd ddd dddd, M MM MMM MMMM (also small, unless an hour is before it), yy yyyy, h hh with or without am/pm, m mm
/// after an hour for minutes, s ss, am/pm. Other characters stand for themselves.
std::string dateText(const std::tm& time, std::string_view pattern);

/// The local time.
std::tm localTime();

}  // namespace quorvel
