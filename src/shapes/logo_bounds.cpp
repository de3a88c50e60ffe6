#include "shapes/logo_bounds.h"

namespace quorvel::addin {
namespace {

/// One axis, in inches: the pin stays `inset` away from the far edge; nearer to the zero edge than that it goes to
/// `lowest`.
void keepInside(const Shape& shape, std::string_view pin, std::string_view pageSize, double inset, double lowest) {
  const Cell cell = shape.Cells(pin);
  if (const auto size = shape.ContainingPage().PageSheet().Cells(pageSize).Result(visio::unitsInches)) {
    const double farthest = *size - inset;
    if (cell.Result(visio::unitsInches) > farthest) cell.SetResult(visio::unitsInches, farthest);
  }
  if (cell.Result(visio::unitsInches) < inset) cell.SetResult(visio::unitsInches, lowest);
}

}  // namespace

void keepLogoInsidePageX(const Shape& shape) { keepInside(shape, "PinX", "PageWidth", 0.5, 0.5); }

// A logo below the lower edge is moved to a full height above it.
void keepLogoInsidePageY(const Shape& shape) { keepInside(shape, "PinY", "PageHeight", 0.275, 0.55); }

}  // namespace quorvel::addin
