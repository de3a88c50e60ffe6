#include "formats/xml_text.h"

#include <filesystem>
#include <fstream>

#include "base/text.h"
#include "formats/package/xml_reading.h"

namespace quorvel::formats {
namespace {

constexpr std::size_t largestFile = 1024 * 1024;
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// The text begins as UTF-8 does, and its declaration names no other encoding.
bool isUtf8(std::string_view text) {
  if (text.empty() || text.front() != '<' || (text.size() > 1 && text[1] == '\0')) return false;
  const std::string_view declaration = text.starts_with("<?xml") ? text.substr(0, text.find("?>")) : std::string_view();
  return !containsIgnoringCase(declaration, "encoding") || containsIgnoringCase(declaration, "utf-8");
}

}  // namespace

Maybe<std::string> xmlTextOfFile(const std::string& fileName) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(fileName, error)) return {};
  std::ifstream file(fileName, std::ios::binary);
  std::string bytes(largestFile + 1, '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  if (file.bad() || !file.is_open() || bytes.size() > largestFile) return {};
  std::string parsed = bytes;
  pugi::xml_document document;
  if (!parseXml(document, parsed).empty()) return {};
  if (bytes.starts_with(byteOrderMark)) bytes.erase(0, byteOrderMark.size());
  return isUtf8(bytes) ? bytes : writtenXml(document);
}

}  // namespace quorvel::formats
