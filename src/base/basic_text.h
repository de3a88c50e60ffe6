// The few text rules of the Basic language that existing drawings depend on.
#pragma once

#include <string>
#include <string_view>

namespace quorvel {

/// Basic's Val: the number that the text begins with, blanks ignored; 0 when it begins with none.
double val(std::string_view text);

/// Basic's Format(number, "00"): at least two digits, "-" before a negative number.
std::string format00(long number);

/// Basic's Mid: `count` characters from 1-based `start`. Empty when start is after the end; a negative count or a
/// start below 1 is an error of the caller and gives empty text too.
std::string mid(std::string_view text, long start, long count);
std::string mid(std::string_view text, long start);
std::string left(std::string_view text, long count);
std::string right(std::string_view text, long count);

/// Basic's InStr: the 1-based position of `part` in `text`, 0 when it is not there.
long inStr(std::string_view text, std::string_view part);
/// The same, searched from the end.
long inStrRev(std::string_view text, std::string_view part);

/// The text between quotation marks, inner quotation marks doubled: the formula of a string constant.
std::string quoted(std::string_view text);
/// The text between quotation marks, unchanged; only for the two role routines that are known to do so.
std::string quotedAsIs(std::string_view text);
/// The text made safe for the quoted text of a number's format: each apostrophe closes the quotation, is escaped, and
/// opens it again.
std::string withEscapedApostrophes(std::string_view text);

}  // namespace quorvel
