// Reads a whole single-file drawing into a document of the engine.
#pragma once

#include <string>

#include "host/sheet/store.h"

namespace quorvel::formats::vdx {

/// Fills the fresh document; `bytes` are used up. Empty when it went well; else what is wrong and what to do, as the
/// end of a sentence that begins with the file's name. The document is then half filled and fit for removal only.
std::string readDocument(host::Store& store, host::DocumentId document, std::string& bytes);

}  // namespace quorvel::formats::vdx
