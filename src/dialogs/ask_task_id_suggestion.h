// Asks for the letters and numbers of a page's Task IDs.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// True when the user accepted; then letters and number are in the page's cells. After a refusal nothing is written,
/// and the caller removes the shape. The page is shown first, so that the user sees which one is meant.
bool askTaskIdSuggestion(dsrVisioConnect& connect, const Page& page);

/// Asks how the Tasks that were pasted onto the page get their IDs. True when the user accepted; then the answers are
/// in the batch. After a refusal nothing is written, and the caller removes what was pasted.
bool askCopiedTaskIdSuggestion(dsrVisioConnect& connect, const Page& page);

}  // namespace quorvel::addin
