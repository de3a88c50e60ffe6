#include "shapes/shape_added.h"

#include <algorithm>
#include <utility>

#include "connect/host_queries.h"
#include "schema/cells.h"
#include "shapes/first_drop.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

bool holdsAnother(const Shapes& shapes, const Shape& one, std::string_view mark) {
  return std::ranges::any_of(shapes.all(), [&](const Shape& shape) {
    return (!(shape == one) && shape.Data1() == mark) || holdsAnother(shape.Shapes(), one, mark);
  });
}

/// A page has one logo and one legend. The page is searched for the other one, because the events of those that the
/// add-in itself imports may come after they got their marks: the host delays such events during a deletion. A
/// copied Task, Task Link or Process Connector is not changed: it is not renumbered, and its roles and frequencies
/// are not merged.
void copied(const Shape& shape, const Page& page) {
  const std::string mark = shape.Data1().or_({});
  if (!(mark == marks::logo || mark == marks::legend) || !holdsAnother(page.Shapes(), shape, mark)) return;
  shape.Cells("LockDelete").FormulaForce("0");
  shape.Delete();
}

}  // namespace

void gvsoApp_ShapeAdded(dsrVisioConnect& connect, const Shape& shape, const Page& page) {
  const Document document = page.Document();
  if (!isMap(document)) return;
  if (!(document.DocumentSheet().Cells(schema::documentCells::isInitialized).Result(visio::unitsNone) != 0)) return;
  // The copy that undoes the deletion of a Task must keep its ID and cells.
  if (std::exchange(connect.flagRestoringTask, false)) return;

  const Maybe<bool> wasHereBefore = shape.CellExists(schema::shapeCells::alreadyAdded, 1);
  if (wasHereBefore == true) copied(shape, page);
  if (wasHereBefore == false) firstDrop(connect, shape, page);
  // It does not change when the shape is renumbered or renamed, so a later reader can find the shape; a copy gets its
  // own.
  if (IsTask(shape) || IsTaskLink(shape) || IsProcessConnector(shape)) shape.UniqueID(visio::uniqueIdGetOrMake);
}

}  // namespace quorvel::addin
