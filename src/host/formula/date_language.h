// The names of months and weekdays in the languages that drawings ask for by number.
#pragma once

#include <string_view>

namespace quorvel::host {

struct DateLanguage {
  int primary = 0;  ///< the lower ten bits of a language's number: 9 English, 7 German
  std::string_view months[12];
  std::string_view weekdays[7];  ///< Monday first
};

/// The language of the number; English for one whose names we do not have.
const DateLanguage& dateLanguage(int number);
/// Dates in numbers are written with the day first, everywhere but in the United States.
bool writesDayFirst(int number);

/// No language asked for: that of the United States.
inline constexpr int defaultLanguage = 1033;

}  // namespace quorvel::host
