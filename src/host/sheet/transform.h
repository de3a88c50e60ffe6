// Where a shape's own coordinates lie in its parent's and on the page. Inches, y upward.
#pragma once

#include "base/maybe.h"
#include "host/sheet/store.h"

namespace quorvel::host {

/// x' = a·x + c·y + e, y' = b·x + d·y + f.
struct Matrix {
  double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;
  struct Point {
    double x, y;
  };
  Point apply(double x, double y) const { return {a * x + c * y + e, b * x + d * y + f}; }
  /// First `inner`, then this.
  Matrix after(const Matrix& inner) const;
  /// The identity when the matrix has no inverse.
  Matrix inverse() const;
};

/// The shape's coordinates into those of the group or page that holds it; the identity for a page's sheet.
Matrix toParentMatrix(const Store& store, SheetId shape);
Matrix toPageMatrix(const Store& store, SheetId shape);

}  // namespace quorvel::host
