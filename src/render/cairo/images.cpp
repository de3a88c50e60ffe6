#include "render/cairo/images.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <cstdint>
#include <string>

namespace quorvel::render {
namespace {

/// An image in a drawing may be made to exhaust the memory once it is unpacked.
constexpr std::int64_t mostPixels = 64'000'000;

/// Tells the loader a size that is too large before it allocates the pixels.
void refuseHuge(GdkPixbufLoader* loader, int width, int height, gpointer) {
  if (std::int64_t(width) * height > mostPixels) gdk_pixbuf_loader_set_size(loader, 0, 0);
}

struct Loader {
  GdkPixbufLoader* loader = gdk_pixbuf_loader_new();
  ~Loader() { g_object_unref(loader); }

  /// Null when the bytes can't be read; owned by the loader.
  GdkPixbuf* load(const std::string& bytes) {
    g_signal_connect(loader, "size-prepared", G_CALLBACK(refuseHuge), nullptr);
    const auto* data = reinterpret_cast<const guchar*>(bytes.data());
    const bool written = gdk_pixbuf_loader_write(loader, data, bytes.size(), nullptr);
    const bool closed = gdk_pixbuf_loader_close(loader, nullptr);
    return written && closed ? gdk_pixbuf_loader_get_pixbuf(loader) : nullptr;
  }
};

/// Cairo needs one native-endian word for each pixel, its colours multiplied by their opacity.
std::uint32_t premultiplied(const guchar* pixel, bool hasAlpha) {
  const std::uint32_t alpha = hasAlpha ? pixel[3] : 255;
  const auto scaled = [&](guchar colour) { return (colour * alpha + 127) / 255; };
  return alpha << 24 | scaled(pixel[0]) << 16 | scaled(pixel[1]) << 8 | scaled(pixel[2]);
}

}  // namespace

CairoSurface decodeImage(const ImageItem& image) {
  if (!image.bytes) return nullptr;
  Loader loader;
  GdkPixbuf* pixels = loader.load(*image.bytes);
  if (!pixels) return nullptr;
  const int width = gdk_pixbuf_get_width(pixels), height = gdk_pixbuf_get_height(pixels);
  CairoSurface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
  if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
  cairo_surface_flush(surface.get());
  const bool hasAlpha = gdk_pixbuf_get_has_alpha(pixels);
  const int channels = gdk_pixbuf_get_n_channels(pixels);
  for (int y = 0; y < height; ++y) {
    const guchar* source = gdk_pixbuf_read_pixels(pixels) + std::ptrdiff_t(y) * gdk_pixbuf_get_rowstride(pixels);
    auto* target = reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(surface.get()) +
                                                    std::ptrdiff_t(y) * cairo_image_surface_get_stride(surface.get()));
    for (int x = 0; x < width; ++x, source += channels) target[x] = premultiplied(source, hasAlpha);
  }
  cairo_surface_mark_dirty(surface.get());
  if (image.mediaType == "image/jpeg") {
    auto* kept = new std::shared_ptr<const std::string>(image.bytes);
    const auto* data = reinterpret_cast<const unsigned char*>((*kept)->data());
    cairo_surface_set_mime_data(
        surface.get(), CAIRO_MIME_TYPE_JPEG, data, (*kept)->size(),
        [](void* holder) { delete static_cast<std::shared_ptr<const std::string>*>(holder); }, kept);
  }
  return surface;
}

}  // namespace quorvel::render
