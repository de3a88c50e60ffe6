// Filters of file dialogs, widened to the kinds of drawings that are written today.
#pragma once

#include <string>
#include <string_view>

namespace quorvel {

/// The filter with the package form after each binary form: "*.vsd" becomes "*.vsd;*.vsdx".
inline std::string withPackageFiles(std::string_view filter) {
  std::string wider;
  for (std::size_t at = 0; at < filter.size(); ++at) {
    wider += filter[at];
    if (!wider.ends_with("*.vsd") && !wider.ends_with("*.vst") && !wider.ends_with("*.vss")) continue;
    const char next = at + 1 < filter.size() ? filter[at + 1] : '|';
    if (next == ';' || next == '|' || next == ')') wider += ";" + wider.substr(wider.size() - 5) + "x";
  }
  return wider;
}

}  // namespace quorvel
