// Writes a document of the engine as a whole package.
#pragma once

#include <string>
#include <vector>

#include "formats/common/left_out.h"
#include "formats/common/names.h"
#include "formats/package/zip_package.h"
#include "host/sheet/store.h"

namespace quorvel::formats {

/// All parts of the package, in the order of the file. The same document gives the same
/// bytes.
std::vector<ZipEntry> writeDocument(const host::Store& store, const host::Document& document,
                                    const names::FileKind& kind);

/// What of the document such a file leaves out.
LeftOut leftOutBy(const host::Document& document, const names::FileKind& kind);

}  // namespace quorvel::formats
