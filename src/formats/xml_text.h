// The text of an XML file that is no drawing.
#pragma once

#include <string>

#include "base/maybe.h"

namespace quorvel::formats {

/// In UTF-8 and without a byte order mark; a file in another encoding also loses its declaration. Fails for a file that
/// is no well-formed XML, has a document type or more than a megabyte.
Maybe<std::string> xmlTextOfFile(const std::string& fileName);

}  // namespace quorvel::formats
