#include "render/png/writer.h"

#include <algorithm>
#include <cmath>

#include "render/cairo/images.h"
#include "render/cairo/scene_painter.h"

namespace quorvel::render {
namespace {

constexpr double pointsPerInch = 72, longestSide = 16000;

cairo_status_t append(void* text, const unsigned char* bytes, unsigned count) {
  static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(bytes), count);
  return CAIRO_STATUS_SUCCESS;
}

}  // namespace

std::string writePng(const Scene& scene, double pixelsPerInch) {
  const double longest = std::max({scene.width, scene.height, 1.0});
  const double scale = std::min(pixelsPerInch / pointsPerInch, longestSide / longest);
  const auto pixels = [&](double points) { return std::max(1, int(std::ceil(points * scale - 1e-6))); };
  const CairoSurface surface(
      cairo_image_surface_create(CAIRO_FORMAT_ARGB32, pixels(scene.width), pixels(scene.height)));
  cairo_t* target = cairo_create(surface.get());
  cairo_scale(target, scale, scale);
  ScenePainter().paint(target, scene);
  const bool painted = cairo_status(target) == CAIRO_STATUS_SUCCESS;
  cairo_destroy(target);
  std::string bytes;
  if (!painted || cairo_surface_write_to_png_stream(surface.get(), append, &bytes) != CAIRO_STATUS_SUCCESS) return {};
  return bytes;
}

}  // namespace quorvel::render
