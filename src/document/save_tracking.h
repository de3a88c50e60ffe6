// Whether a drawing has ever been saved: only then it has a folder that paths can be relative to.
#pragma once

#include "model/host_model.h"

namespace quorvel::addin {

/// To be called when the document is about to be saved. Nothing for a document without the cell.
void markAsSaved(const Document& document);

}  // namespace quorvel::addin
