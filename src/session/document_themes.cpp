#include "session/document_themes.h"

#include "formats/common/carried.h"
#include "render/cells/theme_values.h"

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

const std::vector<render::Theme>& DocumentThemes::of(const host::Store& store, host::SheetId id) const {
  static const std::vector<render::Theme> none;
  const host::Sheet* sheet = store.sheet(id);
  const host::Document* document = sheet ? store.document(sheet->document) : nullptr;
  if (!document || !document->extras) return none;
  Read& read = read_[document->id];
  if (read.source.lock() != document->extras) {
    std::erase_if(read_, [&](const auto& each) { return each.first != document->id && each.second.source.expired(); });
    read = {document->extras, themesOf(*document)};
  }
  return read.themes;
}

Maybe<host::Value> DocumentThemes::valueOf(const host::Store& store, host::SheetId sheet,
                                           std::string_view property) const {
  return render::themeProperty(store, of(store, sheet), sheet, property);
}

Maybe<std::uint32_t> DocumentThemes::throughGradientStop(const host::Store& store, host::SheetId sheet,
                                                         std::uint32_t rgb, int stop) const {
  return render::throughGradientStop(store, of(store, sheet), sheet, rgb, stop);
}

}  // namespace quorvel
