// Dates as numbers of days of one calendar, read from and shown as text.
#pragma once

#include <string>
#include <string_view>

#include "base/maybe.h"
#include "host/formula/date_language.h"

namespace quorvel::host {

struct CalendarDate {
  int year = 1899, month = 12, day = 30;
};

struct ClockTime {
  int hour = 0, minute = 0, second = 0;
};

/// Days since 1899-12-30 of a date of the Gregorian calendar; months and days out of range run over.
double daysOf(int year, int month, int day);
/// The date of a number of days.
CalendarDate dateOf(double days);
/// The time of the fraction of a number of days, to the nearest second.
ClockTime timeOf(double days);
/// Monday 1 to Sunday 7.
int weekdayOf(double days);

/// Reads "5/30/1997", "2-28-99", "1997-05-30", "6 Mar 99", "Jan 1, 2000", "July 19 1:30 PM", "14:30", "7a". A time
/// alone is a fraction of a day; a date without a year takes the current one. Nothing for other text. Another language
/// than the default has its own names and the day first: "30.5.1997", "30. Mai 1997".
Maybe<double> parseDate(std::string_view text, int language = defaultLanguage);

/// "5/30/1997", "5/30/1997 3:12:32 PM", "3:12:32 PM" for a time alone.
std::string dateText(double days);

/// This machine's date and time of day, by its clock.
double daysNow();

std::string_view monthName(int month, int language = defaultLanguage);      ///< 1-based
std::string_view weekdayName(int weekday, int language = defaultLanguage);  ///< 1-based, Monday first

}  // namespace quorvel::host
