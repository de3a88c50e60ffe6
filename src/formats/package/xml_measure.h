// What the tree of an XML text would cost, found without building it.
#pragma once

#include <cstdint>
#include <string_view>

namespace quorvel::formats {

struct XmlMeasure {
  /// Elements and attributes, a shape counted eight times: each unit takes up to about a hundred bytes of memory once
  /// it is read.
  std::uint64_t weight = 0;
  int depth = 0;  ///< of the deepest element; the root has 1
};

/// For text that is not well-formed, of what a parser reads before it gives up, at least.
XmlMeasure measureXml(std::string_view xml);

}  // namespace quorvel::formats
