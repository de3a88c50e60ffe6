// The order of folders on the page src/README.md, and the violations in a set of sources.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace quorvel::levels {

/// One row of the list of folders.
struct Folder {
  std::string name;  ///< below src, "host/text"
  std::string side;  ///< "base", "add-in", "engine" or "application"
};

struct Rules {
  std::vector<Folder> folders;                             ///< in the order of the list
  std::map<std::string, std::set<std::string>> libraries;  ///< folder to headers, or to the folders of headers
};

/// Reads the two tables of the page.
Rules rulesIn(const std::string& page);

/// Path below src ("host/text/text.cpp") to contents.
using Sources = std::map<std::string, std::string>;

/// One sentence for each include of a folder that is not above in the list or that is on the other side, for each
/// folder that the list lacks, and for each cycle of units. A header with its source is one unit.
std::vector<std::string> violations(const Rules& rules, const Sources& sources);

}  // namespace quorvel::levels
