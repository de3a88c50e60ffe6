// Pictures recorded as drawing calls, of both kinds.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "render/images/metafiles.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quorvel::render;
  // It caches layouts, and random texts would fill the cache without end.
  static std::unique_ptr<TextEngine> text;
  if (!text || text->layoutCount() > 10'000) text = std::make_unique<TextEngine>();
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  enhancedMetafileItems(bytes, *text);
  windowsMetafileItems(bytes, *text);
  return 0;
}
