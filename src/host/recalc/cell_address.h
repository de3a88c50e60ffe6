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

}  // namespace quorvel::host

template <>
struct std::hash<quorvel::host::CellAddress> {
  std::size_t operator()(const quorvel::host::CellAddress& address) const noexcept {
    return std::hash<quorvel::host::CellKey>{}(address.key) ^
           (std::size_t(address.sheet.value) * 0x9E3779B97F4A7C15ull);
  }
};
