#include "render/cells/page_context.h"

#include "render/cells/shape_cells.h"

namespace quorvel::render {
namespace {

const host::Document& documentOf(const host::Store& store, host::DocumentId id) {
  static const host::Document none;
  const host::Document* document = store.document(id);
  return document ? *document : none;
}

}  // namespace

PageContext::PageContext(const host::Store& of, const host::Page& page, const std::vector<Theme>& themes)
    : store(of), document(documentOf(of, page.document)), pageSheet(page.sheet) {
  const ShapeCells cells(store, page.sheet);
  const ObjectKeys& keys = objectKeys();
  const double paper = cells.number(keys.PageScale, 1), drawing = cells.number(keys.DrawingScale, 1);
  if (paper > 0 && drawing > 0) scale = 72 * paper / drawing;

  const int scheme = cells.integer(keys.ColorSchemeIndex);
  for (const Theme& candidate : themes)
    if (!theme || (candidate.schemeNumber == scheme && theme->schemeNumber != scheme)) theme = &candidate;
  // 65534 stands for "whatever the theme says".
  const auto variation = [&](const host::CellKey& key) {
    const int number = cells.integer(key);
    return number >= 0 && number < 4 ? number : 0;
  };
  variationColour = variation(keys.VariationColorIndex);
  variationStyle = variation(keys.VariationStyleIndex);

  for (const host::RowView& row : host::rowsOf(store, page.sheet, host::SectionNumber::Layer)) {
    if (row.key.isNamed() || row.key.index() > 10000) continue;
    if (layerVisible.size() <= row.key.index()) layerVisible.resize(row.key.index() + 1, true);
    layerVisible[row.key.index()] = cells.flag({host::SectionNumber::Layer, row.key, columnKeys().LayerVisible});
  }
}

}  // namespace quorvel::render
