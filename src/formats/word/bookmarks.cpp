#include "formats/word/bookmarks.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

#include "base/basic_text.h"
#include "base/text.h"
#include "formats/word/compound_file.h"
#include "formats/word/little_endian.h"

namespace quorvel::formats {
namespace {

// The format's own bounds: so many bookmarks, with names of at most 40 UTF-16 units.
constexpr std::uint32_t mostBookmarks = 0x3FFB, longestName = 40;
constexpr std::uint32_t tableHeaderBytes = 6;
constexpr std::uint32_t largestTable = tableHeaderBytes + mostBookmarks * 2 * (1 + longestName);

constexpr std::uint16_t documentMark = 0xA5EC;
/// That of the release of 1997, the first whose tables are in a stream of their own. It nearly always writes 0x00C1.
constexpr std::uint16_t firstVersion = 0x00C0;
constexpr std::uint16_t encryptedFlag = 0x0100, secondTableFlag = 0x0200;

/// Where the table of bookmark names is in the table stream.
struct Place {
  bool inSecondStream = false;
  std::uint32_t offset = 0, bytes = 0;
};

/// The document's stream begins with fixed values, then three arrays, each after its count: of 16-bit numbers, of
/// 32-bit numbers, and of places in the table stream.
Maybe<Place> placeOfNames(const CompoundFile& file) {
  constexpr std::size_t fixedBytes = 32;
  constexpr std::uint32_t namesIndex = 21;
  const Maybe<CompoundFile::Stream> document = file.stream("WordDocument");
  std::string start;
  if (!document || !file.read(*document, 0, fixedBytes + 2, start)) return {};
  const std::uint16_t flags = word16At(start, 10);
  if (word16At(start, 0) != documentMark || word16At(start, 2) < firstVersion || (flags & encryptedFlag)) return {};

  std::size_t at = fixedBytes;
  std::string bytes;
  for (const std::size_t unit : {2, 4}) {
    if (!file.read(*document, at, 2, bytes)) return {};
    at += 2 + word16At(bytes, 0) * unit;
  }
  if (!file.read(*document, at, 2, bytes) || word16At(bytes, 0) <= namesIndex) return {};
  if (!file.read(*document, at + 2 + namesIndex * 8, 8, bytes)) return {};
  return Place{(flags & secondTableFlag) != 0, word32At(bytes, 0), word32At(bytes, 4)};
}

std::string utf8Of(std::string_view utf16) {
  const auto isUpper = [](char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; };
  const auto isLower = [](char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; };
  std::string text;
  for (std::size_t at = 0; at < utf16.size(); at += 2) {
    char32_t unit = word16At(utf16, at);
    const char32_t after = at + 2 < utf16.size() ? word16At(utf16, at + 2) : 0;
    if (isUpper(unit) && isLower(after)) {
      unit = 0x10000 + ((unit - 0xD800) << 10) + (after - 0xDC00);
      at += 2;
    } else if (isUpper(unit) || isLower(unit)) {
      unit = 0xFFFD;
    }
    appendUtf8(text, unit);
  }
  return text;
}

/// A mark for names of 16-bit characters, their count, the size of extra data (there is none), then for each name its
/// length and characters.
Maybe<std::vector<std::string>> namesIn(std::string_view table) {
  if (table.size() < tableHeaderBytes || word16At(table, 0) != 0xFFFF || word16At(table, 4) != 0) return {};
  const std::uint32_t count = word16At(table, 2);
  if (count > mostBookmarks) return {};
  std::vector<std::string> names;
  std::size_t at = tableHeaderBytes;
  for (std::uint32_t i = 0; i < count; ++i) {
    if (table.size() - at < 2) return {};
    const std::size_t bytes = word16At(table, at) * std::size_t(2);
    at += 2;
    if (table.size() - at < bytes) return {};
    std::string name = utf8Of(table.substr(at, bytes));
    at += bytes;
    if (!name.empty() && name[0] != '_') names.push_back(std::move(name));
  }
  return names;
}

}  // namespace

Maybe<std::vector<std::string>> bookmarksOfDocument(const std::string& fileName) {
  CompoundFile file;
  if (!file.open(fileName)) return {};
  const Maybe<Place> place = placeOfNames(file);
  if (!place || place->bytes > largestTable) return {};
  if (place->bytes == 0) return std::vector<std::string>();
  const Maybe<CompoundFile::Stream> tables = file.stream(place->inSecondStream ? "1Table" : "0Table");
  std::string table;
  if (!tables || !file.read(*tables, place->offset, place->bytes, table)) return {};
  const Maybe<std::vector<std::string>> found = namesIn(table);
  if (!found) return {};
  std::vector<std::string> names = *found;
  std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
    const int order = compareIgnoringCase(a, b);
    return order != 0 ? order < 0 : a < b;
  });
  return names;
}

}  // namespace quorvel::formats
