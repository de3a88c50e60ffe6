// What both formats hold but say in their own ways: windows, solutions' data and data recordsets are parts in a package
// and elements in a single file.
#pragma once

#include <string>
#include <unordered_set>

#include "formats/common/carried.h"

namespace quorvel::formats::vdx {

/// The elements that say what the package's parts hold, each empty when there is nothing to say.
struct SharedElements {
  std::string windows;
  std::string solutions;
  std::string data;                       ///< of the second vocabulary, its prefix declared
  std::unordered_set<std::string> parts;  ///< keys of the parts of which the elements say all
};

/// For a document whose elements were not read from a single file: those are written unchanged.
SharedElements sharedElements(const CarriedDocument& document);

/// Makes the parts for the elements that were read, unless the file has such parts.
void makeSharedParts(CarriedDocument& document);

}  // namespace quorvel::formats::vdx
