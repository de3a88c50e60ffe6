// Replacing a file so that at every moment it has either the old contents or the new, complete.
#pragma once

#include <string>
#include <string_view>

namespace quorvel::formats {

/// Whether what was written must outlive a loss of power: a drawing must, a picture of it can be exported again.
enum class Flush { ToDisk, WhenConvenient };

/// Writes to another file in the folder, flushes to the disk and renames. Keeps the permissions of the file that it
/// replaces, and follows a symbolic link. Empty when it went well; else why not, as the end of a sentence, and the old
/// file is as it was.
std::string replaceFile(const std::string& fileName, std::string_view bytes, Flush flush = Flush::ToDisk);

}  // namespace quorvel::formats
