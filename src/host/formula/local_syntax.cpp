#include "host/formula/local_syntax.h"

namespace quorvel::host {
namespace {

bool isDigit(char letter) { return letter >= '0' && letter <= '9'; }
bool isNameLetter(char letter) {
  return isDigit(letter) || (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || letter == '_' ||
         letter == '.' || static_cast<unsigned char>(letter) >= 0x80;
}

/// Copies what contains no separators: quoted text, quoted and bracketed names. The place behind it.
std::size_t copyOpaque(std::string_view text, std::size_t at, std::string& out) {
  const char open = text[at], close = open == '[' ? ']' : open;
  std::size_t end = at + 1;
  while (end < text.size()) {
    if (text[end] != close) {
      ++end;
    } else if (close != ']' && end + 1 < text.size() && text[end + 1] == close) {
      end += 2;
    } else {
      ++end;
      break;
    }
  }
  out.append(text, at, end - at);
  return end;
}

/// Walks over the text; `list` and `decimal` are the marks there, and those in `out` the given ones.
std::string convert(std::string_view text, char list, char decimal, char listOut, char decimalOut) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const char letter = text[at];
    if (letter == '"' || letter == '\'' || letter == '[') {
      at = copyOpaque(text, at, out);
      continue;
    }
    const bool startsNumber = isDigit(letter) || (letter == decimal && at + 1 < text.size() && isDigit(text[at + 1]) &&
                                                  (at == 0 || !isNameLetter(text[at - 1])));
    if (startsNumber) {
      bool marked = false;
      while (at < text.size() && (isDigit(text[at]) || (!marked && text[at] == decimal))) {
        // A mark that no digit follows, "1," in "IF(1,)", separates where both marks are one character in two roles.
        if (text[at] == decimal) {
          if (decimal == list && !(at + 1 < text.size() && isDigit(text[at + 1]))) break;
          marked = true;
        }
        out += text[at] == decimal ? decimalOut : text[at];
        ++at;
      }
      continue;
    }
    if (isNameLetter(letter)) {
      // Names hold points and digits of their own.
      while (at < text.size() && isNameLetter(text[at])) out += text[at++];
      continue;
    }
    out += letter == list ? listOut : letter;
    ++at;
  }
  return out;
}

}  // namespace

std::string toUniversalSyntax(std::string_view local, const FormulaLocale& locale) {
  if (locale.isUniversal()) return std::string(local);
  return convert(local, locale.listSeparator, locale.decimalSeparator, ',', '.');
}

std::string toLocalSyntax(std::string_view universal, const FormulaLocale& locale) {
  if (locale.isUniversal()) return std::string(universal);
  // Stored text may hold either separator.
  std::string text = convert(universal, ';', '.', ',', '.');
  return convert(text, ',', '.', locale.listSeparator, locale.decimalSeparator);
}

}  // namespace quorvel::host
