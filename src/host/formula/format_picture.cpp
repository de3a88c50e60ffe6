#include "host/formula/format_picture.h"

#include <algorithm>

#include "base/text.h"
#include "host/formula/calendar.h"
#include "host/formula/number_picture.h"
#include "host/formula/number_text.h"
#include "host/formula/picture_scanner.h"

namespace quorvel::host {
namespace {

struct FieldPicture {
  int number;
  std::string_view picture;
};

constexpr FieldPicture fieldPictures[] = {
    {2, "0"},
    {3, "0 u"},
    {4, "0.0"},
    {5, "0.0 u"},
    {6, "0.00"},
    {7, "0.00 u"},
    {8, "0.000"},
    {9, "0.000 u"},
    {20, "M/d/yyyy"},
    {21, "dddd, MMMM d, yyyy"},
    {22, "M/d/yy"},
    {23, "MM/dd/yy"},
    {24, "MMM d, yyyy"},
    {25, "MMMM d, yyyy"},
    {26, "d/M/yy"},
    {27, "dd/MM/yy"},
    {28, "d MMM, yyyy"},
    {29, "d MMMM, yyyy"},
    {30, "T"},
    {31, "h:mm"},
    {32, "hh:mm"},
    {33, "H:mm"},
    {34, "HH:mm"},
    {35, "h:mm tt"},
    {36, "hh:mm tt"},
    {37, "@"},
    {38, "@-"},
    {39, "@+"},
    {200, "M/d/yyyy"},
    {201, "dddd, MMMM dd, yyyy"},
    {202, "MMMM d, yyyy"},
    {203, "M/d/yy"},
    {204, "yyyy-MM-dd"},
    {205, "d-MMM-yy"},
    {206, "M.d.yyyy"},
    {207, "MMM. d, yy"},
    {208, "d MMMM yyyy"},
    {209, "MMMM yy"},
    {210, "MMM -yy"},
    {211, "M/d/yyyy h:mm am/pm"},
    {212, "M/d/yyyy h:mm:ss am/pm"},
    {213, "h:mm am/pm"},
    {214, "h:mm:ss am/pm"},
    {215, "h:mm"},
    {216, "h:mm:ss"},
};

/// The number in "esc(7)" or "{<201>}"; negative for other pictures.
int pictureNumber(std::string_view picture, std::string_view open, std::string_view close) {
  if (picture.size() <= open.size() + close.size() || !startsWithIgnoringCase(picture, open) ||
      !picture.ends_with(close))
    return -1;
  picture = picture.substr(open.size(), picture.size() - open.size() - close.size());
  int number = 0;
  for (const char c : picture) {
    if (c < '0' || c > '9' || number > 100'000) return -1;
    number = number * 10 + (c - '0');
  }
  return number;
}

/// A value without any picture; code 0 leaves the unit of a number out.
std::string generalText(const Value& value, int code) {
  if (code == 0 && value.kind() == ValueKind::Number)
    return roundedNumber(fromInternal(value.internal(), value.unit()));
  return value.asText();
}

/// An empty picture hides quantities and shows other texts.
std::string withoutPicture(const Value& value) {
  if (value.kind() == ValueKind::Number) return {};
  if (value.isText() && value.asQuantity()) return {};
  return value.asText();
}

std::string formatText(const Value& text, std::string_view picture, int language) {
  const Maybe<Value> quantity = text.asQuantity();
  const bool digits = hasDigitPlaces(picture), texts = hasTextPlaces(picture);
  if (quantity && quantity->kind() == ValueKind::Number && hasElapsedPlaces(picture))
    return formatElapsed(quantity->internal(), picture);
  if (!digits && !texts && hasDatePlaces(picture)) {
    if (const Maybe<double> date = parseDate(text.textView(), language)) return formatDate(*date, picture, language);
  }
  // Digit places have nothing to show of a text that is no number; it is shown rather than lost.
  if (digits && !texts && !quantity) return text.asText();
  return formatNumber(quantity, text.textView(), picture);
}

}  // namespace

std::string formatValue(const Value& value, std::string_view picture, int language) {
  if (value.isError()) return value.asText();
  if (trimmed(picture).empty()) return withoutPicture(value);
  const int number = std::max(pictureNumber(picture, "esc(", ")"), pictureNumber(picture, "{<", ">}"));
  if (number >= 0) {
    const std::string_view known = fieldPicture(number);
    return known.empty() ? generalText(value, number) : formatValue(value, known, language);
  }
  if (equalIgnoringCase(trimmed(picture), "general")) return generalText(value, 1);
  const bool braced = picture.starts_with("{{") && picture.ends_with("}}") && picture.size() >= 4;
  if (braced) picture = picture.substr(2, picture.size() - 4);
  switch (value.kind()) {
    case ValueKind::Text:
      return formatText(value, picture, language);
    case ValueKind::Date:
      if (!hasDigitPlaces(picture) && !hasTextPlaces(picture)) return formatDate(value.internal(), picture, language);
      break;
    case ValueKind::Number:
      if (hasElapsedPlaces(picture)) return formatElapsed(value.internal(), picture);
      if (braced) return formatDate(value.internal(), picture, language);
      break;
    default:
      break;
  }
  return formatNumber(value, value.asText(), picture);
}

std::string_view fieldPicture(int number) {
  for (const FieldPicture& known : fieldPictures) {
    if (known.number == number) return known.picture;
  }
  return {};
}

}  // namespace quorvel::host
