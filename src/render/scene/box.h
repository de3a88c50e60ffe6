// Boxes of a scene, whose y runs downward, and the names of the geometry that scenes are made of.
#pragma once

#include "host/geometry/path.h"

namespace quorvel::render {

using host::Matrix;
using host::Path;
using host::PathVerb;
using host::Point;

struct Box {
  double left = 0, top = 0, right = -1, bottom = -1;  ///< empty while right < left
  bool isEmpty() const { return right < left || bottom < top; }
  double width() const { return right - left; }
  double height() const { return bottom - top; }
  void add(Point p);
  void add(const Box& other);
};

/// Of the points and control points: never smaller than the curve's own.
Box boundsOf(const Path& path);

}  // namespace quorvel::render
