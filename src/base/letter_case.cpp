#include "base/letter_case.h"

#include <utf8proc.h>

#include "base/text.h"

namespace quorvel {
namespace {

constexpr char32_t capitalSharpS = 0x1E9E, sharpS = 0xDF, capitalDottedI = 0x130;

template <class OfLetter>
std::string mapped(std::string_view text, OfLetter ofLetter) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) appendUtf8(result, ofLetter(decodeNext(text, at)));
  return result;
}

char32_t lowerCase(char32_t letter) {
  return static_cast<char32_t>(utf8proc_tolower(static_cast<utf8proc_int32_t>(letter)));
}

char32_t upperCase(char32_t letter) {
  if (letter == sharpS) return sharpS;  // its capital is not used in writing
  return static_cast<char32_t>(utf8proc_toupper(static_cast<utf8proc_int32_t>(letter)));
}

}  // namespace

char32_t foldCase(char32_t letter) {
  if (letter < 0x80) return letter >= 'A' && letter <= 'Z' ? letter + 32 : letter;
  utf8proc_int32_t folded[4];
  int unusedClass = UTF8PROC_BOUNDCLASS_START;
  const utf8proc_ssize_t length =
      utf8proc_decompose_char(static_cast<utf8proc_int32_t>(letter), folded, 4, UTF8PROC_CASEFOLD, &unusedClass);
  if (length == 1) return static_cast<char32_t>(folded[0]);
  // A letter that folds to several stays as it is; of these only the sharp s has a small letter.
  return letter == capitalSharpS ? sharpS : letter == capitalDottedI ? letter : lowerCase(letter);
}

std::string upperCase(std::string_view text) {
  return mapped(text, [](char32_t letter) { return upperCase(letter); });
}

std::string lowerCase(std::string_view text) {
  return mapped(text, [](char32_t letter) { return lowerCase(letter); });
}

}  // namespace quorvel
