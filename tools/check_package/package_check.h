// Checks a drawing package as a strict reader does: what the format demands, and what packages of the program that
// made the format always have.
#pragma once

#include <string>
#include <vector>

namespace quorvel::tools {

enum class Strictness {
  Sound,    ///< what every package must keep to, whatever it was read from
  Complete  ///< besides, what a drawing made here must have: names, sizes of pages, headings, icons
};

/// Remarks, one sentence each; none for a package that is in order. A file that is no package gives one remark.
std::vector<std::string> checkPackage(const std::string& fileName, Strictness strictness);

}  // namespace quorvel::tools
