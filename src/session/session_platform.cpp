#include "session/session_platform.h"

#include "formats/word/bookmarks.h"

namespace quorvel {

Maybe<std::vector<std::string>> SessionPlatform::bookmarksOf(std::string_view path) {
  return formats::bookmarksOfDocument(std::string(path));
}

}  // namespace quorvel
