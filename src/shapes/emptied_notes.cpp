#include "shapes/emptied_notes.h"

#include "schema/cells.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

namespace taskCells = schema::taskCells;

/// False also for a shape that has no notes at all.
bool hasEmptyNotes(const Shape& shape) {
  return shape.CellExists(taskCells::notes, 0) == true &&
         shape.Cells(taskCells::notes).ResultStr(visio::unitsNone) == "";
}

Shape notesMarkOf(const Shape& task) {
  for (const Shape& member : task.Shapes().all()) {
    if (member.Data1() == marks::notes) return member;
  }
  return {};
}

}  // namespace

void removeMarksOfEmptyNotes(const dsrVisioConnect& connect) {
  const Selection selection = connect.gvsoApp.ActiveWindow().Selection();
  selection.SetIterationMode(visio::selectModeSkipSuper);
  for (const Shape& shape : selection.all()) {
    if (!hasEmptyNotes(shape) || !(shape.CellExists(taskCells::notesMark, 0) == true)) continue;
    const Cell flag = shape.Cells(taskCells::notesMark);
    if (!(flag.Result(visio::unitsNone) == 1)) continue;
    const Shape mark = notesMarkOf(shape);
    if (!mark) continue;
    flag.FormulaForce("0");
    mark.Cells("LockDelete").FormulaForce("0");
    mark.Delete();
  }
}

}  // namespace quorvel::addin
