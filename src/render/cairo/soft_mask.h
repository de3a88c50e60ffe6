// A mask of pixels with soft outlines, for shadows.
#pragma once

#include <functional>

#include "render/cairo/images.h"
#include "render/scene/box.h"

namespace quorvel::render {

class SoftMask {
 public:
  /// `paint` draws in points what is to be smeared by a normal distribution of the deviation `blur`, within `area`.
  SoftMask(const Box& area, double blur, const std::function<void(cairo_t*)>& paint);

  /// Null when memory is short or there is nothing to show. Its corner is the area's.
  cairo_surface_t* surface() const { return surface_.get(); }
  double pixelsPerPoint() const { return pixelsPerPoint_; }

 private:
  CairoSurface surface_;
  double pixelsPerPoint_ = 1;
};

}  // namespace quorvel::render
