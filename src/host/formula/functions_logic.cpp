// Functions that choose and test: IF and its like, error tests, bounds.
#include <algorithm>
#include <cmath>

#include "host/formula/functions.h"
#include "host/formula/operators.h"

namespace quorvel::host {
namespace {

Value choose(Call& call) {
  const int index = call.whole(0);
  if (index < 1 || index >= call.count()) return call.fail(ErrorCode::Value);
  return call.value(index);
}

/// All arguments are evaluated: an error in any of them is the result.
Value all(Call& call) {
  bool result = true;
  for (int i = 0; i < call.count(); ++i) result = call.truth(i) && result;
  return Value::boolean(result);
}

Value any(Call& call) {
  bool result = false;
  for (int i = 0; i < call.count(); ++i) result = call.truth(i) || result;
  return Value::boolean(result);
}

Value ifError(Call& call) {
  const Value value = call.anyValue(0);
  return value.isError() ? call.value(1) : value;
}

/// BOUND(value, kind, ignore, low, high, …): kind 0 keeps inside the nearest range, 1 outside, 2 lets go.
Value bound(Call& call) {
  const Value value = call.quantity(0);
  const int kind = call.whole(1);
  if (kind == 2) return value;
  const double number = value.internal();
  Value nearest = value;
  bool decided = false;
  for (int i = 2; i + 2 < call.count(); i += 3) {
    if (call.truth(i)) continue;
    Value low = call.quantity(i + 1), high = call.quantity(i + 2);
    if (low.internal() > high.internal()) std::swap(low, high);
    if (kind == 0) {
      if (number >= low.internal() && number <= high.internal()) return value;
      const Value& edge = number < low.internal() ? low : high;
      if (!decided || std::fabs(edge.internal() - number) < std::fabs(nearest.internal() - number)) nearest = edge;
      decided = true;
    } else if (number > low.internal() && number < high.internal()) {
      return number - low.internal() < high.internal() - number ? low : high;
    }
  }
  return nearest;
}

constexpr FunctionRow rows[] = {
    {"IF", [](Call& c) { return c.truth(0) ? c.value(1) : c.value(2); }},
    {"IFERROR", ifError},
    {"CHOOSE", choose},
    {"AND", all},
    {"OR", any},
    {"NOT", [](Call& c) { return Value::boolean(!c.truth(0)); }},
    {"USERUI", [](Call& c) { return c.truth(0) ? c.value(2) : c.value(1); }},
    {"BOUND", bound},
    {"NA", [](Call&) { return Value::error(ErrorCode::NotAvailable); }},
    {"ISERROR", [](Call& c) { return Value::boolean(c.anyValue(0).isError()); }},
    {"ISERR",
     [](Call& c) {
       const ErrorCode code = c.anyValue(0).errorCode();
       return Value::boolean(code != ErrorCode::None && code != ErrorCode::NotAvailable);
     }},
    {"ISERRNA", [](Call& c) { return Value::boolean(c.anyValue(0).errorCode() == ErrorCode::NotAvailable); }},
    {"ISERRVALUE", [](Call& c) { return Value::boolean(c.anyValue(0).errorCode() == ErrorCode::Value); }},
};

}  // namespace

std::span<const FunctionRow> logicFunctions() { return rows; }

}  // namespace quorvel::host
