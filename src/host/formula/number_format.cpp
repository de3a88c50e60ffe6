#include "host/formula/number_format.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numeric>

#include "base/letter_case.h"
#include "base/text.h"
#include "host/formula/format_scanner.h"
#include "host/formula/number_text.h"

namespace quorvel::host {
namespace {

bool isPlace(char c) { return c == '0' || c == '#'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// One run of digit places: "0.##", "#,##0.0", "###.#e+#", "# #/4".
struct NumberPlaces {
  std::size_t length = 0;  ///< bytes of the format
  int leastWhole = 0, wholePlaces = 0;
  int leastDecimals = 0, decimals = 0;
  bool thousands = false;
  char exponent = '\0';
  bool exponentPlus = false;
  int exponentDigits = 0;
  bool fraction = false, mixed = false;
  int denominator = 0;
  bool simplify = false;
  bool nearest = false;  ///< of all denominators up to the largest
  std::string blanks;    ///< between whole number and fraction
};

/// Reads "#/4", "#/#4" or "#/##" behind the numerator's places at `at`; false when there is no fraction.
bool readFraction(std::string_view format, std::size_t at, NumberPlaces& places) {
  std::size_t end = at;
  while (end < format.size() && isPlace(format[end])) ++end;
  if (end == at || end + 1 >= format.size() || format[end] != '/') return false;
  ++end;
  const std::size_t below = end;
  int placeCount = 0;
  while (end < format.size() && format[end] == '#') ++end, ++placeCount;
  int number = 0;
  while (end < format.size() && isDigit(format[end]) && end - below < 6) number = number * 10 + (format[end++] - '0');
  if (end == below) return false;
  places.fraction = true;
  places.denominator = number;
  places.simplify = placeCount > 0;
  if (number == 0) places.denominator = placeCount <= 1 ? 9 : placeCount == 2 ? 99 : 999;
  // Without a number the nearest fraction of any denominator of so many places is meant.
  places.nearest = number == 0;
  places.length = end;
  return true;
}

/// Length 0 when the text does not start with a number.
NumberPlaces readPlaces(std::string_view format) {
  NumberPlaces places;
  if (format.empty() || !(isPlace(format[0]) || (format[0] == '.' && format.size() > 1 && isPlace(format[1]))))
    return places;
  if (readFraction(format, 0, places)) return places;
  std::size_t at = 0;
  for (; at < format.size() && (isPlace(format[at]) || format[at] == ','); ++at) {
    if (format[at] == ',') {
      if (at + 1 >= format.size() || !isPlace(format[at + 1])) break;
      places.thousands = true;
      continue;
    }
    ++places.wholePlaces;
    places.leastWhole += format[at] == '0';
  }
  std::size_t blanks = at;
  while (blanks < format.size() && format[blanks] == ' ') ++blanks;
  if (blanks > at && readFraction(format, blanks, places)) {
    places.mixed = true;
    places.blanks = std::string(blanks - at, ' ');
    return places;
  }
  if (at + 1 < format.size() && format[at] == '.' && isPlace(format[at + 1])) {
    for (++at; at < format.size() && isPlace(format[at]); ++at) {
      ++places.decimals;
      if (format[at] == '0') places.leastDecimals = places.decimals;
    }
  }
  if (at + 2 < format.size() && (format[at] | 0x20) == 'e' && (format[at + 1] == '+' || format[at + 1] == '-') &&
      isPlace(format[at + 2])) {
    places.exponent = format[at];
    places.exponentPlus = format[at + 1] == '+';
    for (at += 2; at < format.size() && isPlace(format[at]); ++at) places.exponentDigits += format[at] == '0';
  }
  places.length = at;
  places.decimals = std::min(places.decimals, 15);
  places.leastDecimals = std::min(places.leastDecimals, 15);
  return places;
}

/// Digits of a number above or at 0, rounded half up as people do it.
std::string fixedDigits(double number, int decimals) {
  char buffer[400];
  // What conversions blur in the 16th digit must not decide about a half.
  const double nudged = roundedTo15(number) * (1 + 4e-16);
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, nudged, std::chars_format::fixed, decimals);
  if (end.ec != std::errc()) return shortestNumber(number);
  return std::string(buffer, end.ptr);
}

std::string decimalText(double number, const NumberPlaces& places) {
  std::string digits = fixedDigits(number, places.decimals);
  std::string decimals;
  if (const auto point = digits.find('.'); point != std::string::npos) {
    decimals = digits.substr(point + 1);
    digits.resize(point);
    while (static_cast<int>(decimals.size()) > places.leastDecimals && decimals.back() == '0') decimals.pop_back();
  }
  if (static_cast<int>(digits.size()) < places.leastWhole)
    digits.insert(0, static_cast<std::size_t>(places.leastWhole) - digits.size(), '0');
  if (places.thousands) {
    std::string grouped;
    for (std::size_t at = 0; at < digits.size(); ++at) {
      if (at > 0 && (digits.size() - at) % 3 == 0) grouped += ',';
      grouped += digits[at];
    }
    digits = std::move(grouped);
  }
  return decimals.empty() ? digits : digits + "." + decimals;
}

std::string scientificText(double number, const NumberPlaces& places) {
  const int wholePlaces = std::clamp(places.wholePlaces, 1, 15);
  const int exponent = number == 0 ? 0 : static_cast<int>(std::floor(std::log10(number))) - wholePlaces + 1;
  // The smallest numbers are scaled in two steps: a power of ten that small would be 0.
  const int firstStep = exponent < -290 ? -290 : 0;
  std::string text = decimalText(number / std::pow(10.0, firstStep) / std::pow(10.0, exponent - firstStep), places);
  text += places.exponent;
  if (exponent < 0) text += '-';
  if (exponent >= 0 && places.exponentPlus) text += '+';
  std::string digits = std::to_string(std::abs(exponent));
  if (static_cast<int>(digits.size()) < places.exponentDigits)
    digits.insert(0, static_cast<std::size_t>(places.exponentDigits) - digits.size(), '0');
  return text + digits;
}

std::string fractionText(double number, const NumberPlaces& places) {
  double whole = places.mixed ? std::floor(number) : 0;
  const double part = number - whole;
  int denominator = std::max(places.denominator, 1);
  if (places.nearest) {
    int best = 1;
    for (int candidate = 1; candidate <= denominator; ++candidate) {
      const auto missed = [&](int d) { return std::fabs(part - std::round(part * d) / d); };
      if (missed(candidate) < missed(best) - 1e-12) best = candidate;
    }
    denominator = best;
  }
  double numerator = std::round(part * denominator);
  if (places.mixed && numerator >= denominator) {
    whole += 1;
    numerator = 0;
  }
  if (places.simplify && numerator > 0) {
    const int common = std::gcd(denominator, static_cast<int>(std::fmod(numerator, denominator)));
    denominator /= common;
    numerator /= common;
  }
  const std::string fraction = shortestNumber(numerator) + "/" + std::to_string(denominator);
  if (!places.mixed) return fraction;
  if (numerator == 0) return shortestNumber(whole);
  return whole == 0 ? fraction : shortestNumber(whole) + places.blanks + fraction;
}

/// The number's text, its sign included.
std::string numberText(double number, const NumberPlaces& places) {
  const double size = std::fabs(number);
  const std::string text = places.fraction           ? fractionText(size, places)
                           : places.exponent != '\0' ? scientificText(size, places)
                                                     : decimalText(size, places);
  const bool zero = text.find_first_of("123456789") == std::string::npos;
  return number < 0 && !zero ? "-" + text : text;
}

struct LongName {
  Unit unit;
  std::string_view one, many;
};
constexpr LongName longNames[] = {
    {Unit::Inches, "inch", "inches"},
    {Unit::Drawing, "inch", "inches"},
    {Unit::Page, "inch", "inches"},
    {Unit::InchFractions, "inch", "inches"},
    {Unit::Feet, "foot", "feet"},
    {Unit::Miles, "mile", "miles"},
    {Unit::Yards, "yard", "yards"},
    {Unit::NauticalMiles, "nautical mile", "nautical miles"},
    {Unit::Centimetres, "centimeter", "centimeters"},
    {Unit::Millimetres, "millimeter", "millimeters"},
    {Unit::Metres, "meter", "meters"},
    {Unit::Kilometres, "kilometer", "kilometers"},
    {Unit::Points, "point", "points"},
    {Unit::Typographic, "point", "points"},
    {Unit::Picas, "pica", "picas"},
    {Unit::Didots, "didot", "didots"},
    {Unit::Ciceros, "cicero", "ciceros"},
    {Unit::Degrees, "degree", "degrees"},
    {Unit::Angle, "degree", "degrees"},
    {Unit::Radians, "radian", "radians"},
    {Unit::ElapsedSecond, "elapsed second", "elapsed seconds"},
    {Unit::ElapsedMinute, "elapsed minute", "elapsed minutes"},
    {Unit::ElapsedHour, "elapsed hour", "elapsed hours"},
    {Unit::ElapsedDay, "elapsed day", "elapsed days"},
    {Unit::ElapsedWeek, "elapsed week", "elapsed weeks"},
};

/// `count` letters "u" ask for the short, the long or the universal label.
std::string unitLabel(Unit unit, double number, std::size_t count, bool capitals) {
  std::string label(shownSuffix(unit));
  if (count == 2) {
    for (const LongName& name : longNames) {
      if (name.unit == unit) label = std::string(std::fabs(number) == 1 ? name.one : name.many);
    }
  } else if (count >= 3 && unit != Unit::None) {
    label = foldCase(fileNameOf(unit));
  }
  return capitals ? upperCase(label) : label;
}

/// Quantities that are shown in two units.
struct TwoPartUnit {
  Unit unit, major, minor;
};
constexpr TwoPartUnit twoPartUnits[] = {
    {Unit::FeetAndInches, Unit::Feet, Unit::Inches},
    {Unit::PicasAndPoints, Unit::Picas, Unit::Points},
    {Unit::CicerosAndDidots, Unit::Ciceros, Unit::Didots},
};

const TwoPartUnit* twoPartOf(Unit unit) {
  for (const TwoPartUnit& known : twoPartUnits) {
    if (known.unit == unit) return &known;
  }
  return nullptr;
}

/// "2 ft. 11.33 in.": whole major units and the rest in minor ones, a zero part left out unless the format has a 0.
std::string twoPartText(double internal, const TwoPartUnit& parts, const NumberPlaces& places, std::string_view blanks,
                        std::size_t labelCount, bool capitals) {
  const double size = roundedTo15(std::fabs(internal) / internalPer(parts.major));
  double whole = std::floor(size);
  double rest = (size - whole) * internalPer(parts.major) / internalPer(parts.minor);
  NumberPlaces majorPlaces = places;
  majorPlaces.decimals = majorPlaces.leastDecimals = 0;
  std::string minorText = numberText(rest, places);
  const double ratio = internalPer(parts.major) / internalPer(parts.minor);
  if (numberOf(minorText) >= ratio - 1e-9) {
    whole += 1;
    rest = 0;
    minorText = numberText(0, places);
  }
  const bool keepZeros = places.leastWhole > 0;
  const std::string majorText = numberText(whole, majorPlaces);
  std::string result = internal < 0 ? "-" : "";
  const bool ink = parts.major == Unit::Ciceros || parts.major == Unit::Picas;
  if (ink) return result + majorText + std::string(shownSuffix(parts.major)) + minorText;
  const bool showMajor = whole > 0 || keepZeros, showMinor = rest > 0 || keepZeros || !showMajor;
  if (showMajor) result.append(majorText).append(blanks) += unitLabel(parts.major, whole, labelCount, capitals);
  if (showMajor && showMinor) result += ' ';
  if (showMinor) result.append(minorText).append(blanks) += unitLabel(parts.minor, rest, labelCount, capitals);
  return result;
}

/// Walks the format once and appends what each part of it shows.
class NumberFormatter {
 public:
  NumberFormatter(const Maybe<Value>& quantity, std::string_view text, std::string_view format)
      : scanner_(format), text_(text), percent_(hasPercent(format)) {
    if (quantity) {
      unit_ = quantity->kind() == ValueKind::Number ? quantity->unit() : Unit::None;
      internal_ = quantity->internal();
      number_ = roundedTo15(fromInternal(internal_, unit_));
      if (percent_) number_ = internal_ * 100;
    }
  }

  std::string result() {
    while (!scanner_.atEnd()) {
      if (!scanner_.takeLiteral(result_)) takePlace();
    }
    return std::move(result_);
  }

 private:
  static bool hasPercent(std::string_view format) {
    FormatScanner scanner(format);
    std::string literal;
    while (!scanner.atEnd()) {
      if (scanner.takeLiteral(literal)) continue;
      if (scanner.current() == '%') return true;
      scanner.skip(1);
    }
    return false;
  }

  void takePlace() {
    if (const NumberPlaces places = readPlaces(scanner_.rest()); places.length > 0) {
      scanner_.skip(places.length);
      if (!takeTwoParts(places)) result_ += numberText(number_, places);
      return;
    }
    const char c = scanner_.current();
    if (c == 'u' || c == 'U') {
      const std::size_t count = scanner_.runLength();
      const std::string label =
          percent_ ? std::string() : unitLabel(unit_, number_, std::min<std::size_t>(count, 3), c == 'U');
      // A label without a text is left out with the blanks before it.
      while (label.empty() && !result_.empty() && result_.back() == ' ') result_.pop_back();
      result_ += label;
      scanner_.skip(count);
    } else if (c == '@') {
      const char mode = scanner_.next();
      result_ += mode == '+' ? upperCase(text_) : mode == '-' ? lowerCase(text_) : std::string(text_);
      scanner_.skip(mode == '+' || mode == '-' ? 2 : 1);
    } else {
      result_ += c;
      scanner_.skip(1);
    }
  }

  /// A quantity in feet and inches with a label behind its places.
  bool takeTwoParts(const NumberPlaces& places) {
    const TwoPartUnit* parts = twoPartOf(unit_);
    if (!parts) return false;
    const std::string_view rest = scanner_.rest();
    std::size_t blanks = 0;
    while (blanks < rest.size() && rest[blanks] == ' ') ++blanks;
    std::size_t end = blanks;
    while (end < rest.size() && (rest[end] | 0x20) == 'u') ++end;
    if (end == blanks) return false;
    result_ += twoPartText(internal_, *parts, places, rest.substr(0, blanks), std::min<std::size_t>(end - blanks, 3),
                           rest[blanks] == 'U');
    scanner_.skip(end);
    return true;
  }

  FormatScanner scanner_;
  std::string_view text_;
  bool percent_;
  Unit unit_ = Unit::None;
  double internal_ = 0, number_ = 0;
  std::string result_;
};

template <class Test>
bool anyPlace(std::string_view format, Test test) {
  FormatScanner scanner(format);
  std::string literal;
  while (!scanner.atEnd()) {
    if (scanner.takeLiteral(literal)) continue;
    if (test(scanner.current())) return true;
    scanner.skip(1);
  }
  return false;
}

}  // namespace

std::string formatNumber(const Maybe<Value>& quantity, std::string_view text, std::string_view format) {
  return NumberFormatter(quantity, text, format).result();
}

bool hasDigitPlaces(std::string_view format) { return anyPlace(format, isPlace); }
bool hasTextPlaces(std::string_view format) {
  return anyPlace(format, [](char c) { return c == '@'; });
}

}  // namespace quorvel::host
