// The rows of guidelines and resources as they were before a change, so that a line's hyperlinks follow its text
// when the list is reordered.
#pragma once

#include <array>
#include <string>

#include "model/host_model.h"
#include "schema/details.h"

namespace quorvel::addin {

/// By position of the detail less 1: guidelines, then resources. A value is taken before a change and passed to the
/// deletion of the lines and to their drawing; it is not kept after the event.
struct ListRows {
  std::array<std::string, schema::lastListRow> values;
  /// The hyperlinks of each row as text, see field_hyperlinks.h.
  std::array<std::string, schema::lastListRow> labels;
};

/// The current values; to be taken before rows are rewritten. A row that can't be read counts as empty.
ListRows snapshotOfListRows(const Shape& task);
/// Fills in the labels that the cells hold.
void readLabels(const Shape& task, ListRows& rows);

/// Gives each row the label of the old row that had its text, at any place of its list. Of two such rows the later one
/// is used; a new text gets no label. The prompt takes the value.
void carryLabelsOver(const Shape& task, const ListRows& old);

/// Empties label and prompt of rows without a value. Of the supporting roles only the first two are changed.
void clearEmptyFieldLabels(const Shape& task);

}  // namespace quorvel::addin
