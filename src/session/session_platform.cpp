#include "session/session_platform.h"

#include "formats/word/bookmarks.h"
#include "formats/xml_text.h"

namespace quorvel {

Maybe<std::string> SessionPlatform::readXmlFile(std::string_view path) {
  return formats::xmlTextOfFile(std::string(path));
}

Maybe<std::vector<std::string>> SessionPlatform::bookmarksOf(std::string_view path) {
  return formats::bookmarksOfDocument(std::string(path));
}

}  // namespace quorvel
