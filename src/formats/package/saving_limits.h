// Keeps what is saved within the limits of what is opened: a drawing that could not be read again is not written.
#pragma once

#include <string>
#include <vector>

#include "formats/package/zip_package.h"

namespace quorvel::formats {

/// The package's bytes in `bytes`; else what is in the way and what to do, as the end of a sentence that begins with
/// the file's name.
std::string makePackage(const std::vector<ZipEntry>& entries, const PackageLimits& limits, std::string& bytes);

/// Empty when a drawing in a single file can be opened again; else the same.
std::string whyNotSaved(std::string_view xml, const PackageLimits& limits);

}  // namespace quorvel::formats
