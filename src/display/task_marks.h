// The small pictures on a Task that tell of a hyperlink or of notes. For each one a cell of the Task is 1 while the
// picture exists.
#pragma once

#include "connect/dsr_visio_connect.h"
#include "schema/cells.h"

namespace quorvel::addin {

/// The mark of notes lies a little lower on a Task of a converted drawing.
enum class NotesPlace { New, Converted };

/// Each draws its mark when the Task has none yet and the mark has a reason: a hyperlink of the Task itself, notes that
/// are not blank, a hyperlink of the sub-task box. Without its picture file there is no mark.
void markOwnHyperlink(const dsrVisioConnect& connect, const Shape& task);
void markNotes(const dsrVisioConnect& connect, const Shape& task, NotesPlace place = NotesPlace::New);
void markSubTaskHyperlink(const dsrVisioConnect& connect, const Shape& task, const Shape& box);

/// Puts the mark of the sub-task box to the left of the box's text, or of the box when the text has several lines.
/// Nothing without such a mark.
void placeSubTaskMark(const Shape& task, const Shape& box);

bool hasSubTaskMark(const Shape& task);

/// Each deletes its mark and sets the cell to 0. Nothing without such a mark.
void removeOwnHyperlinkMark(const Shape& task);
void removeNotesMark(const Shape& task);
void removeSubTaskMark(const Shape& task);

}  // namespace quorvel::addin
