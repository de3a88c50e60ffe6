#include "formats/package/xml_splitting.h"

namespace quorvel::formats {
namespace {

enum class TokenKind { Start, End, Empty, Other, Broken };

struct Token {
  TokenKind kind = TokenKind::Broken;
  std::size_t begin = 0, end = 0;
  std::string_view name;
};

bool endsName(char c) { return c == ' ' || c == '>' || c == '/' || c == '\t' || c == '\r' || c == '\n'; }

/// The next piece of markup at or behind `at`.
Token nextToken(std::string_view xml, std::size_t at) {
  Token token;
  token.begin = xml.find('<', at);
  if (token.begin == std::string_view::npos) return token;
  const std::string_view rest = xml.substr(token.begin);
  const auto until = [&](std::string_view mark, std::size_t from) {
    const std::size_t found = rest.find(mark, from);
    if (found == std::string_view::npos) return;
    token.kind = TokenKind::Other;
    token.end = token.begin + found + mark.size();
  };
  if (rest.starts_with("<!--")) {
    until("-->", 4);
    return token;
  }
  if (rest.starts_with("<![CDATA[")) {
    until("]]>", 9);
    return token;
  }
  if (rest.starts_with("<?")) {
    until("?>", 2);
    return token;
  }
  if (rest.size() < 3 || rest[1] == '!') return token;
  const bool closes = rest[1] == '/';
  const std::size_t nameBegin = closes ? 2 : 1;
  std::size_t place = nameBegin;
  while (place < rest.size() && !endsName(rest[place])) ++place;
  if (place == rest.size() || place == nameBegin) return token;
  token.name = rest.substr(nameBegin, place - nameBegin);
  for (; place < rest.size() && rest[place] != '>'; ++place) {
    if (rest[place] != '"' && rest[place] != '\'') continue;
    place = rest.find(rest[place], place + 1);
    if (place == std::string_view::npos) return token;
  }
  if (place == rest.size()) return token;
  token.end = token.begin + place + 1;
  token.kind = closes ? TokenKind::End : rest[place - 1] == '/' ? TokenKind::Empty : TokenKind::Start;
  return token;
}

bool isUtf8(std::string_view xml) {
  if (xml.starts_with("\xEF\xBB\xBF")) xml.remove_prefix(3);
  if (!xml.starts_with('<') || xml.size() < 2 || xml[1] == '\0') return false;
  if (!xml.starts_with("<?xml")) return true;
  const std::string_view declaration = xml.substr(0, xml.find("?>"));
  return declaration.find("encoding") == std::string_view::npos ||
         declaration.find("utf-8") != std::string_view::npos || declaration.find("UTF-8") != std::string_view::npos;
}

std::string_view withoutPrefix(std::string_view name) { return name.substr(name.rfind(':') + 1); }

}  // namespace

bool splitList(std::string_view xml, std::string_view listName, SplitList& list) {
  if (!isUtf8(xml)) return false;
  int depth = 0;
  bool inList = false, done = false;
  std::size_t childBegin = 0;
  for (std::size_t at = 0; !done;) {
    const Token token = nextToken(xml, at);
    at = token.end;
    switch (token.kind) {
      case TokenKind::Broken:
        return false;
      case TokenKind::Other:
        break;
      case TokenKind::Start:
        ++depth;
        if (depth == 2 && withoutPrefix(token.name) == listName) {
          inList = true;
          list.begin = token.end;
        }
        if (inList && depth == 3) childBegin = token.begin;
        break;
      case TokenKind::Empty:
        if (inList && depth == 2) list.children.emplace_back(token.begin, token.end);
        break;
      case TokenKind::End:
        if (inList && depth == 3) list.children.emplace_back(childBegin, token.end);
        if (inList && depth == 2) {
          list.end = token.begin;
          done = true;
        }
        if (--depth < 1 && !done) return false;
        break;
    }
  }
  return true;
}

}  // namespace quorvel::formats
