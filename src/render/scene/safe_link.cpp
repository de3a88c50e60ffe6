#include "render/scene/safe_link.h"

#include "base/text.h"

namespace quorvel::render {

std::string safeLink(std::string_view address) {
  address = trimmed(address);
  std::string scheme;
  for (char c : address) {
    if (c == ':') break;
    // Browsers overlook these within a scheme.
    if (static_cast<unsigned char>(c) > ' ') scheme += c;
  }
  for (std::string_view script : {"javascript", "vbscript", "data"})
    if (equalIgnoringCase(scheme, script)) return {};
  std::string link;
  for (char c : address) {
    if (c == ' ')
      link += "%20";
    else if (static_cast<unsigned char>(c) > ' ')
      link += c;
  }
  return link;
}

}  // namespace quorvel::render
