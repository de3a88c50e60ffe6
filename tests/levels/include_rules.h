// The levels of src/README.md, and what a set of sources does against them.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace quorvel::levels {

struct Rules {
  std::map<std::string, std::set<std::string>> folders;    ///< folder to the folders it may include
  std::map<std::string, std::set<std::string>> libraries;  ///< folder to headers, or to the folders of headers
};

/// Reads the two tables of the page.
Rules rulesIn(const std::string& page);

/// Path below src ("host/text/text.cpp") to contents.
using Sources = std::map<std::string, std::string>;

/// One sentence for each include that the rules do not allow, for each folder that they do not know, and for each
/// circle of rooms in the add-in column.
std::vector<std::string> offences(const Rules& rules, const Sources& sources);

}  // namespace quorvel::levels
