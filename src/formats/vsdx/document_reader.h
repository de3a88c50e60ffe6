// Reads a whole package into a document of the engine.
#pragma once

#include <string>

#include "formats/package/zip_package.h"
#include "host/sheet/store.h"

namespace quorvel::formats {

/// Fills the fresh document. Empty when it went well; else what is wrong and what to do, as the end of a sentence that
/// begins with the file's name. The document is then half filled and fit for removal only.
std::string readDocument(host::Store& store, host::DocumentId document, const ZipPackage& package);

}  // namespace quorvel::formats
