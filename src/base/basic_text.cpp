#include "base/basic_text.h"

#include <charconv>
#include <cstdlib>

#include "base/text.h"

namespace quorvel {
namespace {

/// The byte at which the 0-based character `index` begins, or the text's size.
std::size_t byteOf(std::string_view text, long index) {
  std::size_t at = 0;
  for (; index > 0 && at < text.size(); --index) decodeNext(text, at);
  return at;
}

}  // namespace

double val(std::string_view text) {
  std::string digits;
  for (const char c : text) {
    if (c == ' ' || c == '\t' || c == '\n') continue;
    digits += c;
  }
  const char* begin = digits.data();
  const char* end = begin + digits.size();
  if (begin != end && *begin == '+') ++begin;
  double number = 0;
  const auto read = std::from_chars(begin, end, number);
  // from_chars also takes "inf" and "nan", which are words to Basic.
  if (read.ec != std::errc() || !(number - number == 0)) return 0;
  return number;
}

std::string format00(long number) {
  const std::string digits = std::to_string(std::labs(number));
  return (number < 0 ? "-" : "") + (digits.size() < 2 ? "0" + digits : digits);
}

std::string mid(std::string_view text, long start, long count) {
  if (start < 1 || count < 0) return {};
  const std::size_t from = byteOf(text, start - 1);
  const std::string_view rest = text.substr(from);
  return std::string(rest.substr(0, byteOf(rest, count)));
}

std::string mid(std::string_view text, long start) {
  return start < 1 ? std::string() : std::string(text.substr(byteOf(text, start - 1)));
}

std::string left(std::string_view text, long count) { return mid(text, 1, count); }

std::string right(std::string_view text, long count) {
  const long length = static_cast<long>(lengthOf(text));
  return count <= 0 ? std::string() : mid(text, count >= length ? 1 : length - count + 1);
}

long inStr(std::string_view text, std::string_view part) {
  const auto at = text.find(part);
  return at == std::string_view::npos ? 0 : static_cast<long>(lengthOf(text.substr(0, at))) + 1;
}

long inStrRev(std::string_view text, std::string_view part) {
  const auto at = text.rfind(part);
  return at == std::string_view::npos ? 0 : static_cast<long>(lengthOf(text.substr(0, at))) + 1;
}

std::string quoted(std::string_view text) { return quotedAsIs(replaceAll(text, "\"", "\"\"")); }

std::string quotedAsIs(std::string_view text) { return "\"" + std::string(text) + "\""; }

std::string withEscapedApostrophes(std::string_view text) { return replaceAll(text, "'", "'\\''"); }

}  // namespace quorvel
