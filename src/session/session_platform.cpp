#include "session/session_platform.h"

#include "formats/word/bookmarks.h"
#include "formats/xml_text.h"
#include "session/button_face.h"

namespace quorvel {

bool SessionPlatform::placeFace(std::string_view pictureFile, unsigned transparentColour) {
  const Maybe<std::string> bitmap = readTextFile(pictureFile);
  const Maybe<host::ButtonFace> face = bitmap ? buttonFace(*bitmap, transparentColour) : Maybe<host::ButtonFace>();
  if (!face) return false;
  bars_.clipboardFace = *face;
  return true;
}

bool SessionPlatform::clearClipboard() {
  bars_.clipboardFace.reset();
  return true;
}

Maybe<std::string> SessionPlatform::readXmlFile(std::string_view path) {
  return formats::xmlTextOfFile(std::string(path));
}

Maybe<std::vector<std::string>> SessionPlatform::bookmarksOf(std::string_view path) {
  return formats::bookmarksOfDocument(std::string(path));
}

}  // namespace quorvel
