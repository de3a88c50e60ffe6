#include "shapes/emptied_notes.h"

#include "display/task_marks.h"
#include "schema/cells.h"

namespace quorvel::addin {
namespace {

namespace taskCells = schema::taskCells;

/// False also for a shape that has no notes at all.
bool hasEmptyNotes(const Shape& shape) {
  return shape.CellExists(taskCells::notes, 0) == true &&
         shape.Cells(taskCells::notes).ResultStr(visio::unitsNone) == "";
}

}  // namespace

void removeMarksOfEmptyNotes(const dsrVisioConnect& connect) {
  const Selection selection = connect.gvsoApp.ActiveWindow().Selection();
  selection.SetIterationMode(visio::selectModeSkipSuper);
  for (const Shape& shape : selection.all()) {
    if (hasEmptyNotes(shape)) removeNotesMark(shape);
  }
}

}  // namespace quorvel::addin
