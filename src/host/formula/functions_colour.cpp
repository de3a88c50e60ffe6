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

/// Hue 0 to 239, saturation and luminosity 0 to 240: whole numbers, as drawings have been coloured since there were
/// colour dialogs with these three. Colours that went through them hold the rounding of each step.
struct Hsl {
  int hue = 0, saturation = 0, luminosity = 0;
};
constexpr int most = 240;  ///< of hue, saturation and luminosity

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

/// `number` / `by`, to the nearest; both are positive.
int divided(int number, int by) { return (number + by / 2) / by; }

Hsl toHsl(const Rgb& rgb) {
  const int red = static_cast<int>(component(rgb.red)), green = static_cast<int>(component(rgb.green)),
            blue = static_cast<int>(component(rgb.blue));
  const int high = std::max({red, green, blue}), low = std::min({red, green, blue}), spread = high - low;
  Hsl hsl;
  hsl.luminosity = divided((high + low) * most, 2 * 255);
  if (spread == 0) return hsl;
  hsl.saturation = divided(spread * most, hsl.luminosity <= most / 2 ? high + low : 2 * 255 - high - low);
  const auto distance = [&](int channel) { return divided((high - channel) * (most / 6), spread); };
  hsl.hue = high == red     ? distance(blue) - distance(green)
            : high == green ? most / 3 + distance(red) - distance(blue)
                            : 2 * most / 3 + distance(green) - distance(red);
  hsl.hue = (hsl.hue + most) % most;
  return hsl;
}

Rgb toRgb(const Hsl& hsl) {
  const int light = std::clamp(hsl.luminosity, 0, most), strength = std::clamp(hsl.saturation, 0, most);
  if (strength == 0) {
    const double grey = divided(light * 255, most);
    return {grey, grey, grey};
  }
  const int high =
      light <= most / 2 ? divided(light * (most + strength), most) : light + strength - divided(light * strength, most);
  const int low = 2 * light - high;
  const auto channel = [&](int hue) {
    hue = ((hue % most) + most) % most;
    int level = low;
    if (hue < most / 6) {
      level = low + divided((high - low) * hue, most / 6);
    } else if (hue < most / 2) {
      level = high;
    } else if (hue < most * 2 / 3) {
      level = low + divided((high - low) * (most * 2 / 3 - hue), most / 6);
    }
    return static_cast<double>(divided(level * 255, most));
  };
  return {channel(hsl.hue + most / 3), channel(hsl.hue), channel(hsl.hue - most / 3)};
}

using Part = int Hsl::*;

Value part(Call& call, Part which) { return Value::number(toHsl(colour(call, 0)).*which); }

Value difference(Call& call, Part which) {
  const Hsl first = toHsl(colour(call, 0)), second = toHsl(colour(call, 1));
  return Value::number(first.*which - second.*which);
}

int shifted(int part, double amount) { return static_cast<int>(std::clamp(part + amount, 0.0, double(most))); }

/// Near white a step is a share of what is left: drawings hold 228 for 168 lighter by 84.
Value lighter(Call& call, double direction) {
  Hsl hsl = toHsl(colour(call, 0));
  const double amount = direction * call.number(1);
  const double left = std::min(1.0, (most - hsl.luminosity) / 100.0);
  hsl.luminosity = shifted(hsl.luminosity, amount > 0 ? amount * left : amount);
  return toValue(toRgb(hsl));
}

Value paler(Call& call) {
  Hsl hsl = toHsl(colour(call, 0));
  hsl.saturation = shifted(hsl.saturation, -call.number(1));
  return toValue(toRgb(hsl));
}

/// Part of the way to white (above 0) or to black (below); percent counts as a fraction, a bare number as percent.
Value towardEnd(Call& call, double direction) {
  const Rgb rgb = colour(call, 0);
  const Value amount = call.quantity(1);
  double share = direction * (amount.unit() == Unit::Percent ? amount.internal() : amount.internal() / 100);
  share = std::clamp(share, -1.0, 1.0);
  // The hue and the saturation of the colour are kept, so its parts change by different amounts.
  const double high = std::max({rgb.red, rgb.green, rgb.blue}), low = std::min({rgb.red, rgb.green, rgb.blue});
  const double light = (high + low) / 2;
  const double wanted = share > 0 ? light + (255 - light) * share : light * (1 + share);
  const double range = std::min(light, 255 - light), wantedRange = std::min(wanted, 255 - wanted);
  const double scale = range > 0 ? wantedRange / range : 0;
  // Halves go down here: drawings hold 127 for white half way to black.
  const auto moved = [&](double channel) { return std::floor(wanted + (channel - light) * scale + 1e-6); };
  return toValue({moved(rgb.red), moved(rgb.green), moved(rgb.blue)});
}

Value blend(Call& call) {
  const Rgb first = colour(call, 0), second = colour(call, 1);
  const double share = std::clamp(call.number(2), 0.0, 1.0);
  return toValue({std::lerp(first.red, second.red, share), std::lerp(first.green, second.green, share),
                  std::lerp(first.blue, second.blue, share)});
}

/// The colour as the theme's gradient has it at a stop.
Value throughGradientStop(Call& call) {
  const Value given = toValue(colour(call, 0));
  const Maybe<std::uint32_t> changed =
      call.context().throughGradientStop(static_cast<std::uint32_t>(given.internal()), call.whole(1, 1));
  return changed ? Value::colour(*changed) : call.unknown();
}

constexpr FunctionRow rows[] = {
    {"RGB",
     [](Call& c) {
       const double red = c.number(0), green = c.number(1);
       return toValue({red, green, c.number(2)});
     }},
    {"HSL",
     [](Call& c) {
       const int hue = shifted(0, c.number(0)), saturation = shifted(0, c.number(1));
       return toValue(toRgb({hue, saturation, shifted(0, c.number(2))}));
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
    {"TINT", [](Call& c) { return lighter(c, 1); }},
    {"SHADE", [](Call& c) { return lighter(c, -1); }},
    {"TONE", paler},
    {"MSOTINT", [](Call& c) { return towardEnd(c, 1); }},
    {"MSOSHADE", [](Call& c) { return towardEnd(c, -1); }},
    {"BLEND", blend},
    {"THEMECBV", throughGradientStop, AsksHost},
};

}  // namespace

std::span<const FunctionRow> colourFunctions() { return rows; }

}  // namespace quorvel::host
