// The file formats that drawings are opened and saved in.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/document_format.h"

namespace quorvel::formats {

/// Every format, for the engine to choose from by file name. They live as long as the process.
const std::vector<const host::DocumentFormat*>& allFormats();

/// The format for the file's ending; null for an ending that no drawing has.
const host::DocumentFormat* formatFor(std::string_view fileName);

/// What of the document a save under that name leaves out, each in words for a sentence: "the macros".
std::vector<std::string> leftOutBySave(const host::Document& document, const std::string& fileName);

}  // namespace quorvel::formats
