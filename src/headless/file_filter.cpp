#include "headless/file_filter.h"

#include <algorithm>
#include <vector>

#include "base/text.h"

namespace quorvel {
namespace {

struct Forms {
  std::string_view binary;
  std::string_view newer[3];  ///< the package, the package with macros, the single file
};

constexpr Forms allForms[] = {{"*.vsd", {"*.vsdx", "*.vsdm", "*.vdx"}},
                              {"*.vst", {"*.vstx", "*.vstm", "*.vtx"}},
                              {"*.vss", {"*.vssx", "*.vssm", "*.vsx"}}};

std::string widened(std::string_view list) {
  std::vector<std::string_view> patterns;
  for (std::size_t from = 0; from <= list.size();) {
    const std::size_t end = std::min(list.find(';', from), list.size());
    patterns.push_back(list.substr(from, end - from));
    from = end + 1;
  }
  const auto isListed = [&](std::string_view form) {
    return std::any_of(patterns.begin(), patterns.end(),
                       [&](std::string_view pattern) { return equalIgnoringCase(trimmed(pattern), form); });
  };
  std::string wider;
  for (const std::string_view pattern : patterns) {
    if (!wider.empty()) wider += ';';
    wider += pattern;
    for (const Forms& forms : allForms) {
      if (!equalIgnoringCase(trimmed(pattern), forms.binary)) continue;
      for (const std::string_view form : forms.newer)
        if (!isListed(form)) wider.append(";").append(form);
    }
  }
  return wider;
}

}  // namespace

std::string withNewerForms(std::string_view filter) {
  // Patterns are listed between bars, and in the parentheses of the description.
  std::string wider;
  for (std::size_t from = 0;;) {
    const std::size_t end = std::min(filter.find_first_of("|()", from), filter.size());
    wider += widened(filter.substr(from, end - from));
    if (end == filter.size()) return wider;
    wider += filter[end];
    from = end + 1;
  }
}

}  // namespace quorvel
