// Times as cells hold them ("15 em.") as text for a reader.
#pragma once

#include <string>
#include <string_view>

#include "base/maybe.h"

namespace quorvel::cli {

struct Duration {
  double value = 0;
  std::string_view unit;          ///< as in a Task's Time Units: "Minutes"
  std::string_view abbreviation;  ///< "min"
};

/// Nothing for a text that is no time.
Maybe<Duration> durationOf(std::string_view cellText);

/// "15 min"; a text that is no time is kept unchanged.
std::string durationText(const std::string& cellText);

}  // namespace quorvel::cli
