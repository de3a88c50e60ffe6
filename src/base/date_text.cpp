#include "base/date_text.h"

#include <array>

namespace quorvel {
namespace {

constexpr std::array<const char*, 7> days{"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
constexpr std::array<const char*, 12> months{"January", "February", "March",     "April",   "May",      "June",
                                             "July",    "August",   "September", "October", "November", "December"};

std::string padded(int number, std::size_t digits) {
  std::string text = std::to_string(number);
  return text.size() < digits ? std::string(digits - text.size(), '0') + text : text;
}

/// A number for one or two letters, the short name for three, the name for more.
std::string numberOrName(int number, std::string_view name, std::size_t letters) {
  constexpr std::size_t shortName = 3;
  if (letters < shortName) return padded(number, letters);
  return std::string(letters == shortName ? name.substr(0, shortName) : name);
}

}  // namespace

std::string dateText(const std::tm& time, std::string_view pattern) {
  constexpr std::string_view halves = "am/pm";
  const bool hasHalves = pattern.find(halves) != std::string_view::npos;
  constexpr int hoursOfHalf = 12, firstYear = 1900, century = 100;
  std::string text;
  bool afterHour = false;
  while (!pattern.empty()) {
    if (pattern.starts_with(halves)) {
      text += time.tm_hour < hoursOfHalf ? "am" : "pm";
      pattern.remove_prefix(halves.size());
      continue;
    }
    const char letter = pattern.front();
    const std::size_t end = pattern.find_first_not_of(letter);
    const std::size_t count = end == std::string_view::npos ? pattern.size() : end;
    pattern.remove_prefix(count);
    switch (letter) {
      case 'd':
        text += numberOrName(time.tm_mday, days.at(static_cast<std::size_t>(time.tm_wday)), count);
        break;
      case 'm':
        if (afterHour) {
          text += padded(time.tm_min, count);
          break;
        }
        [[fallthrough]];
      case 'M':
        text += numberOrName(time.tm_mon + 1, months.at(static_cast<std::size_t>(time.tm_mon)), count);
        break;
      case 'y':
        text += count > 2 ? padded(time.tm_year + firstYear, count) : padded(time.tm_year % century, count);
        break;
      case 'h':
        afterHour = true;
        text += padded(hasHalves ? (time.tm_hour + hoursOfHalf - 1) % hoursOfHalf + 1 : time.tm_hour, count);
        break;
      case 's':
        text += padded(time.tm_sec, count);
        break;
      default:
        text.append(count, letter);
    }
  }
  return text;
}

std::tm localTime() {
  const std::time_t now = std::time(nullptr);
  std::tm time{};
  localtime_r(&now, &time);
  return time;
}

}  // namespace quorvel
