// Draws the icon of each master of a stencil: master_icons STENCIL gives a line for each, its name, a tab, and the icon
// as stencils hold it (an .ico of 32 by 32 in 16 colours, in base 64).
#include <cairo.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <map>
#include <memory>
#include <vector>

#include "formats/formats.h"
#include "formats/vdx/image_bytes.h"
#include "render/build/build_scene.h"
#include "render/cairo/scene_painter.h"

namespace {

using namespace quorvel;

constexpr int side = 32, colours = 16;

struct Surface {
  Surface(int width, int height) : image(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height)) {}
  ~Surface() { cairo_surface_destroy(image); }
  Surface(const Surface&) = delete;
  Surface& operator=(const Surface&) = delete;
  std::uint32_t pixel(int x, int y) {
    cairo_surface_flush(image);
    const unsigned char* const row = cairo_image_surface_get_data(image) + y * cairo_image_surface_get_stride(image);
    return reinterpret_cast<const std::uint32_t*>(row)[x];
  }
  cairo_surface_t* image;
};

void paint(Surface& surface, const render::Scene& scene, double scale, double left, double top) {
  cairo_t* const target = cairo_create(surface.image);
  cairo_translate(target, -left, -top);
  cairo_scale(target, scale, scale);
  render::ScenePainter().paint(target, scene);
  cairo_destroy(target);
}

/// The drawing in the middle, as large as possible with a margin of one pixel.
std::unique_ptr<Surface> drawn(const render::Scene& scene) {
  constexpr int large = 512;
  const double scale = large / std::max(scene.width, scene.height);
  Surface sketch(large, large);
  paint(sketch, scene, scale, 0, 0);
  int left = large, right = 0, top = large, bottom = 0;
  for (int y = 0; y < large; ++y) {
    for (int x = 0; x < large; ++x) {
      if (sketch.pixel(x, y) >> 24 == 0) continue;
      left = std::min(left, x);
      right = std::max(right, x + 1);
      top = std::min(top, y);
      bottom = std::max(bottom, y + 1);
    }
  }
  auto icon = std::make_unique<Surface>(side, side);
  if (right <= left) return icon;
  const double smaller = double(side - 2) / std::max(right - left, bottom - top);
  paint(*icon, scene, scale * smaller, (left + right) / 2.0 * smaller - side / 2.0,
        (top + bottom) / 2.0 * smaller - side / 2.0);
  return icon;
}

using Colour = std::array<int, 3>;

Colour colourOf(std::uint32_t pixel) {
  const auto alpha = static_cast<int>(pixel >> 24);
  Colour colour{};
  for (int i = 0; i < 3; ++i) {
    const int part = static_cast<int>(pixel >> (8 * i) & 0xFF);
    colour[static_cast<std::size_t>(i)] = alpha > 0 ? std::min(255, part * 255 / alpha) : 0;
  }
  return colour;
}

bool isShown(std::uint32_t pixel) { return pixel >> 24 >= 128; }

/// The most frequent colours; similar ones count as one.
std::vector<Colour> paletteOf(Surface& icon) {
  struct Sum {
    int count = 0;
    Colour sum{};
  };
  std::map<int, Sum> sums;
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      if (!isShown(icon.pixel(x, y))) continue;
      const Colour colour = colourOf(icon.pixel(x, y));
      Sum& sum = sums[colour[0] >> 5 << 6 | colour[1] >> 5 << 3 | colour[2] >> 5];
      ++sum.count;
      for (std::size_t i = 0; i < 3; ++i) sum.sum[i] += colour[i];
    }
  }
  std::vector<Sum> order;
  for (const auto& [key, sum] : sums) order.push_back(sum);
  std::ranges::stable_sort(order, std::ranges::greater(), &Sum::count);
  // Transparent pixels are black.
  std::vector<Colour> palette = {Colour{}};
  for (const Sum& sum : order) {
    if (palette.size() == colours) break;
    palette.push_back({sum.sum[0] / sum.count, sum.sum[1] / sum.count, sum.sum[2] / sum.count});
  }
  palette.resize(colours);
  return palette;
}

std::string iconFile(Surface& icon) {
  const std::vector<Colour> palette = paletteOf(icon);
  std::string file;
  const auto put = [&](std::uint32_t number, int bytes) {
    for (int i = 0; i < bytes; ++i) file += static_cast<char>(number >> (8 * i));
  };
  constexpr int headerBytes = 40, pixelBytes = side * side / 2, maskBytes = side * side / 8;
  put(0, 2), put(1, 2), put(1, 2);
  put(side, 1), put(side, 1), put(colours, 1), put(0, 5);
  put(headerBytes + 4 * colours + pixelBytes + maskBytes, 4), put(22, 4);
  put(headerBytes, 4), put(side, 4), put(2 * side, 4), put(1, 2), put(4, 2), put(0, 4);
  put(pixelBytes + maskBytes, 4), put(0, 16);
  for (const Colour& colour : palette) {
    for (const int part : colour) put(static_cast<std::uint32_t>(part), 1);
    put(0, 1);
  }
  const auto placeOf = [&](std::uint32_t pixel) {
    if (!isShown(pixel)) return 0u;
    const Colour colour = colourOf(pixel);
    const auto distance = [&](const Colour& other) {
      int sum = 0;
      for (std::size_t i = 0; i < 3; ++i) sum += (colour[i] - other[i]) * (colour[i] - other[i]);
      return sum;
    };
    return static_cast<unsigned>(std::ranges::min_element(palette, {}, distance) - palette.begin());
  };
  for (int y = side - 1; y >= 0; --y) {
    for (int x = 0; x < side; x += 2) put(placeOf(icon.pixel(x, y)) << 4 | placeOf(icon.pixel(x + 1, y)), 1);
  }
  for (int y = side - 1; y >= 0; --y) {
    for (int x = 0; x < side; x += 8) {
      unsigned bits = 0;
      for (int i = 0; i < 8; ++i) bits = bits << 1 | (isShown(icon.pixel(x + i, y)) ? 0u : 1u);
      put(bits, 1);
    }
  }
  return file;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::fprintf(stderr, "usage: master_icons STENCIL\n");
    return 2;
  }
  const std::string fileName = arguments[1];
  const host::DocumentFormat* const format = formats::formatFor(fileName);
  host::Store store;
  const host::OpenResult opened = format ? format->open(store, fileName) : host::OpenResult{};
  if (!opened.document) {
    std::fprintf(stderr, "%s\n", format ? opened.error.c_str() : "not a drawing");
    return 3;
  }
  render::SceneOptions look;
  look.paperBackground = false;
  for (const host::MasterId id : store.document(opened.document)->masters) {
    const host::Master& master = *store.master(id);
    const std::unique_ptr<Surface> icon = drawn(render::buildScene(store, master.contents, look));
    std::printf("%s\t%s\n", master.name.c_str(), formats::vdx::toBase64(iconFile(*icon)).c_str());
  }
  return 0;
}
