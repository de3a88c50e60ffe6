#include "cli/duration_text.h"

#include <array>
#include <charconv>

#include "base/text.h"

namespace quorvel::cli {
namespace {

struct UnitRow {
  std::string_view letters, unit, abbreviation;
};
constexpr std::array<UnitRow, 5> units{{{"es", "Seconds", "s"},
                                        {"em", "Minutes", "min"},
                                        {"eh", "Hours", "h"},
                                        {"ed", "Days", "d"},
                                        {"ew", "Weeks", "w"}}};

}  // namespace

Maybe<Duration> durationOf(std::string_view cellText) {
  const std::string_view text = trimmed(cellText);
  Duration duration;
  const auto [end, wrong] = std::from_chars(text.data(), text.data() + text.size(), duration.value);
  if (wrong != std::errc()) return {};
  const std::string_view letters = trimmed(text.substr(std::size_t(end - text.data())));
  for (const UnitRow& row : units) {
    if (letters.empty() || !startsWithIgnoringCase(letters, row.letters)) continue;
    duration.unit = row.unit;
    duration.abbreviation = row.abbreviation;
    return duration;
  }
  return {};
}

std::string durationText(const std::string& cellText) {
  const auto duration = durationOf(cellText);
  return duration ? fixedNumber(duration->value, 4) + " " + std::string(duration->abbreviation) : cellText;
}

}  // namespace quorvel::cli
