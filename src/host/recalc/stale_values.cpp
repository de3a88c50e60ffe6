#include "host/recalc/stale_values.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "host/cells/cell_table.h"
#include "host/recalc/dependency_graph.h"
#include "host/sheet/inheritance.h"
#include "host/sheet/references.h"

namespace quorvel::host {
namespace {

/// Of the sheets of one master: which cells read which.
using Readers = std::unordered_map<CellAddress, std::vector<CellAddress>>;

const CellKey& theText() {
  static const CellKey key = objectCell("TheText");
  return key;
}

/// Size, place and outline. What else a formula decides, a menu's entry for instance, programs do not write into files
/// at all when they can compute it, and it does not show.
bool decidesLook(const CellKey& key) { return key.section == SectionNumber::Object || isGeometry(key.section); }

class StaleValues {
 public:
  StaleValues(const Store& store, std::vector<CellAddress>& cells) : store_(store), cells_(cells) {}

  void collectOn(PageId page) {
    for (const SheetId top : store_.page(page)->shapes) {
      for (const SheetId id : store_.subtree(top)) {
        const Sheet& sheet = *store_.sheet(id);
        if (sheet.master && sheet.prototype) collectIn(sheet);
      }
    }
  }

 private:
  const Readers& readersOf(MasterId master) {
    const auto [place, isNew] = readers_.try_emplace(master);
    if (isNew) {
      for (const SheetId top : store_.page(store_.master(master)->contents)->shapes) {
        for (const SheetId id : store_.subtree(top)) addReaders(id, place->second);
      }
    }
    return place->second;
  }

  /// The formulas that the sheet of the master has, its own and inherited ones.
  void addReaders(SheetId id, Readers& readers) {
    std::unordered_set<CellKey> seen;
    SheetId at = id;
    for (int depth = 0; at && depth < 64; ++depth, at = store_.sheet(at)->prototype) {
      for (const Section& section : store_.sheet(at)->sections) {
        for (const Row& row : section.rows) {
          for (const auto& [column, cell] : row.cells) {
            const CellKey key{section.number, row.key, column};
            if (!cell.formula || cell.formula->constant() || !cell.formula->isKnown() || !seen.insert(key).second)
              continue;
            const auto isReadBy = [&](const CellAddress& read) { readers[read].push_back({id, key}); };
            if (cell.formula->readsText()) isReadBy({id, theText()});
            for (const Reference& reference : cell.formula->references()) {
              const SheetId target = resolveReference(store_, at, id, reference);
              if (target && reference.cell) isReadBy({target, keyOnSheet(store_, target, reference.cell)});
            }
          }
        }
      }
    }
  }

  void collectIn(const Sheet& root) {
    const Master* const master = store_.master(root.master);
    if (!master) return;
    const Readers& readers = readersOf(root.master);
    if (readers.empty()) return;

    std::unordered_map<SheetId, SheetId> instanceOf;  // of each sheet of the master
    std::vector<CellAddress> changed;                 // on the master's sheets
    for (const SheetId id : store_.subtree(root.id)) {
      const Sheet& sheet = *store_.sheet(id);
      if (!sheet.prototype) continue;
      instanceOf.emplace(sheet.prototype, id);
      const auto differs = [&](const CellKey& key) {
        return readers.contains({sheet.prototype, key}) &&
               !(cellValue(store_, id, key) == cellValue(store_, sheet.prototype, key));
      };
      if (sheet.text && readers.contains({sheet.prototype, theText()})) changed.push_back({sheet.prototype, theText()});
      for (const Section& section : sheet.sections) {
        for (const Row& row : section.rows) {
          for (const auto& [column, cell] : row.cells) {
            const CellKey key{section.number, row.key, column};
            if (differs(key)) changed.push_back({sheet.prototype, key});
          }
        }
      }
    }

    std::unordered_set<CellAddress> found;
    while (!changed.empty()) {
      const auto reading = readers.find(changed.back());
      changed.pop_back();
      if (reading == readers.end()) continue;
      for (const CellAddress& reader : reading->second) {
        const auto instance = instanceOf.find(reader.sheet);
        if (instance == instanceOf.end() || store_.sheet(instance->second)->findLocal(reader.key)) continue;
        if (!found.insert(reader).second) continue;
        if (decidesLook(reader.key)) cells_.push_back({instance->second, reader.key});
        changed.push_back(reader);
      }
    }
  }

  const Store& store_;
  std::vector<CellAddress>& cells_;
  std::unordered_map<MasterId, Readers> readers_;
};

}  // namespace

void collectStaleValues(const Store& store, DocumentId id, std::vector<CellAddress>& cells) {
  StaleValues values(store, cells);
  for (const PageId page : store.document(id)->pages) values.collectOn(page);
}

}  // namespace quorvel::host
