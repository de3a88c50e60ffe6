// The Task that a hyperlink points to, by the text of its sub-address.
#pragma once

#include <string>
#include <string_view>

#include "model/host_model.h"

namespace quorvel::addin {

/// The two parts of a sub-address "page/Task".
struct LinkTarget {
  std::string page;
  std::string taskId;  ///< empty: the link is to the page alone
};

/// Split at "/", empty parts skipped.
LinkTarget linkTarget(std::string_view subAddress);
/// The same for a hyperlink; both parts are empty when it can't be read.
LinkTarget linkTargetOf(const Hyperlink& link);

/// True when the hyperlink has an address, and it is not the file of the drawing itself: names of pages and Tasks in it
/// are those of another drawing, or bookmarks.
bool leadsElsewhere(const Hyperlink& link, const Document& document);

/// The sub-address of a Task on a page.
std::string subAddressOf(std::string_view page, std::string_view taskId);

}  // namespace quorvel::addin
