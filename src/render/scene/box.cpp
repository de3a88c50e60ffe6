#include "render/scene/box.h"

#include <algorithm>

namespace quorvel::render {

void Box::add(Point p) {
  if (isEmpty()) {
    *this = {p.x, p.y, p.x, p.y};
    return;
  }
  left = std::min(left, p.x);
  right = std::max(right, p.x);
  top = std::min(top, p.y);
  bottom = std::max(bottom, p.y);
}

void Box::add(const Box& other) {
  if (other.isEmpty()) return;
  add(Point{other.left, other.top});
  add(Point{other.right, other.bottom});
}

Box boundsOf(const Path& path) {
  Box box;
  for (Point p : path.points()) box.add(p);
  return box;
}

}  // namespace quorvel::render
