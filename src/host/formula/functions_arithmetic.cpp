// Functions that compute numbers: rounding, roots, powers, trigonometry, bits.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "host/formula/functions.h"
#include "host/formula/operators.h"

namespace quorvel::host {
namespace {

using Operation = double (*)(double);

/// Works on the number as it is written, so that 5.4 mm rounds to 5 mm and not to an inch.
template <class Compute>
Value asWritten(Call& call, Compute compute) {
  const Value value = call.quantity(0);
  return call.fromWritten(compute(call.written(value)), value);
}

/// Rounds a `number` that differs from a whole number by noise alone to that number first.
double settled(double number) {
  const double nearest = std::round(number);
  return std::fabs(number - nearest) < 1e-9 * std::max(1.0, std::fabs(number)) ? nearest : number;
}

double towardZero(double number) { return std::trunc(settled(number)); }
double awayFromZero(double number) { return number < 0 ? std::floor(settled(number)) : std::ceil(settled(number)); }

/// The second argument in the unit in which the first one is written; a bare number counts in that unit.
double inUnitOf(Call& call, const Value& number, const Value& other) {
  if (dimensionOf(other.unit()) != dimensionOf(number.unit())) return call.written(other);
  return call.written(Value::number(other.internal(), number.unit()));
}

Value toMultiple(Call& call, Operation round) {
  if (!call.given(1)) return asWritten(call, round);
  const Value number = call.quantity(0), multiple = call.quantity(1);
  if (number.internal() == 0 || multiple.internal() == 0) return withUnitOf(number, 0);
  if ((number.internal() < 0) != (multiple.internal() < 0)) return call.fail(ErrorCode::Number);
  const double step = inUnitOf(call, number, multiple);
  return call.fromWritten(round(call.written(number) / step) * step, number);
}

Value toDigits(Call& call, Operation round) {
  const int digits = std::clamp(call.whole(1), -300, 300);
  return asWritten(call, [&](double number) {
    const double scale = std::pow(10.0, std::abs(digits));
    return digits >= 0 ? round(number * scale) / scale : round(number / scale) * scale;
  });
}

double halfAway(double number) { return std::round(number * (1 + 1e-15)); }

Value largest(Call& call, bool (*better)(double, double)) {
  Value best;
  bool found = false;
  for (int i = 0; i < call.count(); ++i) {
    if (!call.given(i)) continue;
    const Value value = call.quantity(i);
    if (!found || better(value.internal(), best.internal())) best = value;
    found = true;
  }
  return best;
}

Value sum(Call& call) {
  Value total;
  for (int i = 0; i < call.count(); ++i) {
    if (call.given(i)) total = i == 0 ? call.quantity(i) : add(total, call.quantity(i));
  }
  return total;
}

/// The remainder has the sign of the divisor.
Value modulus(Call& call) {
  const Value number = call.quantity(0), other = call.quantity(1);
  const double divisor = inUnitOf(call, number, other), dividend = call.written(number);
  if (divisor == 0) return call.fail(ErrorCode::DivisionByZero);
  const double quotient = settled(dividend / divisor);
  double rest = quotient == std::floor(quotient) ? 0 : std::fmod(dividend, divisor);
  if (rest != 0 && (rest < 0) != (divisor < 0)) rest += divisor;
  return call.fromWritten(rest, number);
}

Value raised(Call& call) {
  const double base = call.number(0), exponent = call.number(1);
  const bool undefined = (base == 0 && exponent <= 0) || (base < 0 && exponent != std::floor(exponent));
  return Value::number(undefined ? 0 : std::pow(base, exponent));
}

Value squareRoot(Call& call) {
  const Value value = call.quantity(0);
  if (value.internal() < 0) return call.fail(ErrorCode::Number);
  const bool area = dimensionOf(value.unit()) == Dimension::Area;
  return Value::number(std::sqrt(value.internal()), area ? Unit::Inches : Unit::None);
}

Value sign(Call& call) {
  const double number = call.number(0), fuzz = call.number(1, 1e-9);
  return Value::number(std::fabs(number) <= fuzz ? 0 : number < 0 ? -1 : 1);
}

Value ofAngle(Call& call, Operation operation) { return Value::number(operation(call.number(0))); }
Value toAngle(Call& call, Operation operation) { return Value::number(operation(call.number(0)), Unit::Degrees); }

Value logarithm(Call& call, Operation operation) {
  const double number = call.number(0);
  return number > 0 ? Value::number(operation(number)) : call.fail(ErrorCode::Number);
}

Value inDegrees(Call& call) { return Value::number(call.number(0), Unit::Degrees); }

/// A plain number is one of degrees here, as the name of the function has it.
Value inRadians(Call& call) {
  const Value angle = call.quantity(0);
  const bool isAngle = dimensionOf(angle.unit()) == Dimension::Angle;
  return Value::number(isAngle ? angle.internal() : toInternal(angle.internal(), Unit::Degrees), Unit::Radians);
}

std::uint32_t bits(Call& call, int argument) {
  const double number = call.number(argument);
  if (!(std::fabs(number) < 9e15)) return 0;
  return static_cast<std::uint32_t>(static_cast<std::int64_t>(number));
}

Value randomNumber(Call&) {
  static std::mt19937 generator(std::random_device{}());
  return Value::number(std::uniform_real_distribution<double>(0, 1)(generator));
}

constexpr FunctionRow rows[] = {
    {"ABS",
     [](Call& c) {
       const Value v = c.quantity(0);
       return withUnitOf(v, std::fabs(v.internal()));
     }},
    {"INT", [](Call& c) { return asWritten(c, [](double n) { return std::floor(settled(n)); }); }},
    {"INTUP", [](Call& c) { return asWritten(c, [](double n) { return std::ceil(settled(n)); }); }},
    {"CEILING", [](Call& c) { return toMultiple(c, awayFromZero); }},
    {"FLOOR", [](Call& c) { return toMultiple(c, towardZero); }},
    {"ROUND", [](Call& c) { return toDigits(c, halfAway); }},
    {"TRUNC", [](Call& c) { return toDigits(c, towardZero); }},
    {"MAX", [](Call& c) { return largest(c, [](double a, double b) { return a > b; }); }},
    {"MIN", [](Call& c) { return largest(c, [](double a, double b) { return a < b; }); }},
    {"SUM", sum},
    {"MODULUS", modulus},
    {"MOD", modulus},
    {"POW", raised},
    {"SQRT", squareRoot},
    {"SIGN", sign},
    {"MAGNITUDE",
     [](Call& c) {
       const double up = c.number(0) * c.number(1);
       const Value run = c.quantity(3);
       return withUnitOf(run, std::hypot(up, c.number(2) * run.internal()));
     }},
    {"PI", [](Call&) { return Value::number(std::numbers::pi); }},
    {"RAND", randomNumber, AsksHost | Changes},
    {"SIN", [](Call& c) { return ofAngle(c, std::sin); }},
    {"COS", [](Call& c) { return ofAngle(c, std::cos); }},
    {"TAN", [](Call& c) { return ofAngle(c, std::tan); }},
    {"SINH", [](Call& c) { return ofAngle(c, std::sinh); }},
    {"COSH", [](Call& c) { return ofAngle(c, std::cosh); }},
    {"TANH", [](Call& c) { return ofAngle(c, std::tanh); }},
    {"ASIN", [](Call& c) { return toAngle(c, std::asin); }},
    {"ACOS", [](Call& c) { return toAngle(c, std::acos); }},
    {"ATAN", [](Call& c) { return toAngle(c, std::atan); }},
    {"ATAN2",
     [](Call& c) {
       const double y = c.number(0);
       return Value::number(std::atan2(y, c.number(1)), Unit::Degrees);
     }},
    {"DEG", inDegrees},
    {"RAD", inRadians},
    {"LN", [](Call& c) { return logarithm(c, std::log); }},
    {"LOG10", [](Call& c) { return logarithm(c, std::log10); }},
    {"BITAND",
     [](Call& c) {
       const auto a = bits(c, 0);
       return Value::number(a & bits(c, 1));
     }},
    {"BITOR",
     [](Call& c) {
       const auto a = bits(c, 0);
       return Value::number(a | bits(c, 1));
     }},
    {"BITXOR",
     [](Call& c) {
       const auto a = bits(c, 0);
       return Value::number(a ^ bits(c, 1));
     }},
    {"BITNOT", [](Call& c) { return Value::number(~bits(c, 0) & 0xFFFF); }},
};

}  // namespace

std::span<const FunctionRow> arithmeticFunctions() { return rows; }

}  // namespace quorvel::host
