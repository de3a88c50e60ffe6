// Makes a drawing a process map: the document's cells with their defaults, its protection, and its pages.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// The host's hyperlink command and the last-save command are not changed.
void initializeDocument(dsrVisioConnect& connect, const Document& document);

/// The frequencies, which always start from the defaults, and the time units where they are missing.
void addTimesAndFrequencies(const Shape& documentSheet);

}  // namespace quorvel::addin
