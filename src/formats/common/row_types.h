// Names of Geometry rows in files and their published tags, and how far files may number rows and sections.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/cells/cell_key.h"
#include "host/geometry/row_tags.h"

namespace quorvel::formats {

/// Rows numbered higher are carried unchanged.
inline constexpr int largestRowIndex = 1'000'000;
/// The 0-based index of the last Geometry section that has a published number.
inline constexpr int lastGeometryIndex =
    static_cast<int>(host::SectionNumber::LastGeometry) - static_cast<int>(host::SectionNumber::Geometry);

/// 0 for a name that we don't know.
std::uint8_t rowTagOf(std::string_view fileName);
/// Empty for 0 and tags that we don't know.
std::string_view rowTypeName(std::uint8_t tag);

}  // namespace quorvel::formats
