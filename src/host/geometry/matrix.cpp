#include "host/geometry/matrix.h"

namespace quorvel::host {

Matrix Matrix::rotation(double radians) {
  const double c = std::cos(radians), s = std::sin(radians);
  return {c, s, -s, c, 0, 0};
}

Matrix Matrix::operator*(const Matrix& inner) const {
  return {a * inner.a + c * inner.b, b * inner.a + d * inner.b,     a * inner.c + c * inner.d,
          b * inner.c + d * inner.d, a * inner.e + c * inner.f + e, b * inner.e + d * inner.f + f};
}

Matrix Matrix::inverse() const {
  const double size = determinant();
  if (std::fabs(size) < 1e-300) return {};
  return {d / size, -b / size, -c / size, a / size, (c * f - d * e) / size, (b * e - a * f) / size};
}

}  // namespace quorvel::host
