// Writing the rows of the hyperlink dialog to the shapes that were selected when it was opened.
#pragma once

#include <span>

#include "connect/dsr_visio_connect.h"
#include "hyperlinks/link_rows.h"

namespace quorvel::addin {

/// One shape: the rows become all its links; a link without a row is gone. Several shapes: each gets the new rows, and
/// the edited ones after `checkSaved`. The state of every row becomes "Saved". `document` is the shapes'.
void AddHyperLink_fnc(const Document& document, std::span<const Shape> selection, std::span<LinkRow> rows);

/// Deletes links of the shape that differ from the row, each second one of those that follow each other: what an edited
/// row replaces. Its walk ends behind the last link, where it fails, so that there is no answer and the row is written
/// even when the shape has it.
Maybe<bool> checkSaved(const Shape& shape, const LinkRow& row);

}  // namespace quorvel::addin
