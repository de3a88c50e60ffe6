// The lists of a new document. A list in a cell has ";" before each entry; the leading one gives a
// fixed list of the host its blank first entry. The units have none, because a shape always has a unit.
#pragma once

#include <string_view>

namespace quorvel::addin::defaults {

inline constexpr std::string_view roleNames =
    ";Account Executive;Administrator;Chief Executive Officer;Chief Financial Officer;Chief Information Officer"
    ";Chief Operating Officer;Clerk;Director;General Manager;Manager;Managing Director;President;Sales Representative"
    ";Vice President";

/// One to one with the abbreviations below.
inline constexpr std::string_view frequencies =
    ";Ad Hoc;Infrequently;Recurring;Hourly;Daily;Weekly;Biweekly (every two weeks);Monthly"
    ";Semimonthly (twice per month);Quarterly;Semiannual (twice per year);Yearly;Biennial (every two years)";
inline constexpr std::string_view frequencyAbbreviations = ";AD;IN;RE;HR;DY;WK;BW;MO;SM;QR;SA;YR;BI";

/// One to one with the abbreviations below; "Seconds" must stay first and "Weeks" last, because
/// formats are composed in this order.
inline constexpr std::string_view timeUnits = "Seconds;Minutes;Hours;Days;Weeks";
inline constexpr std::string_view timeUnitAbbreviations = "s;m;h;d;w";
inline constexpr std::string_view timeUnit = "Minutes";

}  // namespace quorvel::addin::defaults
