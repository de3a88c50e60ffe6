#include "shapes/first_drop.h"

#include "sheets/rows.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {

void firstDrop(dsrVisioConnect& connect, const Shape& shape, const Page& page) {
  if (shape.Data1() == marks::logo || shape.Data1() == marks::legend) addRow(shape, schema::shapeCells::alreadyAdded);
  if (!shape.Master()) return;
  shape.Cells("lockCustProp").FormulaForce("1");
  if (IsProcessConnector(shape)) firstDropOfProcessConnector(shape, page);
  if (IsTaskLink(shape)) firstDropOfTaskLink(connect, shape, page);
  if (IsTask(shape)) firstDropOfTask(connect, shape, page);
}

}  // namespace quorvel::addin
