#include "render/cairo/soft_mask.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace quorvel::render {
namespace {

/// What is soft needs few pixels: so many for the width of its edge, and never more than these.
constexpr double pixelsOfDeviation = 4, mostPixels = 4'000'000;

/// Each byte becomes the mean of those within `radius`, along a line of `count` bytes that are `step` apart.
void average(unsigned char* line, int count, std::ptrdiff_t step, int radius, std::vector<unsigned char>& copy) {
  copy.resize(std::size_t(count));
  for (int i = 0; i < count; ++i) copy[std::size_t(i)] = line[i * step];
  const auto at = [&](int i) { return i < 0 || i >= count ? 0 : int(copy[std::size_t(i)]); };
  const int width = 2 * radius + 1;
  int sum = 0;
  for (int i = -radius; i <= radius; ++i) sum += at(i);
  for (int i = 0; i < count; ++i) {
    line[i * step] = static_cast<unsigned char>((sum + width / 2) / width);
    sum += at(i + radius + 1) - at(i - radius);
  }
}

}  // namespace

SoftMask::SoftMask(const Box& area, double blur, const std::function<void(cairo_t*)>& paint) {
  if (area.isEmpty() || !(blur > 0)) return;
  pixelsPerPoint_ =
      std::min({2.0, pixelsOfDeviation / blur, std::sqrt(mostPixels / std::max(1.0, area.width() * area.height()))});
  const double longest = std::max(area.width(), area.height());
  pixelsPerPoint_ = std::min(pixelsPerPoint_, 16000 / longest);
  const auto pixels = [&](double points) { return std::max(1, int(std::ceil(points * pixelsPerPoint_))); };
  const int width = pixels(area.width()), height = pixels(area.height());
  CairoSurface made(cairo_image_surface_create(CAIRO_FORMAT_A8, width, height));
  if (cairo_surface_status(made.get()) != CAIRO_STATUS_SUCCESS) return;
  cairo_t* target = cairo_create(made.get());
  cairo_scale(target, pixelsPerPoint_, pixelsPerPoint_);
  cairo_translate(target, -area.left, -area.top);
  paint(target);
  const bool painted = cairo_status(target) == CAIRO_STATUS_SUCCESS;
  cairo_destroy(target);
  if (!painted) return;
  cairo_surface_flush(made.get());
  unsigned char* bytes = cairo_image_surface_get_data(made.get());
  const int stride = cairo_image_surface_get_stride(made.get());
  // Three means in a row come close to a normal distribution of this deviation.
  const double deviation = blur * pixelsPerPoint_;
  const int radius = std::max(1, int(std::lround((std::sqrt(4 * deviation * deviation + 1) - 1) / 2)));
  std::vector<unsigned char> copy;
  for (int pass = 0; pass < 3; ++pass) {
    for (int y = 0; y < height; ++y) average(bytes + std::ptrdiff_t(y) * stride, width, 1, radius, copy);
    for (int x = 0; x < width; ++x) average(bytes + x, height, stride, radius, copy);
  }
  cairo_surface_mark_dirty(made.get());
  surface_ = std::move(made);
}

}  // namespace quorvel::render
