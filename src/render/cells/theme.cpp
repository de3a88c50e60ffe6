#include "render/cells/theme.h"

#include <algorithm>
#include <cmath>

namespace quorvel::render {
namespace {

double toLinear(double channel) {
  return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}
double toDisplay(double channel) {
  return channel <= 0.0031308 ? channel * 12.92 : 1.055 * std::pow(channel, 1 / 2.4) - 0.055;
}

struct Hsl {
  double hue = 0, saturation = 0, luminance = 0;
};

Hsl toHsl(const double (&rgb)[3]) {
  const double high = std::max({rgb[0], rgb[1], rgb[2]}), low = std::min({rgb[0], rgb[1], rgb[2]});
  Hsl hsl{0, 0, (high + low) / 2};
  const double range = high - low;
  if (range <= 0) return hsl;
  hsl.saturation = range / (hsl.luminance > 0.5 ? 2 - high - low : high + low);
  if (high == rgb[0])
    hsl.hue = (rgb[1] - rgb[2]) / range + (rgb[1] < rgb[2] ? 6 : 0);
  else if (high == rgb[1])
    hsl.hue = (rgb[2] - rgb[0]) / range + 2;
  else
    hsl.hue = (rgb[0] - rgb[1]) / range + 4;
  hsl.hue /= 6;
  return hsl;
}

void fromHsl(const Hsl& hsl, double (&rgb)[3]) {
  const double s = std::clamp(hsl.saturation, 0.0, 1.0), l = std::clamp(hsl.luminance, 0.0, 1.0);
  const double high = l < 0.5 ? l * (1 + s) : l + s - l * s, low = 2 * l - high;
  for (int i = 0; i < 3; ++i) {
    double t = hsl.hue + (1 - i) / 3.0;
    t -= std::floor(t);
    rgb[i] = t < 1.0 / 6   ? low + (high - low) * 6 * t
             : t < 0.5     ? high
             : t < 2.0 / 3 ? low + (high - low) * (2.0 / 3 - t) * 6
                           : low;
  }
}

}  // namespace

std::uint32_t Theme::quickColour(int number, int variation) const {
  const bool isVaried = number >= 100 && number <= 106, isOwn = number >= 200 && number <= 206;
  if ((isVaried || isOwn) && !variationColours.empty()) {
    const std::size_t at = variation >= 0 && variation < int(variationColours.size()) ? std::size_t(variation) : 0;
    const VariationColours& own = variationColours[at];
    return own.colours[isVaried && own.monotone ? 0 : std::size_t(number % 100)];
  }
  if (number == 0) return colours[0];
  if (number == 1) return colours[1];
  if (number >= 2 && number <= 7) return colours[std::size_t(number + 2)];
  if (number == 8) return background;
  return colours[4];
}

std::uint32_t Theme::resolve(const ThemeColour& colour, std::uint32_t placeholder, double* opacity) const {
  const std::uint32_t base = colour.base == ThemeColour::Fixed ? colour.rgb
                             : colour.base == ThemeColour::Scheme
                                 ? colours[std::size_t(std::clamp(colour.scheme, 0, 11))]
                                 : placeholder;
  double rgb[3] = {(base >> 16 & 255) / 255.0, (base >> 8 & 255) / 255.0, (base & 255) / 255.0};
  for (const auto& [change, amount] : colour.changes) {
    switch (change) {
      case ThemeColour::Tint:
        for (double& channel : rgb) channel = toDisplay(toLinear(channel) * amount + 1 - amount);
        break;
      case ThemeColour::Shade:
        for (double& channel : rgb) channel = toDisplay(toLinear(channel) * amount);
        break;
      case ThemeColour::Alpha:
        if (opacity) *opacity = amount;
        break;
      default: {
        Hsl hsl = toHsl(rgb);
        if (change == ThemeColour::LuminanceFactor) hsl.luminance *= amount;
        if (change == ThemeColour::LuminanceShift) hsl.luminance += amount;
        if (change == ThemeColour::SaturationFactor) hsl.saturation *= amount;
        if (change == ThemeColour::HueShift) hsl.hue += amount;
        fromHsl(hsl, rgb);
      }
    }
  }
  std::uint32_t result = 0;
  for (double channel : rgb) result = result << 8 | std::uint32_t(std::lround(std::clamp(channel, 0.0, 1.0) * 255));
  return result;
}

}  // namespace quorvel::render
