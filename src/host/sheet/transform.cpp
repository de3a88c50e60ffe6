#include "host/sheet/transform.h"

#include <cmath>

#include "host/cells/cell_table.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {

Matrix toParentMatrix(const Store& store, SheetId id) {
  const Sheet* sheet = store.sheet(id);
  if (!sheet || !sheet->isShape()) return {};
  static const CellKey pinX = objectCell("PinX"), pinY = objectCell("PinY"), locPinX = objectCell("LocPinX"),
                       locPinY = objectCell("LocPinY"), angleCell = objectCell("Angle"), flipX = objectCell("FlipX"),
                       flipY = objectCell("FlipY");
  const auto number = [&](const CellKey& key) { return cellNumber(store, id, key); };
  const double angle = number(angleCell);
  const double sx = number(flipX) != 0 ? -1 : 1, sy = number(flipY) != 0 ? -1 : 1;
  const double cosine = std::cos(angle), sine = std::sin(angle);
  // Move the local pin to the origin, flip about it, turn, and move to the pin.
  Matrix matrix{cosine * sx, sine * sx, -sine * sy, cosine * sy, 0, 0};
  const Point shifted = matrix({-number(locPinX), -number(locPinY)});
  matrix.e = shifted.x + number(pinX);
  matrix.f = shifted.y + number(pinY);
  return matrix;
}

Matrix toPageMatrix(const Store& store, SheetId id) {
  Matrix matrix;
  for (int depth = 0; id && depth < 1000; ++depth) {
    const Sheet* sheet = store.sheet(id);
    if (!sheet || !sheet->isShape()) break;
    matrix = toParentMatrix(store, id) * matrix;
    id = sheet->parent;
  }
  return matrix;
}

}  // namespace quorvel::host
