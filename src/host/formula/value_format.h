// Formats: how a field, FORMAT or FORMATEX shows a value.
#pragma once

#include <string>
#include <string_view>

#include "host/formula/date_language.h"
#include "host/formula/value.h"

namespace quorvel::host {

/// Shows the value through the format. Rules that drawings depend on: '…' is literal and a blank outside quotes
/// between two quoted pieces is not shown; outside quotes \x is literal x; an unterminated quote runs to the end;
/// "0.##" of 2 is "2"; a "," between digit places is a thousands separator, so "0,##" of 1.5 is "2"; a format without
/// digit places shows only its literals; "u" shows the unit's suffix ("#.##### u" of 2 h is "2 eh."), never a bare
/// point; an empty format on a value that reads as a quantity shows nothing, on other text shows the text; a numeric
/// format on text that reads as a quantity formats its number in the unit it is written in.
/// `language`: the one whose names a date's months and weekdays have.
std::string formatValue(const Value& value, std::string_view format, int language = defaultLanguage);

/// The format behind a FIELDPICTURE number or a file's numeric field format; empty for "general".
std::string_view fieldFormat(int number);

}  // namespace quorvel::host
