#include "links/link_target.h"

#include "vocab/parse.h"

namespace quorvel::addin {

LinkTarget linkTarget(std::string_view subAddress) {
  const std::vector<std::string> parts = parse(subAddress, "/");
  return {slot(parts, 0).or_({}), slot(parts, 1).or_({})};
}

LinkTarget linkTargetOf(const Hyperlink& link) { return linkTarget(link.SubAddress().or_({})); }

std::string subAddressOf(std::string_view page, std::string_view taskId) {
  return std::string(page) + "/" + std::string(taskId);
}

}  // namespace quorvel::addin
