// Affine maps of the plane.
#pragma once

#include "host/geometry/point.h"

namespace quorvel::host {

/// Maps (x, y) to (a x + c y + e, b x + d y + f).
struct Matrix {
  double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;

  static Matrix translation(double x, double y) { return {1, 0, 0, 1, x, y}; }
  static Matrix scaling(double x, double y) { return {x, 0, 0, y, 0, 0}; }
  static Matrix rotation(double radians);
  /// The map that does `inner` first and then this one.
  Matrix operator*(const Matrix& inner) const;
  Point operator()(Point p) const { return {a * p.x + c * p.y + e, b * p.x + d * p.y + f}; }
  /// The identity when the matrix has no inverse.
  Matrix inverse() const;
  double determinant() const { return a * d - b * c; }
  /// The mean factor by which lengths grow.
  double scale() const { return std::sqrt(std::abs(determinant())); }
  friend bool operator==(const Matrix&, const Matrix&) = default;
};

}  // namespace quorvel::host
