#include "render/images/image.h"

#include <algorithm>

#include "host/sheet/bitmap_file.h"
#include "render/images/metafiles.h"

namespace quorvel::render {

Picture imageOf(const host::ForeignData& foreign, TextEngine& text) {
  const std::string& bytes = foreign.bytes;
  const auto startsWith = [&](std::string_view magic) { return bytes.compare(0, magic.size(), magic) == 0; };
  const auto given = [&](const char* type) { return Picture{type, std::make_shared<std::string>(bytes), {}}; };
  // The content is more reliable than what the file says about it.
  if (startsWith("\x89PNG")) return given("image/png");
  if (startsWith("\xFF\xD8\xFF")) return given("image/jpeg");
  if (startsWith("GIF8")) return given("image/gif");
  if (startsWith("BM")) return given("image/bmp");
  if (startsWith(std::string_view("II*\0", 4)) || startsWith(std::string_view("MM\0*", 4))) return given("image/tiff");
  if (foreign.type == "Bitmap" || foreign.compression == "DIB")
    if (std::string file = host::bitmapFile(bytes); !file.empty())
      return {"image/bmp", std::make_shared<std::string>(std::move(file)), {}};
  std::vector<SceneItem> items = enhancedMetafileItems(bytes, text);
  if (items.empty()) items = windowsMetafileItems(bytes, text);
  return {{}, nullptr, std::move(items)};
}

SceneItem placed(SceneItem item, const Matrix& place) {
  constexpr double hairline = 0.24;  // points
  if (auto* path = std::get_if<PathItem>(&item)) {
    path->path.transform(place);
    if (path->stroke.visible) path->stroke.width = std::max(path->stroke.width * place.scale(), hairline);
  } else if (auto* text = std::get_if<TextItem>(&item)) {
    text->transform = place * text->transform;
  } else if (auto* image = std::get_if<ImageItem>(&item)) {
    image->transform = place * image->transform;
    image->clip.transform(place);
  } else if (auto* clip = std::get_if<ClipBegin>(&item)) {
    clip->path.transform(place);
  }
  return item;
}

}  // namespace quorvel::render
