#include "base/xml_characters.h"

#include "base/text.h"

namespace quorvel {

std::optional<char32_t> firstOutsideXml(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const auto first = static_cast<unsigned char>(text[at]);
    if (first < 0x80) {
      ++at;
      if (first < 0x20 && first != '\t' && first != '\n' && first != '\r') return first;
      continue;
    }
    const std::size_t from = at;
    const char32_t code = decodeNext(text, at);
    // What reads as the replacement character in one byte is no character at all.
    if (code == 0xFFFD && at == from + 1) return first;
    if (code == 0xFFFE || code == 0xFFFF) return code;
  }
  return std::nullopt;
}

}  // namespace quorvel
