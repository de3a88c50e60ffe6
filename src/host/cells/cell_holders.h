// Which kinds of sheets have which of the cells that a sheet has once.
#pragma once

#include <cstdint>

#include "host/cells/cell_key.h"

namespace quorvel::host {

/// Kinds of sheets by the cells that they have. A shape may be several at once.
namespace holder {
inline constexpr std::uint8_t document = 1, page = 2, style = 4;
inline constexpr std::uint8_t shape = 8;  ///< any shape
inline constexpr std::uint8_t line = 16;  ///< a 1-D shape
inline constexpr std::uint8_t group = 32;
inline constexpr std::uint8_t picture = 64;  ///< an image or an embedded object
}  // namespace holder

/// The kinds of sheets that have the cell of the object section, as sums of `holder`. 0 for cells that only those
/// sheets have which hold them, and for cells that we don't know.
std::uint8_t holdersOf(const CellKey& key);

}  // namespace quorvel::host
