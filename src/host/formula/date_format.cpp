// Formats of dates, times and elapsed times.
#include <array>
#include <cctype>
#include <cmath>
#include <cstdint>

#include "base/basic_text.h"
#include "base/text.h"
#include "host/formula/calendar.h"
#include "host/formula/format_scanner.h"

namespace quorvel::host {
namespace {

std::string padded(std::int64_t number, std::size_t digits) {
  const std::string text = std::to_string(number);
  return text.size() < digits ? std::string(digits - text.size(), '0') + text : text;
}

constexpr std::string_view placeLetters = "dDwWMmyYhHstTcC";

/// Length of "AM/PM" or "A/P" in any letter case at the start of the text.
std::size_t halfDayLength(std::string_view text) {
  for (const std::string_view word : {"am/pm", "a/p"}) {
    if (text.size() >= word.size() && equalIgnoringCase(text.substr(0, word.size()), word)) return word.size();
  }
  return 0;
}

/// Calls `literal(text)` and `place(letter, count)` for the parts of a format in their order.
template <class Literal, class Place>
void walk(std::string_view format, Literal literal, Place place) {
  FormatScanner scanner(format);
  std::string text;
  while (!scanner.atEnd()) {
    text.clear();
    if (scanner.takeLiteral(text)) {
      literal(text);
    } else if (const std::size_t half = halfDayLength(scanner.rest())) {
      place('t', half == 3 ? 1 : 2);
      scanner.skip(half);
    } else if (placeLetters.find(scanner.current()) != std::string_view::npos) {
      const std::size_t count = scanner.runLength();
      place(scanner.current(), count);
      scanner.skip(count);
      // "MMMM_e" asks for a language; there is one.
      if (!scanner.atEnd() && scanner.current() == '_' && std::isalpha(static_cast<unsigned char>(scanner.next())))
        scanner.skip(2);
    } else {
      literal(std::string(1, scanner.current()));
      scanner.skip(1);
    }
  }
}

/// A small "m" is a minute after an hour or before a second, and in a format without days and years; else a month.
class MinuteOrMonth {
 public:
  explicit MinuteOrMonth(std::string_view format) {
    walk(
        format, [](const std::string&) {},
        [this](char letter, std::size_t) {
          hasDate_ |= letter == 'd' || letter == 'D' || letter == 'y' || letter == 'Y';
          if (letter == 's' && lastWasMinute_) minuteBeforeSecond_[minutes_ - 1] = true;
          lastWasMinute_ = letter == 'm';
          if (lastWasMinute_ && minutes_ < minuteBeforeSecond_.size()) ++minutes_;
        });
  }
  bool isMinute(char previousPlace, std::size_t index) const {
    return !hasDate_ || previousPlace == 'h' || previousPlace == 'H' ||
           (index < minutes_ && minuteBeforeSecond_[index]);
  }

 private:
  bool hasDate_ = false, lastWasMinute_ = false;
  std::size_t minutes_ = 0;
  std::array<bool, 8> minuteBeforeSecond_{};
};

std::string generalTime(const ClockTime& time) {
  return std::to_string(time.hour % 12 == 0 ? 12 : time.hour % 12) + ":" + padded(time.minute, 2) + ":" +
         padded(time.second, 2) + (time.hour < 12 ? " AM" : " PM");
}

std::string longDate(double days, int language) {
  const CalendarDate date = dateOf(days);
  const std::string weekday(weekdayName(weekdayOf(days), language)), month(monthName(date.month, language)),
      day = std::to_string(date.day), year = std::to_string(date.year);
  if (writesDayFirst(language)) return weekday + ", " + day + " " + month + " " + year;
  return weekday + ", " + month + " " + day + ", " + year;
}

std::string monthText(int month, std::size_t count, int language) {
  if (count <= 2) return padded(month, count);
  const std::string_view name = monthName(month, language);
  return count == 3 ? left(name, 3) : std::string(name);
}

std::string dayText(double days, const CalendarDate& date, std::size_t count, int language) {
  if (count <= 2) return padded(date.day, count);
  const std::string_view name = weekdayName(weekdayOf(days), language);
  if (count == 3) return left(name, 3);
  if (count == 4) return std::string(name);
  return count == 5 ? dateText(std::floor(days)) : longDate(days, language);
}

}  // namespace

std::string formatDate(double days, std::string_view format, int language) {
  const CalendarDate date = dateOf(days);
  const ClockTime time = timeOf(days);
  const MinuteOrMonth minuteOrMonth(format);
  const int hour12 = time.hour % 12 == 0 ? 12 : time.hour % 12;
  std::string result;
  char previous = '\0';
  std::size_t minuteIndex = 0;
  walk(
      format, [&](const std::string& text) { result += text; },
      [&](char letter, std::size_t count) {
        switch (letter) {
          case 'd':
          case 'D':
            result += dayText(days, date, count, language);
            break;
          case 'w':
          case 'W':
            result += dayText(days, date, count == 1 ? 3 : 4, language);
            break;
          case 'M':
            result += monthText(date.month, count, language);
            break;
          case 'm': {
            const bool minute = count <= 2 && minuteOrMonth.isMinute(previous, minuteIndex++);
            result += minute ? padded(time.minute, count) : monthText(date.month, count, language);
            break;
          }
          case 'y':
          case 'Y':
            result += count <= 2 ? padded(date.year % 100, 2) : padded(date.year, 4);
            break;
          case 'h':
            result += padded(hour12, count);
            break;
          case 'H':
            result += padded(time.hour, count);
            break;
          case 's':
            result += padded(time.second, count);
            break;
          case 't':
            result += std::string_view(time.hour < 12 ? "AM" : "PM").substr(0, count == 1 ? 1 : 2);
            break;
          case 'T':
            result += generalTime(time);
            break;
          case 'c':
            result += dateText(days);
            break;
          default: {  // 'C'
            result += longDate(days, language);
            if (days != std::floor(days)) result += " " + generalTime(time);
            break;
          }
        }
        previous = letter;
      });
  return result;
}

std::string formatElapsed(double days, std::string_view format) {
  const double limited = std::fabs(days) < 1e9 ? days : 0;
  const std::int64_t seconds = std::llround(std::fabs(limited) * 86400);
  std::string result = limited < 0 ? "-" : "";
  FormatScanner scanner(format);
  std::int64_t unitAbove = 0;  // seconds of the next larger unit that the format shows
  while (!scanner.atEnd()) {
    if (scanner.takeLiteral(result)) continue;
    const bool bracket = scanner.current() == '[';
    if (bracket) scanner.skip(1);
    if (scanner.atEnd()) break;
    std::int64_t unit = 0;
    switch (scanner.current() | 0x20) {
      case 'w':
        unit = 7 * 86400;
        break;
      case 'd':
        unit = 86400;
        break;
      case 'h':
        unit = 3600;
        break;
      case 'm':
        unit = 60;
        break;
      case 's':
        unit = 1;
        break;
      default:
        break;
    }
    if (unit == 0) {
      result += scanner.current();
      scanner.skip(1);
      continue;
    }
    const std::size_t count = scanner.runLength();
    const std::int64_t shown = (unitAbove > unit && !bracket ? seconds % unitAbove : seconds) / unit;
    result += padded(shown, count);
    unitAbove = unit;
    scanner.skip(count);
    if (bracket && !scanner.atEnd() && scanner.current() == ']') scanner.skip(1);
  }
  return result;
}

bool hasDatePlaces(std::string_view format) {
  bool found = false;
  walk(
      format, [](const std::string&) {}, [&](char, std::size_t) { found = true; });
  return found;
}

bool hasElapsedPlaces(std::string_view format) {
  FormatScanner scanner(format);
  std::string literal;
  while (!scanner.atEnd()) {
    if (scanner.takeLiteral(literal)) continue;
    if (scanner.current() == '[' && std::string_view("hmsdwHMSDW").find(scanner.next()) != std::string_view::npos)
      return true;
    scanner.skip(1);
  }
  return false;
}

}  // namespace quorvel::host
