// Functions on colours: components, lighter and darker ones.
#include <algorithm>
#include <cmath>

#include "host/formula/functions.h"

namespace quorvel::host {
namespace {

/// The colours that a number below 24 means when the document has no table of its own.
constexpr std::uint32_t palette[] = {0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF,
                                     0x800000, 0x008000, 0x000080, 0x808000, 0x800080, 0x008080, 0xC0C0C0, 0xE6E6E6,
                                     0xCDCDCD, 0xB3B3B3, 0x9A9A9A, 0x808080, 0x666666, 0x4D4D4D, 0x333333, 0x1A1A1A};

struct Rgb {
  double red = 0, green = 0, blue = 0;  ///< 0 to 255
};

/// Hue 0 to 239, saturation and luminosity 0 to 240.
struct Hsl {
  double hue = 0, saturation = 0, luminosity = 0;
};

Maybe<std::uint32_t> readHexColour(std::string_view text) {
  if (text.size() != 7 || text[0] != '#') return {};
  std::uint32_t rgb = 0;
  for (const char c : text.substr(1)) {
    const int digit = c >= '0' && c <= '9'                     ? c - '0'
                      : (c | 0x20) >= 'a' && (c | 0x20) <= 'f' ? (c | 0x20) - 'a' + 10
                                                               : -1;
    if (digit < 0) return {};
    rgb = rgb * 16 + static_cast<std::uint32_t>(digit);
  }
  return rgb;
}

/// A colour, a number of the palette or "#RRGGBB"; black for anything else.
Rgb colour(Call& call, int argument) {
  const Value value = call.value(argument);
  std::uint32_t rgb = 0;
  if (value.kind() == ValueKind::Colour) {
    rgb = static_cast<std::uint32_t>(value.internal());
  } else if (const Maybe<std::uint32_t> hex =
                 value.isText() ? readHexColour(value.textView()) : Maybe<std::uint32_t>()) {
    rgb = *hex;
  } else {
    const double index = value.asNumber().or_(0);
    if (index >= 0 && index < static_cast<double>(std::size(palette))) rgb = palette[static_cast<std::size_t>(index)];
  }
  return {double(rgb >> 16), double(rgb >> 8 & 0xFF), double(rgb & 0xFF)};
}

std::uint32_t component(double value) { return static_cast<std::uint32_t>(std::clamp(std::round(value), 0.0, 255.0)); }

Value toValue(const Rgb& rgb) {
  return Value::colour(component(rgb.red) << 16 | component(rgb.green) << 8 | component(rgb.blue));
}

Hsl toHsl(const Rgb& rgb) {
  const double red = rgb.red / 255, green = rgb.green / 255, blue = rgb.blue / 255;
  const double most = std::max({red, green, blue}), least = std::min({red, green, blue}), spread = most - least;
  Hsl hsl;
  hsl.luminosity = (most + least) / 2 * 240;
  if (spread == 0) return hsl;
  hsl.saturation = 240 * spread / (most + least <= 1 ? most + least : 2 - most - least);
  double sixth = most == red     ? (green - blue) / spread
                 : most == green ? 2 + (blue - red) / spread
                                 : 4 + (red - green) / spread;
  if (sixth < 0) sixth += 6;
  hsl.hue = sixth * 40;
  return hsl;
}

Rgb toRgb(const Hsl& hsl) {
  const double light = std::clamp(hsl.luminosity / 240, 0.0, 1.0),
               strength = std::clamp(hsl.saturation / 240, 0.0, 1.0);
  const double high = light <= 0.5 ? light * (1 + strength) : light + strength - light * strength;
  const double low = 2 * light - high;
  const auto channel = [&](double hue) {
    hue = std::fmod(hue + 480, 240);
    if (hue < 40) return low + (high - low) * hue / 40;
    if (hue < 120) return high;
    if (hue < 160) return low + (high - low) * (160 - hue) / 40;
    return low;
  };
  return {channel(hsl.hue + 80) * 255, channel(hsl.hue) * 255, channel(hsl.hue - 80) * 255};
}

using Part = double Hsl::*;

Value part(Call& call, Part which) { return Value::number(std::round(toHsl(colour(call, 0)).*which)); }

Value difference(Call& call, Part which) {
  const Hsl first = toHsl(colour(call, 0)), second = toHsl(colour(call, 1));
  return Value::number(std::round(first.*which) - std::round(second.*which));
}

Value shifted(Call& call, Part which, double direction) {
  Hsl hsl = toHsl(colour(call, 0));
  hsl.*which = std::clamp(hsl.*which + direction * call.number(1), 0.0, 240.0);
  return toValue(toRgb(hsl));
}

/// Part of the way to white (above 0) or to black (below); percent counts as a fraction, a bare number as percent.
Value towardEnd(Call& call, double direction) {
  Hsl hsl = toHsl(colour(call, 0));
  const Value amount = call.quantity(1);
  double share = direction * (amount.unit() == Unit::Percent ? amount.internal() : amount.internal() / 100);
  share = std::clamp(share, -1.0, 1.0);
  hsl.luminosity += share > 0 ? (240 - hsl.luminosity) * share : hsl.luminosity * share;
  // Halves go down here: drawings hold 127 for white half way to black.
  const Rgb rgb = toRgb(hsl);
  const auto whole = [](double part) { return std::floor(part + 1e-6); };
  return toValue({whole(rgb.red), whole(rgb.green), whole(rgb.blue)});
}

Value blend(Call& call) {
  const Rgb first = colour(call, 0), second = colour(call, 1);
  const double share = std::clamp(call.number(2), 0.0, 1.0);
  return toValue({std::lerp(first.red, second.red, share), std::lerp(first.green, second.green, share),
                  std::lerp(first.blue, second.blue, share)});
}

constexpr FunctionRow rows[] = {
    {"RGB",
     [](Call& c) {
       const double red = c.number(0), green = c.number(1);
       return toValue({red, green, c.number(2)});
     }},
    {"HSL",
     [](Call& c) {
       const double hue = c.number(0), saturation = c.number(1);
       return toValue(toRgb({hue, saturation, c.number(2)}));
     }},
    {"RED", [](Call& c) { return Value::number(colour(c, 0).red); }},
    {"GREEN", [](Call& c) { return Value::number(colour(c, 0).green); }},
    {"BLUE", [](Call& c) { return Value::number(colour(c, 0).blue); }},
    {"HUE", [](Call& c) { return part(c, &Hsl::hue); }},
    {"SAT", [](Call& c) { return part(c, &Hsl::saturation); }},
    {"LUM", [](Call& c) { return part(c, &Hsl::luminosity); }},
    {"HUEDIFF", [](Call& c) { return difference(c, &Hsl::hue); }},
    {"SATDIFF", [](Call& c) { return difference(c, &Hsl::saturation); }},
    {"LUMDIFF", [](Call& c) { return difference(c, &Hsl::luminosity); }},
    {"TINT", [](Call& c) { return shifted(c, &Hsl::luminosity, 1); }},
    {"SHADE", [](Call& c) { return shifted(c, &Hsl::luminosity, -1); }},
    {"TONE", [](Call& c) { return shifted(c, &Hsl::saturation, -1); }},
    {"MSOTINT", [](Call& c) { return towardEnd(c, 1); }},
    {"MSOSHADE", [](Call& c) { return towardEnd(c, -1); }},
    {"BLEND", blend},
};

}  // namespace

std::span<const FunctionRow> colourFunctions() { return rows; }

}  // namespace quorvel::host
