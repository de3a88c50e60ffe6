// Cuts the XML of a large part into pieces that can be parsed one after the other, so that the tree of the whole part
// is never in memory.
#pragma once

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvel::formats {

/// Where the children of a list are in the text.
struct SplitList {
  std::size_t begin = 0, end = 0;                             ///< everything between the list's tags
  std::vector<std::pair<std::size_t, std::size_t>> children;  ///< from and to of each child element
};

/// Finds the children of the root's child element `listName`. False for text that is not plain UTF-8 XML of that shape;
/// the caller then parses it whole, which also finds out what is wrong with it. Well-formedness inside the pieces is
/// not checked.
bool splitList(std::string_view xml, std::string_view listName, SplitList& list);

}  // namespace quorvel::formats
