#include "base/profile_text.h"

#include "base/text.h"

namespace quorvel {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Positions in the text, in bytes. `end` is after the line break.
struct Line {
  std::size_t begin = 0;
  std::size_t end = 0;
  std::string_view content;
};

/// Gives the line that begins at byte `at`.
Line lineAt(std::string_view text, std::size_t at) {
  const std::size_t lineBreak = text.find('\n', at);
  const std::size_t end = lineBreak == std::string_view::npos ? text.size() : lineBreak + 1;
  std::string_view content = text.substr(at, end - at);
  if (at == 0 && content.starts_with(byteOrderMark)) content.remove_prefix(byteOrderMark.size());
  return {at, end, trimmed(content)};
}

Maybe<std::string_view> sectionNameOf(std::string_view content) {
  if (!content.starts_with('[')) return {};
  const std::size_t close = content.find(']');
  if (close == std::string_view::npos) return {};
  return trimmed(content.substr(1, close - 1));
}

std::string_view unquoted(std::string_view value) {
  const bool isQuoted =
      value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front();
  return isQuoted ? value.substr(1, value.size() - 2) : value;
}

/// The position of a key, or where it would be inserted.
struct Place {
  bool sectionFound = false;
  bool keyFound = false;
  Line line;                 ///< the key's line, when it was found
  std::string_view value;    ///< as written, when the key was found
  std::size_t insertAt = 0;  ///< after the section's last line that is not blank
};

Place find(std::string_view text, std::string_view section, std::string_view key) {
  Place place;
  for (std::size_t at = 0; at < text.size();) {
    const Line line = lineAt(text, at);
    at = line.end;
    if (const auto name = sectionNameOf(line.content)) {
      if (place.sectionFound) return place;
      place.sectionFound = equalIgnoringCase(*name, section);
      place.insertAt = line.end;
      continue;
    }
    if (!place.sectionFound || line.content.empty()) continue;
    place.insertAt = line.end;
    const std::size_t equals = line.content.find('=');
    if (line.content.starts_with(';') || equals == std::string_view::npos) continue;
    if (!equalIgnoringCase(trimmed(line.content.substr(0, equals)), key)) continue;
    place.keyFound = true;
    place.line = line;
    place.value = trimmed(line.content.substr(equals + 1));
    return place;
  }
  return place;
}

bool hasBreak(std::string_view text) {
  return text.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos;
}

/// A value that would be trimmed on reading is written between quotation marks.
std::string written(std::string_view value) {
  const bool wouldLose = trimmed(value) != value || unquoted(value) != value;
  return wouldLose ? "\"" + std::string(value) + "\"" : std::string(value);
}

}  // namespace

Maybe<std::string> profileValue(std::string_view text, std::string_view section, std::string_view key) {
  const Place place = find(text, trimmed(section), trimmed(key));
  if (!place.keyFound) return {};
  return std::string(unquoted(place.value));
}

Maybe<std::string> withProfileValue(std::string_view text, std::string_view section, std::string_view key,
                                    std::string_view value) {
  section = trimmed(section);
  key = trimmed(key);
  if (section.empty() || key.empty() || hasBreak(section) || hasBreak(key) || hasBreak(value)) return {};
  // A key that begins so would be read as a comment or a section when it is read.
  if (section.find(']') != std::string_view::npos || key.find('=') != std::string_view::npos) return {};
  if (key.starts_with(';') || key.starts_with('[')) return {};

  const std::string lineEnd = text.find("\r\n") == std::string_view::npos ? "\n" : "\r\n";
  const std::string line = std::string(key) + "=" + written(value);
  const Place place = find(text, section, key);
  std::string result(text);
  if (place.keyFound) {
    const auto from = static_cast<std::size_t>(place.line.content.data() - text.data());
    return result.replace(from, place.line.content.size(), line);
  }
  std::size_t at = place.sectionFound ? place.insertAt : result.size();
  std::string addition;
  if (at > 0 && result[at - 1] != '\n') addition += lineEnd;
  if (!place.sectionFound) addition += "[" + std::string(section) + "]" + lineEnd;
  addition += line + lineEnd;
  return result.insert(at, addition);
}

}  // namespace quorvel
