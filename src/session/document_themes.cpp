#include "session/document_themes.h"

#include "formats/vsdx/carried.h"

namespace quorvel {

std::vector<render::Theme> themesOf(const host::Document& document) {
  std::vector<render::Theme> themes;
  const auto* file = formats::carried<formats::CarriedDocument>(document.extras);
  if (!file || !file->package) return themes;
  for (const formats::CarriedPart& part : file->package->parts) {
    if (!part.contentType.ends_with(".theme+xml")) continue;
    if (const auto theme = render::readTheme(part.bytes)) themes.push_back(*theme);
  }
  return themes;
}

}  // namespace quorvel
