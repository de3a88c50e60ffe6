#include "host/sheet/theme_index.h"

#include "host/cells/cell_table.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {

int themeIndex(const Store& store, SheetId id, const CellKey& key) {
  constexpr int asAround = 65534;
  // A shape takes what the group around it has, the outermost group what the page has.
  for (int depth = 0; depth < 100; ++depth) {
    const Sheet* sheet = store.sheet(id);
    if (!sheet) return 0;
    const int own = static_cast<int>(cellValue(store, id, key).asNumber().or_(0));
    if (own != asAround) return own;
    const Page* page = store.page(sheet->page);
    if (!page || page->sheet == id) return 0;
    id = sheet->parent ? sheet->parent : page->sheet;
  }
  return 0;
}

int themeNumber(const Store& store, SheetId id) {
  static const CellKey scheme = objectCell("ColorSchemeIndex");
  return themeIndex(store, id, scheme);
}

}  // namespace quorvel::host
