#include "session/document_themes.h"

#include "formats/vsdx/carried.h"

namespace quorvel {
namespace {

/// Themes have some ten thousand bytes.
constexpr std::uint64_t largestTheme = 4u << 20;

}  // namespace

std::vector<render::Theme> themesOf(const host::Document& document) {
  std::vector<render::Theme> themes;
  const auto* file = formats::carried<formats::CarriedDocument>(document.extras);
  if (!file || !file->package) return themes;
  for (const formats::CarriedPart& part : file->package->parts) {
    if (!part.contentType.ends_with(".theme+xml") || part.bytes.size() > largestTheme) continue;
    if (const auto theme = render::readTheme(part.bytes.unpacked())) themes.push_back(*theme);
  }
  return themes;
}

}  // namespace quorvel
