// Writes a document of the engine as one XML file.
#pragma once

#include <string>

#include "formats/common/left_out.h"
#include "host/sheet/store.h"

namespace quorvel::formats::vdx {

/// The same document gives the same bytes.
std::string writeDocument(const host::Store& store, const host::Document& document);

/// What of the document such a file leaves out.
LeftOut leftOutBy(const host::Document& document);

}  // namespace quorvel::formats::vdx
