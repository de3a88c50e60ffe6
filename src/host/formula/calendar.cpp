#include "host/formula/calendar.h"

#include <chrono>
#include <cmath>
#include <cstdint>
#include <ctime>

#include "base/text.h"

namespace quorvel::host {
namespace {

constexpr double secondsPerDay = 86400;
/// Dates beyond are taken for this limit, which keeps hostile numbers out of integer arithmetic.
constexpr double dayLimit = 3e6;

const std::chrono::sys_days epoch = std::chrono::year{1899} / 12 / 30;

/// Whole seconds since the epoch day's midnight.
std::int64_t secondsOf(double days) {
  if (!(days > -dayLimit)) days = -dayLimit;
  if (days > dayLimit) days = dayLimit;
  return static_cast<std::int64_t>(std::llround(days * secondsPerDay));
}

std::int64_t floorDiv(std::int64_t a, std::int64_t b) { return a / b - (a % b < 0 ? 1 : 0); }

int monthOfWord(const DateLanguage& language, std::string_view word) {
  if (word.size() < 3) return 0;
  for (int month = 1; month <= 12; ++month) {
    if (startsWithIgnoringCase(language.months[month - 1], word)) return month;
  }
  return equalIgnoringCase(word, "Sept") ? 9 : 0;
}

bool isWeekday(const DateLanguage& language, std::string_view word) {
  if (word.size() < 3) return false;
  for (const std::string_view day : language.weekdays) {
    if (startsWithIgnoringCase(day, word)) return true;
  }
  return false;
}

int currentYear() {
  const auto now = std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now());
  return static_cast<int>(std::chrono::year_month_day(now).year());
}

/// Two-digit years are of this and the last century.
int fullYear(int year, std::size_t digits) { return digits > 2 ? year : year + (year < 30 ? 2000 : 1900); }

/// Takes the text apart into numbers, words and marks and puts a date and a time together.
class DateReader {
 public:
  DateReader(std::string_view text, int language)
      : text_(text), language_(dateLanguage(language)), dayFirst_(writesDayFirst(language)) {}

  Maybe<double> read() {
    while (skipBlanks(), at_ < text_.size()) {
      const char c = text_[at_];
      if (isDigit(c)) {
        if (!readNumber()) return {};
      } else if (isLetter(c)) {
        if (!readWord()) return {};
      } else if (c == ',' || (c == '.' && month_)) {
        ++at_;
      } else {
        return {};
      }
    }
    return result();
  }

 private:
  static bool isDigit(char c) { return c >= '0' && c <= '9'; }
  static bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || static_cast<unsigned char>(c) >= 0x80;
  }
  void skipBlanks() {
    while (at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\t')) ++at_;
  }
  bool next(char c) const { return at_ < text_.size() && text_[at_] == c; }

  bool digits(int& number, std::size_t& count) {
    const std::size_t from = at_;
    number = 0;
    while (at_ < text_.size() && isDigit(text_[at_]) && at_ - from < 5) number = number * 10 + (text_[at_++] - '0');
    count = at_ - from;
    return count > 0 && count < 5;
  }

  bool readNumber() {
    int number;
    std::size_t count;
    if (!digits(number, count)) return false;
    if (next(':')) return readTime(number);
    // "30.5.1997", but also "30. Mai 1997".
    const bool pointed = dayFirst_ && next('.') && at_ + 1 < text_.size() && isDigit(text_[at_ + 1]);
    if (next('/') || next('-') || pointed) return readNumericDate(number, count);
    if (dayFirst_ && next('.')) ++at_;
    skipBlanks();
    if (at_ < text_.size() && (text_[at_] == 'a' || text_[at_] == 'A' || text_[at_] == 'p' || text_[at_] == 'P')) {
      // "7 am" is a time, "6 Apr" a day.
      std::size_t end = at_;
      while (end < text_.size() && isLetter(text_[end])) ++end;
      if (end - at_ <= 2) return readHalf(number, 0, 0);
    }
    if (count > 2 || (day_ && year_ < 0)) {
      if (year_ >= 0) return false;
      year_ = fullYear(number, count);
      return true;
    }
    if (day_) return false;
    day_ = number;
    dayDigits_ = count;
    return true;
  }

  bool readTime(int hour) {
    int minute = 0, second = 0;
    std::size_t count;
    ++at_;
    if (!digits(minute, count)) return false;
    if (next(':')) {
      ++at_;
      if (!digits(second, count)) return false;
    }
    return readHalf(hour, minute, second);
  }

  /// The rest of a time: "am", "p", or nothing.
  bool readHalf(int hour, int minute, int second) {
    if (hasTime_) return false;
    skipBlanks();
    std::size_t end = at_;
    while (end < text_.size() && isLetter(text_[end])) ++end;
    const std::string word = foldCase(text_.substr(at_, end - at_));
    const bool morning = word == "a" || word == "am", evening = word == "p" || word == "pm";
    if (morning || evening) {
      at_ = end;
      if (hour < 1 || hour > 12) return false;
      hour = hour % 12 + (evening ? 12 : 0);
    }
    if (hour > 23 || minute > 59 || second > 59) return false;
    hasTime_ = true;
    time_ = (hour * 3600 + minute * 60 + second) / secondsPerDay;
    return true;
  }

  bool readNumericDate(int first, std::size_t firstDigits) {
    if (month_ || day_) return false;
    ++at_;
    int second, third = -1;
    std::size_t count, thirdCount = 0;
    if (!digits(second, count)) return false;
    if (next('/') || next('-') || (dayFirst_ && next('.'))) {
      ++at_;
      if (at_ >= text_.size() && dayFirst_) return setDayAndMonth(first, second);
      if (!digits(third, thirdCount)) return false;
    }
    if (firstDigits == 4) {
      year_ = first;
      month_ = second;
      day_ = third < 0 ? 1 : third;
      return true;
    }
    if (third >= 0) year_ = fullYear(third, thirdCount);
    return dayFirst_ ? setDayAndMonth(first, second) : setDayAndMonth(second, first);
  }

  bool setDayAndMonth(int day, int month) {
    day_ = day;
    month_ = month;
    return true;
  }

  bool readWord() {
    std::size_t end = at_;
    while (end < text_.size() && isLetter(text_[end])) ++end;
    const std::string_view word = text_.substr(at_, end - at_);
    at_ = end;
    if (const int month = monthOfWord(language_, word)) {
      if (month_) return false;
      month_ = month;
      return true;
    }
    return isWeekday(language_, word);
  }

  Maybe<double> result() {
    if (!month_) {
      if (day_ || year_ >= 0 || !hasTime_) return {};
      return time_;
    }
    if (!day_ && year_ < 0) return {};
    // "January, 2000" and "Jan 00" are the first of the month.
    if (!day_) day_ = 1;
    if (day_ == 0 || (day_ && year_ < 0 && dayDigits_ == 2 && *day_ == 0)) {
      year_ = fullYear(*day_, dayDigits_);
      day_ = 1;
    }
    if (year_ < 0) year_ = currentYear();
    const std::chrono::year_month_day date{std::chrono::year{year_}, std::chrono::month{static_cast<unsigned>(month_)},
                                           std::chrono::day{static_cast<unsigned>(*day_)}};
    if (!date.ok()) return {};
    return daysOf(year_, month_, *day_) + time_;
  }

  std::string_view text_;
  const DateLanguage& language_;
  bool dayFirst_;
  std::size_t at_ = 0;
  int month_ = 0, year_ = -1;
  Maybe<int> day_;
  std::size_t dayDigits_ = 0;
  bool hasTime_ = false;
  double time_ = 0;
};

}  // namespace

double daysOf(int year, int month, int day) {
  const int months = year * 12 + (month - 1);
  const int realYear = months >= 0 ? months / 12 : (months - 11) / 12;
  const std::chrono::sys_days first = std::chrono::year{realYear} / static_cast<int>(months - realYear * 12 + 1) / 1;
  return static_cast<double>((first - epoch).count() + day - 1);
}

CalendarDate dateOf(double days) {
  const std::int64_t whole = floorDiv(secondsOf(days), static_cast<std::int64_t>(secondsPerDay));
  const std::chrono::year_month_day date(epoch + std::chrono::days(whole));
  return {static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day()))};
}

ClockTime timeOf(double days) {
  const std::int64_t seconds = secondsOf(days);
  const auto perDay = static_cast<std::int64_t>(secondsPerDay);
  const int inDay = static_cast<int>(seconds - floorDiv(seconds, perDay) * perDay);
  return {inDay / 3600, inDay / 60 % 60, inDay % 60};
}

int weekdayOf(double days) {
  const std::int64_t whole = floorDiv(secondsOf(days), static_cast<std::int64_t>(secondsPerDay));
  // The epoch day is a Saturday.
  return static_cast<int>((whole % 7 + 7 + 5) % 7) + 1;
}

Maybe<double> parseDate(std::string_view text, int language) { return DateReader(trimmed(text), language).read(); }

std::string dateText(double days) {
  const CalendarDate date = dateOf(days);
  const ClockTime time = timeOf(days);
  std::string result;
  if (days >= 1 || days < 0)
    result = std::to_string(date.month) + "/" + std::to_string(date.day) + "/" + std::to_string(date.year);
  if (time.hour || time.minute || time.second || result.empty()) {
    const auto two = [](int number) { return (number < 10 ? "0" : "") + std::to_string(number); };
    if (!result.empty()) result += " ";
    result += std::to_string(time.hour % 12 == 0 ? 12 : time.hour % 12) + ":" + two(time.minute) + ":" +
              two(time.second) + (time.hour < 12 ? " AM" : " PM");
  }
  return result;
}

double daysNow() {
  const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  std::tm local{};
  localtime_r(&now, &local);
  return daysOf(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday) +
         (local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec) / secondsPerDay;
}

std::string_view monthName(int month, int language) {
  return month >= 1 && month <= 12 ? dateLanguage(language).months[month - 1] : std::string_view();
}
std::string_view weekdayName(int weekday, int language) {
  return weekday >= 1 && weekday <= 7 ? dateLanguage(language).weekdays[weekday - 1] : std::string_view();
}

}  // namespace quorvel::host
