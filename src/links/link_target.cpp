#include "links/link_target.h"

#include "base/ask_again.h"
#include "base/text.h"
#include "vocab/parse.h"

namespace quorvel::addin {

LinkTarget linkTarget(std::string_view subAddress) {
  const std::vector<std::string> parts = parse(subAddress, "/");
  return {slot(parts, 0).or_({}), slot(parts, 1).or_({})};
}

LinkTarget linkTargetOf(const Hyperlink& link) { return linkTarget(link.SubAddress().or_({})); }

bool leadsElsewhere(const Hyperlink& link, const Document& document) {
  const Maybe<std::string> address = askAgain([&] { return link.Address(); });
  if (!address || address->empty()) return false;
  const auto is = [&](const Maybe<std::string>& name) { return name && equalIgnoringCase(*address, *name); };
  return !is(askAgain([&] { return document.Name(); })) && !is(askAgain([&] { return document.FullName(); }));
}

std::string subAddressOf(std::string_view page, std::string_view taskId) {
  return std::string(page) + "/" + std::string(taskId);
}

}  // namespace quorvel::addin
