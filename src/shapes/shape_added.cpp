#include "shapes/shape_added.h"

#include <utility>

#include "addin/host_queries.h"
#include "shapes/first_drop.h"
#include "shapes/shape_classes.h"

namespace quorvel::addin {
namespace {

/// A page has one logo and one legend. A copied Task, Task Link or Process Connector stays as it was pasted: nothing
/// renumbers it or merges its roles and frequencies yet.
void copied(const Shape& shape) {
  if (!(shape.Data1() == marks::logo || shape.Data1() == marks::legend)) return;
  shape.Cells("LockDelete").FormulaForce("0");
  shape.Delete();
}

}  // namespace

void gvsoApp_ShapeAdded(dsrVisioConnect& connect, const Shape& shape) {
  if (!isQuorvelDocument(connect)) return;
  const Shape documentSheet = connect.gvsoApp.ActiveDocument().DocumentSheet();
  if (!(documentSheet.CellExists("User.Based_On_ZNB", 1) == true)) return;
  if (!(documentSheet.Cells("User.Based_On_ZNB").Result(visio::unitsNone) != 0)) return;
  // The copy that a deletion makes to keep a Task must keep its ID and cells.
  if (std::exchange(connect.flagRestoringTask, false)) return;

  const Maybe<bool> wasHereBefore = shape.CellExists("User.AlreadyAdded", 1);
  if (wasHereBefore == true) copied(shape);
  if (wasHereBefore == false) firstDrop(connect, shape);
}

}  // namespace quorvel::addin
