#include "render/cells/page_context.h"

#include <algorithm>

#include "render/cells/shape_cells.h"

namespace quorvel::render {
namespace {

const host::Document& documentOf(const host::Store& store, host::DocumentId id) {
  static const host::Document none;
  const host::Document* document = store.document(id);
  return document ? *document : none;
}

/// In the cells that choose a theme or a part of it: as the group or page around the shape has it.
constexpr int asOuter = 65534;

}  // namespace

ThemeChoice themeChosenBy(const ShapeCells& shape, const std::vector<Theme>& themes, const ThemeChoice& outer) {
  const ObjectKeys& keys = objectKeys();
  ThemeChoice choice = outer;
  if (const int scheme = int(shape.heldNumber(keys.ColorSchemeIndex, asOuter)); scheme == 0) {
    choice.theme = nullptr;
  } else if (scheme != asOuter && !themes.empty()) {
    // A theme that a user made has no number of its own in its file.
    const auto named = std::ranges::find(themes, scheme, &Theme::schemeNumber);
    const auto unnumbered = std::ranges::find(themes, 0, &Theme::schemeNumber);
    choice.theme = named != themes.end() ? &*named : unnumbered != themes.end() ? &*unnumbered : &themes.front();
  }
  const auto take = [&](int& variation, const host::CellKey& key) {
    const int number = int(shape.heldNumber(key, asOuter));
    if (number >= 0 && number < 4) variation = number;
  };
  take(choice.variationColour, keys.VariationColorIndex);
  take(choice.variationStyle, keys.VariationStyleIndex);
  return choice;
}

PageContext::PageContext(const host::Store& of, const host::Page& page, const std::vector<Theme>& themes)
    : store(of), document(documentOf(of, page.document)), pageSheet(page.sheet) {
  const ShapeCells cells(store, page.sheet);
  const ObjectKeys& keys = objectKeys();
  const double paper = cells.number(keys.PageScale, 1), drawing = cells.number(keys.DrawingScale, 1);
  if (paper > 0 && drawing > 0) scale = 72 * paper / drawing;

  if (!themes.empty()) {
    // Masters are shown in the document's theme; a page that names none is plain.
    ThemeChoice outer;
    if (page.master) outer.theme = &themes.front();
    static_cast<ThemeChoice&>(*this) = themeChosenBy(cells, themes, outer);
    if (!theme) theme = outer.theme;
  }

  for (const host::RowView& row : host::rowsOf(store, page.sheet, host::SectionNumber::Layer)) {
    if (row.key.isNamed() || row.key.index() > 10000) continue;
    if (layerVisible.size() <= row.key.index()) layerVisible.resize(row.key.index() + 1, true);
    layerVisible[row.key.index()] = cells.flag({host::SectionNumber::Layer, row.key, columnKeys().LayerVisible});
  }
}

}  // namespace quorvel::render
