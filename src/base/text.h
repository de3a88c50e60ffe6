// Text is UTF-8 everywhere; positions and lengths in this header count characters (code points) unless they say bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// Reads one code point at byte `at` and moves `at` past it. A malformed byte reads as U+FFFD and one byte.
char32_t decodeNext(std::string_view text, std::size_t& at);
void appendUtf8(std::string& text, char32_t codePoint);

/// Number of code points.
std::size_t lengthOf(std::string_view text);

/// Simple case folding of one code point, of all alphabets: what differs only in case folds to the same.
char32_t foldCase(char32_t codePoint);
std::string foldCase(std::string_view text);
bool equalIgnoringCase(std::string_view a, std::string_view b);
/// Order by folded code points: below 0, 0 or above 0.
int compareIgnoringCase(std::string_view a, std::string_view b);
bool containsIgnoringCase(std::string_view text, std::string_view part);
bool startsWithIgnoringCase(std::string_view text, std::string_view start);

std::string_view trimmed(std::string_view text);
std::string replaceAll(std::string_view text, std::string_view part, std::string_view by);

/// Splits at each `separator`; n separators give n + 1 pieces, empty ones included.
std::vector<std::string_view> splitAt(std::string_view text, char separator);

/// The shortest decimal text that reads back as the same number; the point is ".", there is no exponent below 1e15,
/// and no locale.
std::string shortestNumber(double value);
/// `value` with at most `digits` decimals, trailing zeros dropped.
std::string fixedNumber(double value, int digits);

}  // namespace quorvel
