// The bookmarks of a word-processor document in the binary format of 1997 to 2003 (.doc).
#pragma once

#include <string>
#include <vector>

#include "base/maybe.h"

namespace quorvel::formats {

/// The names in UTF-8, in alphabetical order without regard to letter case, as the format's own program numbers them.
/// Hidden bookmarks are left out as they are there: their names begin with "_". Fails for a file that cannot be read as
/// such a document: one of another format or an older release, one that is encrypted, damaged or past a limit.
Maybe<std::vector<std::string>> bookmarksOfDocument(const std::string& fileName);

}  // namespace quorvel::formats
