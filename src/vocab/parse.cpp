#include "vocab/parse.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "base/text.h"

namespace quorvel::addin {
namespace {

bool holds(std::string_view delimiters, char32_t character) {
  for (std::size_t at = 0; at < delimiters.size();) {
    if (decodeNext(delimiters, at) == character) return true;
  }
  return false;
}

}  // namespace

std::vector<std::string> parse(std::string_view text, std::string_view delimiters) {
  std::vector<std::string> slots;
  std::string token;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t from = at;
    const bool isDelimiter = holds(delimiters, decodeNext(text, at));
    if (!isDelimiter) token += text.substr(from, at - from);
    if ((at == text.size() || isDelimiter) && !token.empty()) slots.push_back(std::exchange(token, {}));
  }
  if (!slots.empty()) slots.emplace_back();
  return slots;
}

Maybe<std::string> slot(const std::vector<std::string>& slots, long index) {
  if (index < 0 || index >= static_cast<long>(slots.size())) return {};
  return slots[static_cast<std::size_t>(index)];
}

int funcIndex(std::string_view formula) {
  const std::string beforeComma = slot(parse(formula, ","), 0).or_({});
  const std::string argument = slot(parse(beforeComma, "("), 1).or_({});
  const std::string_view digits = trimmed(argument);
  double number = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (read.ec != std::errc() || read.ptr != digits.data() + digits.size()) return 0;
  number = std::nearbyint(number);
  const bool fits =
      number >= std::numeric_limits<std::int16_t>::min() && number <= std::numeric_limits<std::int16_t>::max();
  return fits ? static_cast<int>(number) : 0;
}

}  // namespace quorvel::addin
