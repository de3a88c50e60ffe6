// A cell of a sheet.
#pragma once

#include <functional>

#include "host/cells/cell_key.h"
#include "host/sheet/ids.h"

namespace quorvel::host {

struct CellAddress {
  SheetId sheet;
  CellKey key;
  friend bool operator==(const CellAddress&, const CellAddress&) = default;
};

/// Means the place of the shape: what LOC, PAR and the like depend on.
inline constexpr CellKey transformKey{SectionNumber::Other, RowKey::index(1), 1};
/// What the shape is related to as container, list or callout: what the functions of relations on it read.
inline constexpr CellKey relationsKey{SectionNumber::Other, RowKey::index(1), 2};
/// Read by the cells that name the shape as related to theirs.
inline constexpr CellKey relatedShapeKey{SectionNumber::Other, RowKey::index(1), 3};

}  // namespace quorvel::host

template <>
struct std::hash<quorvel::host::CellAddress> {
  std::size_t operator()(const quorvel::host::CellAddress& address) const noexcept {
    return std::hash<quorvel::host::CellKey>{}(address.key) ^
           (std::size_t(address.sheet.value) * 0x9E3779B97F4A7C15ull);
  }
};
