// Reads a report definition. It may come from a drawing, so it is read as hostile: bounded size and depth, no document
// type. docs/reports.md describes the format.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "report/definition/definition.h"

namespace quorvel::report {

inline constexpr std::size_t largestDefinition = 256 * 1024;  ///< bytes

struct ReadDefinition {
  Definition definition;
  std::string problem;  ///< empty, or a clause that follows "… can't be used: "; then the definition is incomplete
};

/// Everything that the format does not know is a problem. The text is UTF-8, or UTF-16 with a byte order mark.
ReadDefinition readDefinition(std::string_view xml);

}  // namespace quorvel::report
