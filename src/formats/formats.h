// The file formats that drawings are opened and saved in.
#pragma once

#include <string_view>
#include <vector>

#include "host/document_format.h"

namespace quorvel::formats {

/// Every format, for the engine to choose from by file name. They live as long as the process.
const std::vector<const host::DocumentFormat*>& allFormats();

/// The format for the file's ending; null for an ending that no drawing has.
const host::DocumentFormat* formatFor(std::string_view fileName);

}  // namespace quorvel::formats
