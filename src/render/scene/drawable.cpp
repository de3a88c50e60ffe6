#include "render/scene/drawable.h"

#include <algorithm>

namespace quorvel::render {
namespace {

// Written so that a number that is none fails it.
bool isNear(double coordinate) { return std::abs(coordinate) <= farthestPlace; }
bool isNear(Point p) { return isNear(p.x) && isNear(p.y); }
bool isNear(const Gradient& gradient) {
  return isNear(gradient.from) && isNear(gradient.to) && isNear(gradient.radius);
}

Colour firstColour(const Gradient& gradient) {
  return gradient.stops.empty() ? Colour{} : gradient.stops.front().colour;
}

}  // namespace

bool makeDrawable(PathItem& item) {
  bool allNear = true;
  for (const Point p : item.path.points()) {
    if (std::isnan(p.x) || std::isnan(p.y)) return false;
    allNear = allNear && isNear(p);
  }
  if (!allNear) item.path.clamp(farthestPlace);
  if (item.stroke.visible) {
    item.stroke.visible = item.stroke.width > 0;
    item.stroke.width = std::min(item.stroke.width, farthestPlace);
    if (item.stroke.gradient && !isNear(*item.stroke.gradient)) {
      item.stroke.colour = firstColour(*item.stroke.gradient);
      item.stroke.gradient = nullptr;
    }
  }
  if (const auto* gradient = std::get_if<Gradient>(&item.fill); gradient && !isNear(*gradient))
    item.fill = firstColour(*gradient);
  return true;
}

bool makeDrawable(ClipBegin& clip) {
  clip.path.clamp(farthestPlace);
  return true;
}

bool isDrawable(const TextItem& item) {
  const Matrix& matrix = item.transform;
  if (!isNear(Point{matrix.e, matrix.f})) return false;
  const double across = std::hypot(matrix.a, matrix.b), down = std::hypot(matrix.c, matrix.d);
  // A map that flattens cannot be undone, and the painter has to.
  const double area = std::abs(matrix.determinant());
  if (!(across > 0 && down > 0 && area > 1e-12 * across * down)) return false;
  const double stretch = std::max(across, down);
  double size = 0;
  for (const TextStyle& style : item.layout->styles) size = std::max(size, style.size);
  if (!(size > 0 && size * stretch <= largestLetters)) return false;
  for (const TextLine& line : item.layout->lines)
    if (!isNear(matrix(Point{line.left, line.top})) ||
        !isNear(matrix(Point{line.left + line.width, line.top + line.height})))
      return false;
  return true;
}

bool isDrawable(const ImageItem& item) {
  const Matrix& matrix = item.transform;
  const bool isPlaced = isNear(matrix(Point{0, 0})) && isNear(matrix(Point{1, 0})) && isNear(matrix(Point{0, 1})) &&
                        isNear(matrix(Point{1, 1}));
  return isPlaced && matrix.determinant() != 0;
}

}  // namespace quorvel::render
