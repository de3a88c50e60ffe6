// The units in which durations are shown and typed.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace quorvel::schema {

struct TimeUnit {
  std::string_view name;
  std::string_view suffix;  ///< of a duration in formulas: "5 em."
  std::string_view format;  ///< of a shown number
  /// After the point.
  constexpr int decimals() const { return static_cast<int>(format.size() - format.find('.') - 1); }
};

/// In the order of the document's list. Formulas that choose by unit begin with the first one and end with the last.
inline constexpr std::array<TimeUnit, 5> timeUnits{{{"Seconds", "es", "0.##"},
                                                    {"Minutes", "em", "0.##"},
                                                    {"Hours", "eh", "0.##"},
                                                    {"Days", "ed", "0.###"},
                                                    {"Weeks", "ew", "0.###"}}};

/// Null for any other text. Letter case counts.
constexpr const TimeUnit* timeUnitNamed(std::string_view name) {
  const auto unit = std::ranges::find(timeUnits, name, &TimeUnit::name);
  return unit == timeUnits.end() ? nullptr : &*unit;
}

}  // namespace quorvel::schema
