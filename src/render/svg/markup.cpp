#include "render/svg/markup.h"

#include <charconv>
#include <cmath>

#include "base/text.h"

namespace quorvel::render::svg {

void appendNumber(std::string& out, double number, int digits) {
  if (!std::isfinite(number)) number = 0;
  char buffer[400];
  auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::fixed, digits);
  if (error != std::errc()) {
    out += '0';
    return;
  }
  if (digits > 0) {
    while (end[-1] == '0') --end;
    if (end[-1] == '.') --end;
  }
  const std::string_view text(buffer, std::size_t(end - buffer));
  out += text == "-0" ? std::string_view("0") : text;
}

void appendEscaped(std::string& out, std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const char32_t codePoint = decodeNext(text, at);
    switch (codePoint) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      case '\t':
      case '\n':
        out += codePoint == '\t' ? "&#9;" : "&#10;";
        break;
      default: {
        const bool allowed = codePoint >= 0x20 && codePoint != 0xFFFE && codePoint != 0xFFFF &&
                             !(codePoint >= 0xD800 && codePoint <= 0xDFFF);
        if (allowed) appendUtf8(out, codePoint);
      }
    }
  }
}

void appendColour(std::string& out, unsigned rgb) {
  static constexpr char digits[] = "0123456789abcdef";
  out += '#';
  for (int shift = 20; shift >= 0; shift -= 4) out += digits[rgb >> shift & 15];
}

void appendBase64(std::string& out, std::string_view bytes) {
  static constexpr char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  out.reserve(out.size() + bytes.size() * 4 / 3 + 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    unsigned group = 0;
    for (std::size_t j = 0; j < 3; ++j)
      group = group << 8 | (i + j < bytes.size() ? (unsigned char)(bytes[i + j]) : 0u);
    for (std::size_t j = 0; j < 4; ++j) out += i + j <= bytes.size() ? digits[group >> (18 - 6 * j) & 63] : '=';
  }
}

}  // namespace quorvel::render::svg
