#include "host/recalc/dependency_graph.h"

#include <algorithm>
#include <unordered_set>

#include "base/text.h"
#include "host/cells/cell_table.h"
#include "host/recalc/relations.h"
#include "host/sheet/inheritance.h"
#include "host/sheet/references.h"

namespace quorvel::host {
namespace {

bool movesShape(const CellKey& key) {
  static const CellKey keys[] = {objectCell("PinX"),  objectCell("PinY"),  objectCell("LocPinX"), objectCell("LocPinY"),
                                 objectCell("Angle"), objectCell("FlipX"), objectCell("FlipY")};
  return key.section == SectionNumber::Object && std::find(std::begin(keys), std::end(keys), key) != std::end(keys);
}

bool isSize(const CellKey& key) {
  static const CellKey width = objectCell("Width"), height = objectCell("Height");
  return key == width || key == height;
}

/// Cells whose change is a change of the shape's box, which triggers follow.
bool changesBox(const CellKey& key) { return movesShape(key) || isSize(key); }

/// The cell by which formulas name the path of a Geometry section.
CellKey pathCell(SectionNumber section) {
  static const Column column = columnOf(SectionNumber::Geometry, "Path").or_(5);
  return {section, RowKey::index(0), column};
}

const CellKey& boxTrigger() {
  static const CellKey key = objectCell("EventXFMod");
  return key;
}

const CellKey& theText() {
  static const CellKey key = objectCell("TheText");
  return key;
}

}  // namespace

void DependencyGraph::addDocument(DocumentId id) {
  const Document& document = *store_.document(id);
  addSheet(document.sheet);
  const auto addPage = [&](PageId pageId) {
    const Page& page = *store_.page(pageId);
    addSheet(page.sheet);
    for (const SheetId top : page.shapes) {
      for (const SheetId sheet : store_.subtree(top)) addSheet(sheet);
    }
  };
  for (const MasterId master : document.masters) addPage(store_.master(master)->contents);
  for (const PageId page : document.pages) addPage(page);
}

void DependencyGraph::removeDocument(DocumentId id) {
  const Document* document = store_.document(id);
  if (!document) return;
  for (const MasterId master : document->masters) {
    instances_.erase(master);
    placeDependent_.erase(master);
  }
}

void DependencyGraph::addSheet(SheetId id) {
  const Sheet& sheet = *store_.sheet(id);
  if (sheet.master) instances_[sheet.master].insert(id);
  for (const Section& section : sheet.sections) {
    for (const Row& row : section.rows) {
      for (const auto& [column, cell] : row.cells) {
        if (cell.formula && !cell.inheritsFormula) addFormula({id, {section.number, row.key, column}}, *cell.formula);
      }
    }
  }
}

void DependencyGraph::addEdge(SheetId sheet, const CellKey& key, const CellAddress& dependent) {
  if (!sheet || !key) return;
  if (edges_.size() <= sheet.value) edges_.resize(sheet.value + 1);
  auto& edges = edges_[sheet.value];
  if (!edges) edges = std::make_unique<SheetEdges>();
  Dependents& list = (*edges)[key.packed()];
  if (!list.empty() && list.back() == dependent) return;
  list.push_back(dependent);
  // Formulas that are written again and again leave repeats; clearing them at each doubling keeps the cost even.
  if (list.size() < 64 || (list.size() & (list.size() - 1)) != 0) return;
  std::unordered_set<CellAddress> seen;
  std::erase_if(list, [&](const CellAddress& entry) { return !seen.insert(entry).second; });
}

void DependencyGraph::addTransformEdges(SheetId id, const CellAddress& dependent) {
  for (int depth = 0; id && depth < 64; ++depth) {
    const Sheet* sheet = store_.sheet(id);
    if (!sheet || !sheet->isShape()) return;
    addEdge(id, transformKey, dependent);
    id = sheet->parent;
  }
}

void DependencyGraph::addFormula(const CellAddress& cell, const Formula& formula) {
  if (formula.references().empty() && !formula.readsText() && !formula.isVolatile() && !formula.readsTransforms())
    return;
  bool placed = formula.isVolatile();
  for (const Reference& reference : formula.references()) {
    placed |= reference.scope == ReferenceScope::ThePage;
    if (!reference.watched) continue;
    const SheetId target = resolveReference(store_, cell.sheet, cell.sheet, reference);
    if (namesRelated(cell.key)) addEdge(target, relatedShapeKey, cell);
    addEdge(target, keyOnSheet(store_, target, reference.cell), cell);
    if (formula.readsTransforms() && target) addTransformEdges(target, cell);
  }
  if (formula.readsText()) addEdge(cell.sheet, theText(), cell);
  if (formula.readsTransforms()) addTransformEdges(cell.sheet, cell);
  if (formula.readsRelations()) addEdge(cell.sheet, relationsKey, cell);
  if (!placed) return;
  const Page* page = store_.page(store_.sheet(cell.sheet)->page);
  if (!page || !page->master) return;
  auto& list = placeDependent_[page->master];
  if (std::find(list.begin(), list.end(), cell) == list.end()) list.push_back(cell);
}

void DependencyGraph::followNewGroups(SheetId shape) {
  std::vector<CellAddress> readers;
  for (const SheetId each : store_.subtree(shape)) appendLive({each, transformKey}, readers);
  for (const CellAddress& reader : readers)
    addFormula(reader, *store_.sheet(reader.sheet)->findLocal(reader.key)->formula);
}

/// A shape's place depends on all groups around it.
bool DependencyGraph::readsPlaceOf(SheetId reader, const Formula& formula, SheetId sheet) const {
  if (!formula.readsTransforms()) return false;
  const auto standsIn = [&](SheetId shape) {
    for (int depth = 0; shape && depth < 64; ++depth) {
      if (shape == sheet) return true;
      const Sheet* here = store_.sheet(shape);
      shape = here ? here->parent : SheetId{};
    }
    return false;
  };
  if (standsIn(reader)) return true;
  for (const Reference& reference : formula.references()) {
    if (reference.watched && standsIn(resolveReference(store_, reader, reader, reference))) return true;
  }
  return false;
}

bool DependencyGraph::stillReads(const CellAddress& dependent, SheetId sheet, const CellKey& key) const {
  const Sheet* home = store_.sheet(dependent.sheet);
  const Cell* cell = home ? home->findLocal(dependent.key) : nullptr;
  if (!cell || !cell->formula || cell->inheritsFormula) return false;
  const Formula& formula = *cell->formula;
  if (key == transformKey) return readsPlaceOf(dependent.sheet, formula, sheet);
  if (key == relationsKey) return formula.readsRelations();
  if (key == theText() && formula.readsText() && dependent.sheet == sheet) return true;
  for (const Reference& reference : formula.references()) {
    const bool mayRead = key == relatedShapeKey
                             ? namesRelated(dependent.key)
                             : reference.cell.section == key.section && reference.cell.column == key.column;
    if (reference.watched && mayRead &&
        resolveReference(store_, dependent.sheet, dependent.sheet, reference) == sheet &&
        (key == relatedShapeKey || keyOnSheet(store_, sheet, reference.cell) == key))
      return true;
  }
  return false;
}

void DependencyGraph::appendLive(const CellAddress& cell, std::vector<CellAddress>& out) const {
  if (cell.sheet.value >= edges_.size() || !edges_[cell.sheet.value]) return;
  const auto found = edges_[cell.sheet.value]->find(cell.key.packed());
  if (found == edges_[cell.sheet.value]->end()) return;
  Dependents& list = found->second;
  std::erase_if(list, [&](const CellAddress& dependent) { return !stillReads(dependent, cell.sheet, cell.key); });
  out.insert(out.end(), list.begin(), list.end());
}

void DependencyGraph::appendReadersOf(SheetId sheet, std::vector<CellAddress>& out) const {
  if (sheet.value >= edges_.size() || !edges_[sheet.value]) return;
  std::vector<std::uint64_t> keys;
  for (const auto& entry : *edges_[sheet.value]) {
    if (entry.first != relationsKey.packed() && entry.first != relatedShapeKey.packed()) keys.push_back(entry.first);
  }
  std::sort(keys.begin(), keys.end());
  for (const std::uint64_t key : keys) appendLive({sheet, CellKey::fromPacked(key)}, out);
}

void DependencyGraph::appendInherited(const CellAddress& cell, std::vector<CellAddress>& out) const {
  const Sheet* sheet = store_.sheet(cell.sheet);
  SheetId at = sheet ? sheet->prototype : SheetId{};
  std::vector<CellAddress> definitions;
  for (int depth = 0; at && depth < 64; ++depth) {
    definitions.clear();
    appendLive({at, cell.key}, definitions);
    for (const CellAddress& definition : definitions) {
      const SheetId here = counterpartOf(store_, cell.sheet, definition.sheet);
      if (here && findCell(store_, here, definition.key).formulaSheet == definition.sheet)
        out.push_back({here, definition.key});
    }
    const Sheet* prototype = store_.sheet(at);
    at = prototype ? prototype->prototype : SheetId{};
  }
}

void DependencyGraph::appendReadersOfPlace(SheetId sheet, std::vector<CellAddress>& out) const {
  appendLive({sheet, transformKey}, out);
  appendInherited({sheet, transformKey}, out);
}

/// Members move with their group: their triggers fire, and what instances among them inherit is read again. What
/// reads their places by formulas of its own has edges to the group itself.
void DependencyGraph::appendReadersOfPlacesIn(SheetId group, std::vector<CellAddress>& out) const {
  for (const SheetId member : store_.subtree(group)) {
    if (member == group) continue;
    appendLive({member, boxTrigger()}, out);
    const bool isOfInstance = bool(store_.sheet(store_.sheet(member)->parent)->prototype);
    if (!isOfInstance) appendInherited({member, transformKey}, out);
  }
}

std::vector<SheetId> DependencyGraph::shapesNaming(SheetId shape) const {
  std::vector<CellAddress> cells;
  appendLive({shape, relatedShapeKey}, cells);
  appendInherited({shape, relatedShapeKey}, cells);
  std::vector<SheetId> shapes;
  for (const CellAddress& cell : cells) shapes.push_back(cell.sheet);
  return shapes;
}

/// Containers are found through containers, the place in a list and categories through what a shape is related to.
void DependencyGraph::appendRelatedThrough(SheetId shape, std::vector<CellAddress>& out) const {
  for (const SheetId each : shapesNaming(shape)) {
    if (isRelatedTo(store_, each, shape, {Relation::Containers, Relation::List, Relation::CalloutTarget}))
      out.push_back({each, relationsKey});
  }
}

void DependencyGraph::appendReadersOfRelationsTo(SheetId shape, std::vector<CellAddress>& out) const {
  for (const SheetId each : shapesNaming(shape)) {
    if (isRelatedTo(store_, each, shape, {Relation::Containers, Relation::MembersOfList})) {
      out.push_back({each, relationsKey});
    } else {
      // The number of members, for instance, is read on the container alone.
      appendLive({each, relationsKey}, out);
      appendInherited({each, relationsKey}, out);
    }
  }
}

void DependencyGraph::appendToInstances(MasterId master, const CellAddress& masterCell, PageId onPage,
                                        std::vector<CellAddress>& out) const {
  const auto found = instances_.find(master);
  if (found == instances_.end()) return;
  std::erase_if(found->second, [&](SheetId root) { return store_.sheet(root) == nullptr; });
  for (const SheetId root : found->second) {
    if (onPage && store_.sheet(root)->page != onPage) continue;
    const SheetId here = counterpartOf(store_, root, masterCell.sheet);
    if (!here) continue;
    const FoundCell cell = findCell(store_, here, masterCell.key);
    if (cell.formulaSheet == masterCell.sheet || !cell) out.push_back({here, masterCell.key});
  }
}

void DependencyGraph::dependentsOf(const CellAddress& cell, std::vector<CellAddress>& out) const {
  const Sheet* sheet = store_.sheet(cell.sheet);
  if (!sheet) return;
  appendLive(cell, out);
  appendInherited(cell, out);
  if (sheet->isShape() && movesShape(cell.key)) {
    appendReadersOfPlace(cell.sheet, out);
    if (!sheet->children.empty()) appendReadersOfPlacesIn(cell.sheet, out);
  }
  if (sheet->isShape() && changesBox(cell.key)) appendLive({cell.sheet, boxTrigger()}, out);
  // A path follows its vertices, and those that are shares of the size follow that.
  if (isGeometry(cell.key.section) && cell.key != pathCell(cell.key.section)) {
    dependentsOf({cell.sheet, pathCell(cell.key.section)}, out);
  } else if (isSize(cell.key)) {
    constexpr int sectionsLookedAt = 4;
    for (int i = 0; i < sectionsLookedAt; ++i) {
      const auto section = static_cast<SectionNumber>(static_cast<int>(SectionNumber::Geometry) + i);
      appendLive({cell.sheet, pathCell(section)}, out);
      appendInherited({cell.sheet, pathCell(section)}, out);
    }
  }
  if (decidesRelations(cell.key)) out.push_back({cell.sheet, relationsKey});
  if (cell.key == relationsKey) appendRelatedThrough(cell.sheet, out);
  // What a text shows follows its fields.
  if (cell.key.section == SectionNumber::TextField) dependentsOf({cell.sheet, theText()}, out);

  const Page* page = store_.page(sheet->page);
  if (page && page->master) {
    // A master's own cell: its instances show it unless they hold their own.
    appendToInstances(page->master, cell, {}, out);
  } else if (page && sheet->kind == SheetKind::Page) {
    // Masters' formulas on ThePage! mean the page of each instance.
    std::vector<CellAddress> definitions;
    for (const MasterId master : store_.document(sheet->document)->masters) {
      const Page* contents = store_.page(store_.master(master)->contents);
      definitions.clear();
      if (contents) appendLive({contents->sheet, cell.key}, definitions);
      for (const CellAddress& definition : definitions) appendToInstances(master, definition, page->id, out);
    }
  }
}

const std::vector<CellAddress>* DependencyGraph::placeDependent(MasterId master) const {
  const auto found = placeDependent_.find(master);
  return found == placeDependent_.end() ? nullptr : &found->second;
}

}  // namespace quorvel::host
