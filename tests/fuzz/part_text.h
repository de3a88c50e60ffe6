// Parts of a package as one text, so that the random changes are in their XML and not in a packed stream.
//
//     == visio/pages/page1.xml
//     <PageContents ...
//
// Each part goes up to the next line that begins with "== ". Parts that are not named are those of a small drawing with
// one page and one master.
#pragma once

#include <string>
#include <string_view>

#include "formats/package_parts.h"

namespace quorvel::fuzz {

inline formats::testing::Parts partsOf(std::string_view text) {
  formats::testing::Parts parts = formats::testing::partsWithMaster({});
  constexpr std::string_view mark = "== ";
  while (!text.empty()) {
    const std::size_t next = text.find("\n== ");
    std::string_view part = text.substr(0, next);
    text.remove_prefix(next == std::string_view::npos ? text.size() : next + 1);
    std::string name = "visio/pages/page1.xml";
    if (part.starts_with(mark)) {
      const std::size_t end = part.find('\n');
      name = part.substr(mark.size(), end == std::string_view::npos ? end : end - mark.size());
      part.remove_prefix(end == std::string_view::npos ? part.size() : end + 1);
    }
    if (name.empty() || name.find('\0') != std::string::npos) continue;
    parts[std::move(name)] = part;
  }
  return parts;
}

}  // namespace quorvel::fuzz
