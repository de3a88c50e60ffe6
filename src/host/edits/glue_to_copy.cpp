#include "host/edits/glue_to_copy.h"

#include <algorithm>
#include <unordered_set>

#include "host/connectors/connector_ends.h"
#include "host/sheet/references.h"

namespace quorvel::host {
namespace {

bool isGlueCell(const CellKey& key) {
  bool begin = false;
  return isEndCell(key, begin) || key == triggerCell(true) || key == triggerCell(false);
}

}  // namespace

std::vector<CellAddress> glueToCopy(Engine& engine, const std::vector<SheetId>& leaving,
                                    const std::vector<SheetMap>& copies) {
  const Store& store = engine.store();
  const PageId page = store.sheet(leaving.front())->page;
  const auto remains = [&](const SheetMap& made) {
    const auto copy = made.find(leaving.front());
    return copy != made.end() && engine.exists(copy->second) && store.sheet(copy->second)->page == page;
  };
  const auto last = std::find_if(copies.rbegin(), copies.rend(), remains);
  if (last == copies.rend()) return {};
  const std::unordered_set<SheetId> isLeaving(leaving.begin(), leaving.end());
  /// The number of the copy; negative when there is none.
  const auto numberOfCopy = [&](SheetId original) {
    const auto copy = isLeaving.contains(original) ? last->find(original) : last->end();
    return copy != last->end() && engine.exists(copy->second) ? store.sheet(copy->second)->shapeId : -1;
  };

  std::vector<CellAddress> readers, changed;
  for (const SheetId sheet : leaving) engine.graph().appendReadersOf(sheet, readers);
  for (const CellAddress& reader : readers) {
    const Sheet* sheet = store.sheet(reader.sheet);
    if (!sheet || sheet->page != page || isLeaving.contains(reader.sheet) || !isGlueCell(reader.key)) continue;
    const Cell* cell = sheet->findLocal(reader.key);
    if (!cell || !cell->formula) continue;
    Cell glued = *cell;
    glued.formula = store.formulas().get(cell->formula->textWithIds([&](const Reference& reference) {
      return numberOfCopy(resolveReference(store, reader.sheet, reader.sheet, reference));
    }));
    if (!glued.formula || glued.formula == cell->formula) continue;
    engine.edit().setCell(reader, std::move(glued));
    changed.push_back(reader);
  }

  const Page& home = *store.page(page);
  const auto sheetOf = [&](int number) {
    const auto found = home.byShapeId.find(number);
    return found == home.byShapeId.end() ? SheetId{} : found->second;
  };
  for (std::size_t i = 0; i < home.connects.size(); ++i) {
    const int copy = numberOfCopy(sheetOf(home.connects[i].toShape));
    if (copy < 0 || isLeaving.contains(sheetOf(home.connects[i].fromShape))) continue;
    Connect connect = home.connects[i];
    connect.toShape = copy;
    engine.edit().replaceConnect(page, i, std::move(connect));
  }
  return changed;
}

}  // namespace quorvel::host
