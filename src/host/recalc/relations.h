// Which shapes a shape is related to as container, list or callout, by its Relationships cell.
#pragma once

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

/// In the order of the cell; deleted shapes are left out.
std::vector<SheetId> relatedTo(const Store& store, SheetId sheet, Relation relation);
/// The containers of a shape and theirs, each once, nearest to the front first.
std::vector<SheetId> containersOf(const Store& store, SheetId sheet);
/// The shape's categories, separated by semicolons.
std::string categoriesOf(const Store& store, SheetId sheet);
/// "Container", "List", "Callout" or empty.
std::string structureOf(const Store& store, SheetId sheet);

}  // namespace quorvel::host
