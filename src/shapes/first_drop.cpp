#include "shapes/first_drop.h"

#include "shapes/rows.h"
#include "shapes/shape_classes.h"

namespace quorvel::addin {

void firstDrop(dsrVisioConnect& connect, const Shape& shape) {
  if (shape.Data1() == marks::logo || shape.Data1() == marks::legend) addUserRow(shape, "AlreadyAdded");
  if (!shape.Master()) return;
  shape.Cells("lockCustProp").FormulaForce("1");
  if (IsProcessConnector(shape)) firstDropOfProcessConnector(connect, shape);
  if (IsTaskLink(shape)) firstDropOfTaskLink(connect, shape);
  if (IsTask(shape)) firstDropOfTask(connect, shape);
}

}  // namespace quorvel::addin
