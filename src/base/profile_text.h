// Profile files, the old kind with [sections] and key=value lines, as text in and text out; the caller reads and writes
// the file.
#pragma once

#include <string>
#include <string_view>

#include "base/maybe.h"

namespace quorvel {

/// The value of `key` in the first section of that name, both in any letter case; blanks around it and one pair of
/// quotation marks are taken off. A line that begins with ";" is a comment. Nothing when section or key is missing.
Maybe<std::string> profileValue(std::string_view text, std::string_view section, std::string_view key);

/// `text` with the value put in: in place of the one that `profileValue` reads, else at the end of the section, else in
/// a new section at the end. All other lines stay as they are, line ends included. Nothing when a name or the value
/// can't be written in such a file (a line break, an empty name, "]" in a section, "=" in a key).
Maybe<std::string> withProfileValue(std::string_view text, std::string_view section, std::string_view key,
                                    std::string_view value);

}  // namespace quorvel
