// Which shapes a shape is related to as container, list or callout, by its Relationships cell.
#pragma once

#include <initializer_list>
#include <vector>

#include "host/sheet/store.h"

namespace quorvel::host {

/// What the first argument of the cell's DEPENDSON means.
enum class Relation : std::uint8_t {
  MembersOfContainer = 1,
  MembersOfList = 2,
  Callouts = 3,
  Containers = 4,
  List = 5,
  CalloutTarget = 6,
};

/// The cell that names the shapes that its shape is related to.
bool namesRelated(const CellKey& key);
/// A change of such a cell may change what functions of relations give.
bool decidesRelations(const CellKey& key);
/// The cell of the shape holds a formula, its own or an inherited one.
bool hasRelations(const Store& store, SheetId shape);
/// In the order of the cell; deleted shapes are left out.
std::vector<SheetId> relatedTo(const Store& store, SheetId sheet, Relation relation);
bool isRelatedTo(const Store& store, SheetId sheet, SheetId other, std::initializer_list<Relation> relations);
/// The containers of a shape and theirs, each once, nearest to the front first.
std::vector<SheetId> containersOf(const Store& store, SheetId sheet);
/// The shape's categories, separated by semicolons.
std::string categoriesOf(const Store& store, SheetId sheet);
/// "Container", "List", "Callout" or empty.
std::string structureOf(const Store& store, SheetId sheet);

}  // namespace quorvel::host
