#include "host/text/replace_text.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/text.h"

namespace quorvel::host {
namespace {

/// Characters of neighbouring pieces, without what is not text between them.
struct Stretch {
  struct Character {
    std::size_t piece = 0, at = 0, length = 0;  ///< bytes `at` to `at + length` of that piece
    char32_t code = 0;
  };
  std::vector<Character> characters;
};

/// Letters of all languages and digits; the signs and blanks of the first blocks are none.
bool isOfWord(char32_t c) {
  if (c < 0x80) return (c >= U'0' && c <= U'9') || (c >= U'A' && c <= U'Z') || (c >= U'a' && c <= U'z') || c == U'_';
  return c >= 0xC0 && c != 0xD7 && c != 0xF7 && !(c >= 0x2000 && c < 0x2C00) && !(c >= 0x3000 && c < 0x3040);
}

std::vector<Stretch> stretchesOf(const TextBody& body) {
  std::vector<Stretch> stretches(1);
  for (std::size_t piece = 0; piece < body.size(); ++piece) {
    if (body[piece].kind == TextPiece::Field) stretches.emplace_back();
    if (body[piece].kind != TextPiece::Characters) continue;
    for (std::size_t at = 0; at < body[piece].text.size();) {
      const std::size_t from = at;
      const char32_t code = decodeNext(body[piece].text, at);
      stretches.back().characters.push_back({piece, from, at - from, code});
    }
  }
  return stretches;
}

}  // namespace

int replaceIn(TextBody& body, std::string_view find, std::string_view replacement, const ReplaceOptions& options) {
  const auto folded = [&](char32_t code) { return options.matchCase ? code : foldCase(code); };
  std::u32string wanted;
  for (std::size_t at = 0; at < find.size();) wanted += folded(decodeNext(find, at));
  std::vector<std::string> texts(body.size());
  int count = 0;
  for (const Stretch& stretch : stretchesOf(body)) {
    const auto& all = stretch.characters;
    const auto isAt = [&](std::size_t from) {
      if (wanted.empty() || from + wanted.size() > all.size()) return false;
      for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (folded(all[from + i].code) != wanted[i]) return false;
      }
      if (!options.wholeWords) return true;
      const std::size_t behind = from + wanted.size();
      return (from == 0 || !isOfWord(all[from - 1].code)) && (behind == all.size() || !isOfWord(all[behind].code));
    };
    for (std::size_t i = 0; i < all.size();) {
      std::string& text = texts[all[i].piece];
      if (isAt(i)) {
        text += replacement;
        i += wanted.size();
        ++count;
      } else {
        text.append(body[all[i].piece].text, all[i].at, all[i].length);
        ++i;
      }
    }
  }
  if (count == 0) return 0;
  for (std::size_t piece = 0; piece < body.size(); ++piece) {
    if (body[piece].kind == TextPiece::Characters) body[piece].text = std::move(texts[piece]);
  }
  std::erase_if(body, [](const TextPiece& piece) { return piece.kind == TextPiece::Characters && piece.text.empty(); });
  return count;
}

}  // namespace quorvel::host
