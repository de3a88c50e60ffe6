// Which cells follow which. Edges are kept where formulas are written; an instance's inherited formulas use the edges
// of its master, carried over to the instance's own members, so that ten thousand instances add none.
#pragma once

#include <memory>
#include <set>
#include <unordered_map>
#include <vector>

#include "host/recalc/cell_address.h"
#include "host/sheet/store.h"

namespace quorvel::host {

class DependencyGraph {
 public:
  explicit DependencyGraph(const Store& store) : store_(store) {}

  /// Adds edges for all formulas of the document, as after opening a file.
  void addDocument(DocumentId document);
  /// Adds edges for the formulas that the sheet itself holds, and counts it among its master's instances.
  void addSheet(SheetId sheet);
  void addFormula(const CellAddress& cell, const Formula& formula);
  /// A shape is in another group now: formulas that read its place follow the places of those groups too.
  void followNewGroups(SheetId shape);
  /// Edges are dropped when they are next walked and found stale; a deleted sheet needs no call.
  void removeDocument(DocumentId document);

  /// Appends the cells whose formulas read `cell`, each at the sheet whose value it is. The order is that of writing.
  void dependentsOf(const CellAddress& cell, std::vector<CellAddress>& out) const;
  /// Appends what must be evaluated again when shapes are no longer related to this one.
  void appendReadersOfRelationsTo(SheetId shape, std::vector<CellAddress>& out) const;
  /// Appends the cells whose own formulas read any cell of the sheet, its place included; repeats are possible.
  void appendReadersOf(SheetId sheet, std::vector<CellAddress>& out) const;
  /// Appends the cells whose formulas read the place of the shape; repeats are possible.
  void appendReadersOfPlace(SheetId sheet, std::vector<CellAddress>& out) const;
  /// Formulas of the master that depend on the place of an instance (ThePage!, page and shape names): a new instance
  /// must evaluate them again.
  const std::vector<CellAddress>* placeDependent(MasterId master) const;

 private:
  using Dependents = std::vector<CellAddress>;
  using SheetEdges = std::unordered_map<std::uint64_t, Dependents>;

  void addEdge(SheetId sheet, const CellKey& key, const CellAddress& dependent);
  void addTransformEdges(SheetId sheet, const CellAddress& dependent);
  SheetId targetOf(const CellAddress& cell, const struct Reference& reference) const;
  void appendLive(const CellAddress& cell, std::vector<CellAddress>& out) const;
  void appendInherited(const CellAddress& cell, std::vector<CellAddress>& out) const;
  void appendReadersOfPlacesIn(SheetId group, std::vector<CellAddress>& out) const;
  void appendToInstances(MasterId master, const CellAddress& masterCell, PageId onPage,
                         std::vector<CellAddress>& out) const;
  std::vector<SheetId> shapesNaming(SheetId shape) const;
  void appendRelatedThrough(SheetId shape, std::vector<CellAddress>& out) const;
  bool readsPlaceOf(SheetId reader, const Formula& formula, SheetId sheet) const;
  bool stillReads(const CellAddress& dependent, SheetId sheet, const CellKey& key) const;

  const Store& store_;
  mutable std::vector<std::unique_ptr<SheetEdges>> edges_;             ///< by sheet number
  mutable std::unordered_map<MasterId, std::set<SheetId>> instances_;  ///< roots, oldest first
  std::unordered_map<MasterId, std::vector<CellAddress>> placeDependent_;
};

}  // namespace quorvel::host
