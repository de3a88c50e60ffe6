#include "host/formula/operators.h"

#include <algorithm>
#include <cmath>

namespace quorvel::host {
namespace {

bool isLength(const Value& value) { return dimensionOf(value.unit()) == Dimension::Length; }
bool isArea(const Value& value) { return dimensionOf(value.unit()) == Dimension::Area; }

/// Percent, truth values and the like count as plain numbers.
bool hasDimension(const Value& value) {
  if (value.kind() != ValueKind::Number) return false;
  const Dimension dimension = dimensionOf(value.unit());
  return dimension != Dimension::None && dimension != Dimension::Other;
}

bool isPlainNumber(const Value& value) { return value.kind() == ValueKind::Number && value.unit() == Unit::None; }

bool isImplicit(const Value& value) {
  return value.kind() == ValueKind::Number && (value.unit() == Unit::Drawing || value.unit() == Unit::Page);
}

/// An operand of arithmetic: text counts when it reads as a quantity, empty text as 0.
Value operand(const Value& value) {
  if (!value.isText()) return value;
  if (value.textView().empty()) return {};
  return value.asQuantity().or_(Value::error(ErrorCode::Value));
}

/// Applies `compute` to operands that are made quantities; the first error wins.
template <class Compute>
Value arithmetic(const Value& left, const Value& right, Compute compute) {
  if (left.kind() == ValueKind::Number && right.kind() == ValueKind::Number) return compute(left, right);
  const Value a = operand(left);
  if (a.isError()) return a;
  const Value b = operand(right);
  if (b.isError()) return b;
  return compute(a, b);
}

Value addTo(const Value& left, const Value& right, double sign) {
  return arithmetic(left, right, [sign](const Value& a, const Value& b) {
    const double sum = a.internal() + sign * b.internal();
    if (a.kind() == ValueKind::Point || b.kind() == ValueKind::Point) {
      // With a point, a number counts for both coordinates.
      const double ay = a.kind() == ValueKind::Point ? a.y() : a.internal();
      const double by = b.kind() == ValueKind::Point ? b.y() : b.internal();
      return Value::point(sum, ay + sign * by);
    }
    if (a.kind() == ValueKind::Date && b.kind() == ValueKind::Date)
      return sign < 0 ? Value::number(sum, Unit::ElapsedDay) : Value::date(sum);
    if (a.kind() == ValueKind::Date || (b.kind() == ValueKind::Date && sign > 0)) return Value::date(sum);
    // A number added to a colour is a mark for readers that count colours from 1; the colour stays.
    if (a.kind() == ValueKind::Colour && isPlainNumber(b)) return a;
    if (b.kind() == ValueKind::Colour && isPlainNumber(a)) return b;
    // A unit that is written down wins over one that follows the page: "Width+0 mm" is in millimetres.
    if (hasDimension(a) && !(isImplicit(a) && dimensionOf(a.unit()) == dimensionOf(b.unit())))
      return Value::number(sum, a.unit());
    if (hasDimension(b)) return Value::number(sum, b.unit());
    const bool percents = a.unit() == Unit::Percent && b.unit() == Unit::Percent;
    return Value::number(sum, percents ? Unit::Percent : Unit::None);
  });
}

Value subtract(const Value& left, const Value& right) { return addTo(left, right, -1); }

Value multiply(const Value& left, const Value& right) {
  return arithmetic(left, right, [](const Value& a, const Value& b) {
    const double product = a.internal() * b.internal();
    if (a.kind() == ValueKind::Point) return Value::point(product, a.y() * b.internal());
    if (b.kind() == ValueKind::Point) return Value::point(product, b.y() * a.internal());
    if (!hasDimension(b)) return Value::number(product, hasDimension(a) ? a.unit() : Unit::None);
    if (!hasDimension(a)) return Value::number(product, b.unit());
    if ((isLength(a) || isArea(a)) && (isLength(b) || isArea(b))) return Value::number(product, Unit::Multidimensional);
    // An angle times a radius is a length.
    if (isLength(a)) return Value::number(product, a.unit());
    if (isLength(b)) return Value::number(product, b.unit());
    return Value::number(product);
  });
}

Value divide(const Value& left, const Value& right) {
  return arithmetic(left, right, [](const Value& a, const Value& b) {
    if (b.internal() == 0) return Value::error(ErrorCode::DivisionByZero);
    const double quotient = a.internal() / b.internal();
    if (a.kind() == ValueKind::Point) return Value::point(quotient, a.y() / b.internal());
    if (!hasDimension(b)) return Value::number(quotient, hasDimension(a) ? a.unit() : Unit::None);
    if (isArea(a) && isLength(b)) return Value::number(quotient, b.unit());
    if (isLength(a) && dimensionOf(b.unit()) == Dimension::Angle) return Value::number(quotient, a.unit());
    return Value::number(quotient);
  });
}

Value power(const Value& left, const Value& right) {
  return arithmetic(left, right, [](const Value& a, const Value& b) {
    const double base = a.internal(), exponent = b.internal();
    if (base == 0 && exponent < 0) return Value::error(ErrorCode::DivisionByZero);
    const double result = std::pow(base, exponent);
    if (!std::isfinite(result)) return Value::error(ErrorCode::Number);
    if (exponent == 1) return withUnitOf(a, result);
    if (isLength(a) && exponent > 1) return Value::number(result, Unit::Multidimensional);
    if (isArea(a) && exponent == 0.5) return Value::number(result, Unit::Inches);
    return Value::number(result);
  });
}

Value concatenate(const Value& left, const Value& right) {
  if (left.isError()) return left;
  if (right.isError()) return right;
  std::string text = left.asText();
  text += right.asText();
  return text.size() > textLimit ? Value::error(ErrorCode::Value) : Value::text(text);
}

/// Text that is no number compares as 0; whole-text comparison has a function of its own.
template <class Compare>
Value compare(const Value& left, const Value& right, Compare holds) {
  if (left.isError()) return left;
  if (right.isError()) return right;
  return Value::boolean(holds(left.asNumber().or_(0), right.asNumber().or_(0)));
}

/// The signs forgive what conversions blur; the words compare exactly.
bool nearlyEqual(double a, double b) { return std::fabs(a - b) <= 1e-9 * std::max({1.0, std::fabs(a), std::fabs(b)}); }

Value less(const Value& l, const Value& r) {
  return compare(l, r, [](double a, double b) { return a < b && !nearlyEqual(a, b); });
}
Value greater(const Value& l, const Value& r) {
  return compare(l, r, [](double a, double b) { return a > b && !nearlyEqual(a, b); });
}
Value lessOrEqual(const Value& l, const Value& r) {
  return compare(l, r, [](double a, double b) { return a < b || nearlyEqual(a, b); });
}
Value greaterOrEqual(const Value& l, const Value& r) {
  return compare(l, r, [](double a, double b) { return a > b || nearlyEqual(a, b); });
}
Value equal(const Value& l, const Value& r) { return compare(l, r, nearlyEqual); }
Value notEqual(const Value& l, const Value& r) {
  return compare(l, r, [](double a, double b) { return !nearlyEqual(a, b); });
}

constexpr BinaryOperator binaries[] = {
    {"^", 6, power},
    {"*", 5, multiply},
    {"/", 5, divide},
    {"+", 4, add},
    {"-", 4, subtract},
    {"&", 3, concatenate},
    {">=", 2, greaterOrEqual},
    {"<=", 2, lessOrEqual},
    {"<>", 1, notEqual},
    {">", 2, greater},
    {"<", 2, less},
    {"=", 1, equal},
    {"GT", 2, [](const Value& l, const Value& r) { return compare(l, r, [](double a, double b) { return a > b; }); }},
    {"GE", 2, [](const Value& l, const Value& r) { return compare(l, r, [](double a, double b) { return a >= b; }); }},
    {"LT", 2, [](const Value& l, const Value& r) { return compare(l, r, [](double a, double b) { return a < b; }); }},
    {"LE", 2, [](const Value& l, const Value& r) { return compare(l, r, [](double a, double b) { return a <= b; }); }},
    {"EQ", 1, [](const Value& l, const Value& r) { return compare(l, r, [](double a, double b) { return a == b; }); }},
    {"NE", 1, [](const Value& l, const Value& r) { return compare(l, r, [](double a, double b) { return a != b; }); }},
};

Value plus(const Value& value) { return operand(value); }

Value minus(const Value& value) {
  const Value number = operand(value);
  if (number.isError()) return number;
  if (number.kind() == ValueKind::Point) return Value::point(-number.internal(), -number.y());
  return withUnitOf(number, -number.internal());
}

Value percent(const Value& value) {
  const Value number = operand(value);
  return number.isError() ? number : Value::number(number.internal() / 100, Unit::Percent);
}

constexpr UnaryOperator unaries[] = {{'-', minus}, {'+', plus}, {'%', percent}};

}  // namespace

std::span<const BinaryOperator> binaryOperators() { return binaries; }
std::span<const UnaryOperator> unaryOperators() { return unaries; }

Value add(const Value& left, const Value& right) { return addTo(left, right, 1); }

Value withUnitOf(const Value& value, double internal) {
  return Value::number(internal, value.kind() == ValueKind::Number ? value.unit() : Unit::None);
}

}  // namespace quorvel::host
