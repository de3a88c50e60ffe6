// Functions on dates and times of day.
#include <cmath>

#include "host/formula/calendar.h"
#include "host/formula/functions.h"

namespace quorvel::host {
namespace {

/// A date from a date, a number of days, or text that reads as a date in the language of the second argument.
double days(Call& call) {
  const Value value = call.value(0);
  if (value.isText()) {
    if (const Maybe<double> date = parseDate(value.textView(), call.whole(1, defaultLanguage))) return *date;
    if (const Maybe<double> number = value.asNumber()) return *number;
    call.fail(ErrorCode::Value);
    return 0;
  }
  if (!call.given(0)) call.fail(ErrorCode::Value);
  return value.internal();
}

Value date(Call& call) {
  const int year = call.whole(0), month = call.whole(1), day = call.whole(2);
  if (year < 0 || year > 9999 || month < -10000 || month > 10000) return call.fail(ErrorCode::Number);
  return Value::date(daysOf(year, month, day));
}

Value time(Call& call) {
  const double hours = call.number(0), minutes = call.number(1);
  return Value::date((hours * 3600 + minutes * 60 + call.number(2)) / 86400);
}

Value number(int whole) { return Value::number(whole); }

constexpr FunctionRow rows[] = {
    {"DATE", date},
    {"TIME", time},
    {"DATETIME", [](Call& c) { return Value::date(days(c)); }},
    {"DATEVALUE", [](Call& c) { return Value::date(std::floor(days(c))); }},
    {"TIMEVALUE",
     [](Call& c) {
       const double d = days(c);
       return Value::date(d - std::floor(d));
     }},
    {"DAY", [](Call& c) { return number(dateOf(days(c)).day); }},
    {"MONTH", [](Call& c) { return number(dateOf(days(c)).month); }},
    {"YEAR", [](Call& c) { return number(dateOf(days(c)).year); }},
    {"HOUR", [](Call& c) { return number(timeOf(days(c)).hour); }},
    {"MINUTE", [](Call& c) { return number(timeOf(days(c)).minute); }},
    {"SECOND", [](Call& c) { return number(timeOf(days(c)).second); }},
    {"WEEKDAY", [](Call& c) { return number(weekdayOf(days(c))); }},
    {"DAYOFYEAR",
     [](Call& c) {
       const double d = std::floor(days(c));
       return Value::number(d - daysOf(dateOf(d).year, 1, 1) + 1);
     }},
};

}  // namespace

std::span<const FunctionRow> dateTimeFunctions() { return rows; }

}  // namespace quorvel::host
