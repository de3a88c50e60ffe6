// Picture files as pixels that Cairo paints.
#pragma once

#include <cairo.h>

#include <memory>

#include "render/scene/scene.h"

namespace quorvel::render {

struct CairoSurfaceDestroy {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using CairoSurface = std::unique_ptr<cairo_surface_t, CairoSurfaceDestroy>;

/// Null when the bytes are no image that can be read, or one of more than 64 million pixels. The surface may keep
/// the bytes alive: a JPEG goes into a PDF as it is.
CairoSurface decodeImage(const ImageItem& image);

}  // namespace quorvel::render
