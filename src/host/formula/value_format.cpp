#include "host/formula/value_format.h"

#include <algorithm>

#include "base/text.h"
#include "host/formula/calendar.h"
#include "host/formula/format_scanner.h"
#include "host/formula/number_format.h"
#include "host/formula/number_text.h"

namespace quorvel::host {
namespace {

struct FieldFormat {
  int number;
  std::string_view format;
};

constexpr FieldFormat fieldFormats[] = {
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

/// The number in "esc(7)" or "{<201>}"; negative for other formats.
int formatNumberCode(std::string_view format, std::string_view open, std::string_view close) {
  if (format.size() <= open.size() + close.size() || !startsWithIgnoringCase(format, open) || !format.ends_with(close))
    return -1;
  format = format.substr(open.size(), format.size() - open.size() - close.size());
  int number = 0;
  for (const char c : format) {
    if (c < '0' || c > '9' || number > 100'000) return -1;
    number = number * 10 + (c - '0');
  }
  return number;
}

/// A value without any format; code 0 leaves the unit of a number out.
std::string generalText(const Value& value, int code) {
  if (code == 0 && value.kind() == ValueKind::Number)
    return roundedNumber(fromInternal(value.internal(), value.unit()));
  return value.asText();
}

/// An empty format hides quantities and shows other texts.
std::string withoutFormat(const Value& value) {
  if (value.kind() == ValueKind::Number) return {};
  if (value.isText() && value.asQuantity()) return {};
  return value.asText();
}

std::string formatText(const Value& text, std::string_view format, int language) {
  const Maybe<Value> quantity = text.asQuantity();
  const bool digits = hasDigitPlaces(format), texts = hasTextPlaces(format);
  if (quantity && quantity->kind() == ValueKind::Number && hasElapsedPlaces(format))
    return formatElapsed(quantity->internal(), format);
  if (!digits && !texts && hasDatePlaces(format)) {
    if (const Maybe<double> date = parseDate(text.textView(), language)) return formatDate(*date, format, language);
  }
  // Digit places have nothing to show of a text that is no number; it is shown rather than lost.
  if (digits && !texts && !quantity) return text.asText();
  return formatNumber(quantity, text.textView(), format);
}

}  // namespace

std::string formatValue(const Value& value, std::string_view format, int language) {
  if (value.isError()) return value.asText();
  if (trimmed(format).empty()) return withoutFormat(value);
  const int number = std::max(formatNumberCode(format, "esc(", ")"), formatNumberCode(format, "{<", ">}"));
  if (number >= 0) {
    const std::string_view known = fieldFormat(number);
    return known.empty() ? generalText(value, number) : formatValue(value, known, language);
  }
  if (equalIgnoringCase(trimmed(format), "general")) return generalText(value, 1);
  const bool braced = format.starts_with("{{") && format.ends_with("}}") && format.size() >= 4;
  if (braced) format = format.substr(2, format.size() - 4);
  switch (value.kind()) {
    case ValueKind::Text:
      return formatText(value, format, language);
    case ValueKind::Date:
      if (!hasDigitPlaces(format) && !hasTextPlaces(format)) return formatDate(value.internal(), format, language);
      break;
    case ValueKind::Number:
      if (hasElapsedPlaces(format)) return formatElapsed(value.internal(), format);
      if (braced) return formatDate(value.internal(), format, language);
      break;
    default:
      break;
  }
  return formatNumber(value, value.asText(), format);
}

std::string_view fieldFormat(int number) {
  for (const FieldFormat& known : fieldFormats) {
    if (known.number == number) return known.format;
  }
  return {};
}

}  // namespace quorvel::host
