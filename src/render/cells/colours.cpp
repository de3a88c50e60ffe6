#include "render/cells/colours.h"

#include <charconv>
#include <cmath>

namespace quorvel::render {
namespace {

/// The first entries of every document's colour table.
constexpr std::uint32_t standardColours[] = {
    0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF,
    0x800000, 0x008000, 0x000080, 0x808000, 0x800080, 0x008080, 0xC0C0C0, 0xE6E6E6,
    0xCDCDCD, 0xB3B3B3, 0x9A9A9A, 0x808080, 0x666666, 0x4D4D4D, 0x333333, 0x1A1A1A,
};

}  // namespace

Maybe<std::uint32_t> colourOf(const host::Document& document, const host::Value& value) {
  switch (value.kind()) {
    case host::ValueKind::Colour:
      return static_cast<std::uint32_t>(value.internal());
    case host::ValueKind::Text: {
      const std::string_view text = value.textView();
      std::uint32_t rgb = 0;
      if (text.size() == 7 && text[0] == '#' &&
          std::from_chars(text.data() + 1, text.data() + 7, rgb, 16).ptr == text.data() + 7)
        return rgb;
      break;
    }
    case host::ValueKind::Error:
      return {};
    default:
      break;
  }
  const Maybe<double> number = value.asNumber();
  if (!number || !(*number >= 0 && *number < 1e6)) return {};
  const int index = static_cast<int>(std::lround(*number));
  if (const auto own = document.colours.find(index); own != document.colours.end()) return own->second;
  if (index < static_cast<int>(std::size(standardColours))) return standardColours[index];
  return {};
}

double luminance(std::uint32_t rgb) {
  return (0.299 * (rgb >> 16 & 255) + 0.587 * (rgb >> 8 & 255) + 0.114 * (rgb & 255)) / 255;
}

}  // namespace quorvel::render
