// Names of Geometry rows in files and their published tags.
#pragma once

#include <cstdint>
#include <string_view>

namespace quorvel::formats {

/// 0 for a name that we don't know.
std::uint8_t rowTagOf(std::string_view fileName);
/// Empty for 0 and tags that we don't know.
std::string_view rowTypeName(std::uint8_t tag);

}  // namespace quorvel::formats
