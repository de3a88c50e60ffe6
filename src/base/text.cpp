#include "base/text.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace quorvel {
namespace {

// Nearly all names are ASCII; they are compared without the tables of the other letters.
bool isAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }
char foldedAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

char32_t nextFolded(std::string_view text, std::size_t& at) {
  if (isAscii(text[at])) return static_cast<char32_t>(foldedAscii(text[at++]));
  return foldCase(decodeNext(text, at));
}

}  // namespace

char32_t decodeNext(std::string_view text, std::size_t& at) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char first = byte(at++);
  if (first < 0x80) return first;
  const int following = first >= 0xF0 && first < 0xF5 ? 3 : first >= 0xE0 ? 2 : first >= 0xC2 ? 1 : 0;
  if (following == 0 || first >= 0xF5 || at + following > text.size()) return 0xFFFD;
  char32_t code = first & (0x3F >> following);
  for (int i = 0; i < following; ++i) {
    if ((byte(at + i) & 0xC0) != 0x80) return 0xFFFD;
    code = (code << 6) | (byte(at + i) & 0x3F);
  }
  const char32_t smallest = following == 1 ? 0x80 : following == 2 ? 0x800 : 0x10000;
  if (code < smallest || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) return 0xFFFD;
  at += following;
  return code;
}

void appendUtf8(std::string& text, char32_t code) {
  if (code < 0x80) {
    text += static_cast<char>(code);
  } else if (code < 0x800) {
    text += static_cast<char>(0xC0 | (code >> 6));
    text += static_cast<char>(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    text += static_cast<char>(0xE0 | (code >> 12));
    text += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    text += static_cast<char>(0x80 | (code & 0x3F));
  } else {
    text += static_cast<char>(0xF0 | (code >> 18));
    text += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
    text += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    text += static_cast<char>(0x80 | (code & 0x3F));
  }
}

std::size_t lengthOf(std::string_view text) {
  std::size_t count = 0;
  for (std::size_t at = 0; at < text.size(); ++count) decodeNext(text, at);
  return count;
}

std::string foldCase(std::string_view text) {
  std::string folded;
  folded.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    if (isAscii(text[at])) {
      folded += foldedAscii(text[at++]);
    } else {
      appendUtf8(folded, foldCase(decodeNext(text, at)));
    }
  }
  return folded;
}

int compareIgnoringCase(std::string_view a, std::string_view b) {
  std::size_t i = 0, j = 0;
  while (i < a.size() && j < b.size()) {
    const char32_t x = nextFolded(a, i), y = nextFolded(b, j);
    if (x != y) return x < y ? -1 : 1;
  }
  return i < a.size() ? 1 : j < b.size() ? -1 : 0;
}

bool equalIgnoringCase(std::string_view a, std::string_view b) { return compareIgnoringCase(a, b) == 0; }

bool containsIgnoringCase(std::string_view text, std::string_view part) {
  return foldCase(text).find(foldCase(part)) != std::string::npos;
}

bool startsWithIgnoringCase(std::string_view text, std::string_view start) {
  std::size_t i = 0, j = 0;
  while (j < start.size()) {
    if (i >= text.size() || nextFolded(text, i) != nextFolded(start, j)) return false;
  }
  return true;
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\r\n";
  const auto first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string replaceAll(std::string_view text, std::string_view part, std::string_view by) {
  std::string result;
  std::size_t from = 0;
  for (std::size_t at; !part.empty() && (at = text.find(part, from)) != std::string_view::npos;
       from = at + part.size()) {
    result.append(text.substr(from, at - from)).append(by);
  }
  return result.append(text.substr(from));
}

std::vector<std::string_view> splitAt(std::string_view text, char separator) {
  std::vector<std::string_view> pieces;
  std::size_t from = 0;
  for (std::size_t at; (at = text.find(separator, from)) != std::string_view::npos; from = at + 1)
    pieces.push_back(text.substr(from, at - from));
  pieces.push_back(text.substr(from));
  return pieces;
}

std::string shortestNumber(double value) {
  if (value == 0) return "0";  // -0 is no number that a user typed
  if (!std::isfinite(value)) return "0";
  char buffer[400];
  const double size = std::fabs(value);
  const auto format = size >= 1e15 || size < 1e-9 ? std::chars_format::scientific : std::chars_format::fixed;
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, format).ptr;
  return std::string(buffer, end);
}

std::string fixedNumber(double value, int digits) {
  char buffer[400];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, digits).ptr;
  std::string text(buffer, end);
  if (text.find('.') != std::string::npos) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
  }
  return text == "-0" ? "0" : text;
}

}  // namespace quorvel
