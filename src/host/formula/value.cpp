#include "host/formula/value.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "base/text.h"
#include "host/formula/calendar.h"
#include "host/formula/number_text.h"

namespace quorvel::host {
namespace {

struct ErrorRow {
  ErrorCode code;
  std::string_view text;
};

/// The first text of a code is the one that is shown.
constexpr ErrorRow errorRows[] = {
    {ErrorCode::None, ""},
    {ErrorCode::Value, "#VALUE!"},
    {ErrorCode::DivisionByZero, "#DIV/0!"},
    {ErrorCode::Number, "#NUM!"},
    {ErrorCode::Reference, "#REF!"},
    {ErrorCode::Name, "#NAME?"},
    {ErrorCode::NotAvailable, "#N/A"},
    {ErrorCode::Circle, "#CIRCLE!"},
    {ErrorCode::NotAvailable, "#N/A!"},
    {ErrorCode::Number, "#DIM!"},
};

std::string withSuffix(double internal, Unit unit) {
  std::string text = roundedNumber(fromInternal(internal, unit));
  const std::string_view suffix = shownSuffix(unit);
  if (!suffix.empty()) text.append(unit == Unit::Percent ? "" : " ").append(suffix);
  return text;
}

bool isBlank(char c) { return c == ' ' || c == '\t'; }

/// Reads quantities such as "-3", "5 1/2 in", "2 ft 3 in".
class QuantityReader {
 public:
  explicit QuantityReader(std::string_view text) : text_(trimmed(text)) {}

  Maybe<Value> read() {
    double sign = 1;
    if (!text_.empty() && (text_[0] == '-' || text_[0] == '+')) {
      sign = text_[0] == '-' ? -1 : 1;
      ++at_;
      skipBlanks();
    }
    double number;
    if (!readNumber(number)) return {};
    Unit unit = readSuffix();
    double internal = toInternalOfSuffix(number, unit);
    while (!failed_ && at_ < text_.size()) {
      // A second part counts in a smaller unit of the same kind: "2 ft 3 in".
      if (!readNumber(number)) return {};
      const Unit smaller = readSuffix();
      if (failed_ || smaller == Unit::None || dimensionOf(smaller) != dimensionOf(unit) ||
          internalPer(smaller) >= internalPer(unit))
        return {};
      internal += toInternalOfSuffix(number, smaller);
      unit = compoundUnit(unit, smaller);
    }
    if (failed_ || !isRepresentable(internal)) return {};
    return unit == Unit::Date ? Value::date(sign * internal) : Value::number(sign * internal, unit);
  }

 private:
  void skipBlanks() {
    while (at_ < text_.size() && isBlank(text_[at_])) ++at_;
  }

  bool readPlain(double& number) {
    const std::size_t length = numberLength(text_.substr(at_));
    if (length == 0) return false;
    number = numberOf(text_.substr(at_, length));
    at_ += length;
    return true;
  }

  bool readNumber(double& number) {
    if (!readPlain(number)) return false;
    const std::size_t after = at_;
    skipBlanks();
    double above, below;
    if (at_ > after && readPlain(above) && at_ < text_.size() && text_[at_] == '/' && (++at_, readPlain(below)) &&
        below != 0) {
      number += above / below;
    } else {
      at_ = after;
    }
    skipBlanks();
    return true;
  }

  Unit readSuffix() {
    const std::size_t from = at_;
    while (at_ < text_.size() && !isBlank(text_[at_]) && !(text_[at_] >= '0' && text_[at_] <= '9')) ++at_;
    const std::string_view suffix = text_.substr(from, at_ - from);
    skipBlanks();
    if (suffix.empty()) {
      failed_ = at_ < text_.size();
      return Unit::None;
    }
    const Maybe<Unit> unit = unitOfSuffix(suffix);
    failed_ = !unit;
    return unit.or_(Unit::None);
  }

  std::string_view text_;
  std::size_t at_ = 0;
  bool failed_ = false;
};

}  // namespace

std::size_t numberLength(std::string_view text) {
  std::size_t at = 0, digits = 0;
  const auto isDigit = [&](std::size_t i) { return i < text.size() && text[i] >= '0' && text[i] <= '9'; };
  while (isDigit(at)) ++at, ++digits;
  if (at < text.size() && text[at] == '.' && (digits || isDigit(at + 1))) {
    ++at;
    while (isDigit(at)) ++at, ++digits;
  }
  if (!digits) return 0;
  // "1e3" has an exponent, "5em" has not.
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    std::size_t exponent = at + 1;
    if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-')) ++exponent;
    if (isDigit(exponent)) {
      while (isDigit(exponent)) ++exponent;
      at = exponent;
    }
  }
  return at;
}

double numberOf(std::string_view text) {
  double number = 0;
  if (!text.empty() && text.back() == '.') text.remove_suffix(1);
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  if (read.ec == std::errc::result_out_of_range) {
    const auto exponent = text.find_first_of("eE");
    const bool isTiny =
        exponent != std::string_view::npos ? text[exponent + 1] == '-' : text[0] == '0' || text[0] == '.';
    return isTiny ? 0 : HUGE_VAL;
  }
  return number;
}

double roundedTo15(double number) {
  if (!std::isfinite(number) || number == 0) return number;
  char buffer[40];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::scientific, 14).ptr;
  double result = number;
  std::from_chars(buffer, end, result);
  return result;
}

std::string roundedNumber(double number) { return shortestNumber(roundedTo15(number)); }

double toInternalOfSuffix(double number, Unit unit) {
  switch (unit) {
    case Unit::Drawing:
    case Unit::Page:
    case Unit::Typographic:
    case Unit::Angle:
    case Unit::Duration:
      return number;
    default:
      return toInternal(number, unit);
  }
}

Unit compoundUnit(Unit larger, Unit smaller) {
  if (larger == Unit::Feet && smaller == Unit::Inches) return Unit::FeetAndInches;
  if (larger == Unit::Ciceros && smaller == Unit::Didots) return Unit::CicerosAndDidots;
  if (larger == Unit::Picas && smaller == Unit::Points) return Unit::PicasAndPoints;
  return larger;
}

Value Value::number(double internal, Unit unit) {
  Value value;
  value.number_ = internal;
  value.unit_ = unit;
  return value;
}

Value Value::text(std::string_view text) {
  Value value;
  value.kind_ = ValueKind::Text;
  value.text_ = SharedText(text);
  value.unit_ = Unit::String;
  return value;
}

Value Value::boolean(bool truth) {
  Value value;
  value.kind_ = ValueKind::Boolean;
  value.number_ = truth ? 1 : 0;
  value.unit_ = Unit::Boolean;
  return value;
}

Value Value::date(double days) {
  Value value;
  value.kind_ = ValueKind::Date;
  value.number_ = days;
  value.unit_ = Unit::Date;
  return value;
}

Value Value::point(double x, double y) {
  Value value;
  value.kind_ = ValueKind::Point;
  value.number_ = x;
  value.second_ = y;
  value.unit_ = Unit::Point;
  return value;
}

Value Value::colour(std::uint32_t rgb) {
  Value value;
  value.kind_ = ValueKind::Colour;
  value.number_ = rgb & 0xFFFFFF;
  value.unit_ = Unit::Colour;
  return value;
}

Value Value::error(ErrorCode code) {
  Value value;
  value.kind_ = ValueKind::Error;
  value.number_ = static_cast<int>(code);
  return value;
}

Maybe<double> Value::asNumber() const {
  if (kind_ == ValueKind::Error) return {};
  if (kind_ != ValueKind::Text) return number_;
  if (const Maybe<Value> quantity = parseQuantity(textView())) return quantity->number_;
  return {};
}

Maybe<Value> Value::asQuantity() const {
  if (kind_ == ValueKind::Error) return {};
  if (kind_ != ValueKind::Text) return *this;
  return parseQuantity(textView());
}

Maybe<double> Value::asNumberIn(int unitsCode) const {
  const Maybe<Value> quantity = asQuantity();
  if (!quantity) return {};
  if (unitsCode <= 0 || unitsCode > 255) return quantity->number_;
  const Unit wanted = static_cast<Unit>(unitsCode);
  if (wanted == Unit::Percent) return fromInternal(quantity->number_, wanted);
  const Dimension dimension = dimensionOf(wanted);
  if (dimension == Dimension::None || dimension == Dimension::Other || dimension != dimensionOf(quantity->unit_))
    return quantity->number_;
  return fromInternal(quantity->number_, wanted);
}

bool Value::asBoolean() const {
  if (kind_ == ValueKind::Text) {
    if (equalIgnoringCase(textView(), "TRUE")) return true;
    return asNumber().or_(0) != 0;
  }
  return kind_ != ValueKind::Error && number_ != 0;
}

std::string Value::asText(int unitsCode) const {
  switch (kind_) {
    case ValueKind::Error:
      return std::string(errorText(errorCode()));
    case ValueKind::Text: {
      if (unitsCode == 0) return text_.str();
      const Maybe<Value> quantity = asQuantity();
      return quantity ? quantity->asText(unitsCode) : text_.str();
    }
    case ValueKind::Boolean:
      return number_ != 0 ? "TRUE" : "FALSE";
    case ValueKind::Date:
      return dateText(number_);
    case ValueKind::Point:
      return "PNT(" + withSuffix(number_, Unit::Inches) + "," + withSuffix(second_, Unit::Inches) + ")";
    case ValueKind::Colour: {
      const auto rgb = static_cast<std::uint32_t>(number_);
      return "RGB(" + std::to_string(rgb >> 16) + "," + std::to_string(rgb >> 8 & 0xFF) + "," +
             std::to_string(rgb & 0xFF) + ")";
    }
    case ValueKind::Number:
      break;
  }
  if (unitsCode > 0 && unitsCode <= 255) {
    const Unit wanted = static_cast<Unit>(unitsCode);
    const Dimension dimension = dimensionOf(wanted);
    if (wanted == Unit::None) return roundedNumber(fromInternal(number_, unit_));
    if (wanted == Unit::Percent || dimension == dimensionOf(unit_)) return withSuffix(number_, wanted);
    // A bare number is taken to be in the wanted unit.
    if (unit_ == Unit::None && dimension != Dimension::None && dimension != Dimension::Other)
      return withSuffix(toInternal(number_, wanted), wanted);
  }
  return withSuffix(number_, unit_);
}

Maybe<Value> parseQuantity(std::string_view text) { return QuantityReader(text).read(); }

std::string_view errorText(ErrorCode code) {
  for (const ErrorRow& row : errorRows) {
    if (row.code == code) return row.text;
  }
  return {};
}

ErrorCode errorOfText(std::string_view text) {
  for (const ErrorRow& row : errorRows) {
    if (row.code != ErrorCode::None && equalIgnoringCase(row.text, text)) return row.code;
  }
  return ErrorCode::None;
}

}  // namespace quorvel::host
