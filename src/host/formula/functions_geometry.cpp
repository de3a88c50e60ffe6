// Functions on points, angles and the coordinate systems of shapes.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/formula/functions.h"
#include "host/formula/number_text.h"
#include "host/formula/operators.h"

namespace quorvel::host {
namespace {

constexpr double turn = 2 * std::numbers::pi;

double normalized(double angle) {
  const double rest = std::fmod(angle, turn);
  return rest < 0 ? rest + turn : rest;
}

Value point(Call& call) {
  const double x = call.number(0);
  return Value::point(x, call.number(1));
}

/// The point of an argument; a plain number counts for both coordinates.
Value pointOf(Call& call, int argument) {
  const Value value = call.quantity(argument);
  return value.kind() == ValueKind::Point ? value : Value::point(value.internal(), value.internal());
}

Value coordinate(Call& call, bool y) {
  const Value value = call.quantity(0);
  if (value.kind() != ValueKind::Point) return value;
  return Value::number(y ? value.y() : value.internal(), Unit::Drawing);
}

Value orReferenceError(Call& call, const Maybe<Value>& value) {
  return value ? *value : call.fail(ErrorCode::Reference);
}

Value toLocal(Call& call) {
  const Value where = pointOf(call, 0);
  return orReferenceError(call, call.context().convertPoint(where, call.foreignReference(0), nullptr));
}

Value toParent(Call& call) {
  const Value where = pointOf(call, 0);
  return orReferenceError(call, call.context().toParent(where, call.foreignReference(0)));
}

Maybe<Value> converted(Call& call, const Value& where, bool parent) {
  const Reference *from = call.reference(1), *to = call.reference(2);
  const Maybe<Value> local = call.context().convertPoint(where, from, to);
  if (!local || !parent) return local;
  return call.context().toParent(*local, to);
}

Value convertPoint(Call& call, bool parent) {
  const Value where = pointOf(call, 0);
  return orReferenceError(call, converted(call, where, parent));
}

/// The direction of the angle, carried over as two points.
Value convertAngle(Call& call, bool parent) {
  const double angle = call.number(0);
  const Maybe<Value> origin = converted(call, Value::point(0, 0), parent);
  const Maybe<Value> tip = converted(call, Value::point(std::cos(angle), std::sin(angle)), parent);
  if (!origin || !tip) return call.fail(ErrorCode::Reference);
  const double turned = std::atan2(tip->y() - origin->y(), tip->internal() - origin->internal());
  return Value::number(normalized(turned), Unit::Angle);
}

/// That a trigger is evaluated means that the shape changed; its value says only whether that is another
/// one.
Value trigger(Call& call) { return Value::number(call.foreignReference(0) ? 2 : 1); }

Value walkedTo(Call& call) {
  const Maybe<Value> place = call.context().walkedTo();
  return place ? *place : call.unknown();
}

/// Half a turn when the angle is between the smaller and the larger limit.
Value gravity(Call& call) {
  const double angle = normalized(call.number(0));
  const auto [from, to] = std::minmax({normalized(call.number(1, turn / 4)), normalized(call.number(2, turn * 3 / 4))});
  const bool isBetween = angle > from && angle <= to;
  return Value::number(isBetween ? turn / 2 : 0, Unit::Degrees);
}

/// Where two lines, each a point and an angle, meet.
Value intersection(Call& call, bool y) {
  const double x1 = call.number(0), y1 = call.number(1), a1 = call.number(2);
  const double x2 = call.number(3), y2 = call.number(4), a2 = call.number(5);
  const double cross = std::sin(a2 - a1);
  if (std::fabs(cross) < 1e-12) return call.fail(ErrorCode::DivisionByZero);
  const double along = ((x2 - x1) * std::sin(a2) - (y2 - y1) * std::cos(a2)) / cross;
  return Value::number(y ? y1 + along * std::sin(a1) : x1 + along * std::cos(a1), Unit::Drawing);
}

/// The sector of a rectangle cut by its diagonals, seen from the middle: 0 there, else 1 right, 2 top, 3 left, 4
/// bottom.
Value sector(Call& call) {
  const double width = call.number(0), height = call.number(1), x = call.number(2), y = call.number(3);
  const bool diagonalUpright = call.truth(4);
  const double across = std::fabs(x * height), up = std::fabs(y * width);
  if (across == 0 && up == 0) return Value::number(0);
  const bool sideways = across > up || (across == up && !diagonalUpright);
  return Value::number(sideways ? (x > 0 ? 1 : 3) : (y > 0 ? 2 : 4));
}

/// An ellipse drawn at one size of its shape, by the angle of an axis and the ratio of that axis to the other, when the
/// shape has another size: (angle, ratio, width, height, width now, height now).
struct StretchedEllipse {
  double angle = 0, ratio = 1, across = 1, up = 1;
  bool unchanged = true;  ///< of no size, or of the same
};

StretchedEllipse stretchedEllipse(Call& call) {
  StretchedEllipse ellipse;
  ellipse.angle = call.number(0);
  ellipse.ratio = call.number(1);
  const double width = call.number(2), height = call.number(3), widthNow = call.number(4), heightNow = call.number(5);
  ellipse.across = width == 0 ? 0 : std::fabs(widthNow / width);
  ellipse.up = height == 0 ? 0 : std::fabs(heightNow / height);
  ellipse.unchanged = ellipse.across == 0 || ellipse.up == 0 ||
                      std::fabs(ellipse.across - ellipse.up) <= 1e-9 * std::max(ellipse.across, ellipse.up);
  return ellipse;
}

/// How far the stretched ellipse reaches in the direction, squared: its two axes are conjugate radii of the new one.
double reachSquared(const StretchedEllipse& ellipse, double direction) {
  const double x = std::cos(direction), y = std::sin(direction);
  const double axisX = ellipse.ratio * std::cos(ellipse.angle) * ellipse.across,
               axisY = ellipse.ratio * std::sin(ellipse.angle) * ellipse.up;
  const double otherX = -std::sin(ellipse.angle) * ellipse.across, otherY = std::cos(ellipse.angle) * ellipse.up;
  return std::pow(x * axisX + y * axisY, 2) + std::pow(x * otherX + y * otherY, 2);
}

/// The axis of the new ellipse that lies nearest to the old one, from -90 to 90 deg.; level when that was a circle.
Value stretchedAngle(Call& call) {
  const StretchedEllipse ellipse = stretchedEllipse(call);
  const auto upright = [](double angle) { return Value::number(std::remainder(angle, turn / 2), Unit::Angle); };
  if (std::fabs(ellipse.ratio - 1) < 1e-9) return Value::number(0, Unit::Angle);
  if (ellipse.unchanged) return upright(ellipse.angle);
  const double straight = reachSquared(ellipse, 0) - reachSquared(ellipse, turn / 4);
  const double diagonal = reachSquared(ellipse, turn / 8) - reachSquared(ellipse, turn * 3 / 8);
  const double longer = std::atan2(diagonal, straight) / 2;
  return upright(ellipse.angle + std::remainder(longer - ellipse.angle, turn / 4));
}

/// The last argument is the angle of the axis that is compared with the other.
Value stretchedRatio(Call& call) {
  const StretchedEllipse ellipse = stretchedEllipse(call);
  const double axis = call.number(6, ellipse.angle);
  if (ellipse.unchanged) return Value::number(ellipse.ratio);
  const double other = reachSquared(ellipse, axis + turn / 4);
  if (other == 0) return Value::number(ellipse.ratio);
  return Value::number(std::sqrt(reachSquared(ellipse, axis) / other));
}

/// Curve data of a vertex is kept as the call with its arguments worked out: first what describes the curve, then its
/// points, each a group of numbers without blanks inside, as drawings store it.
Value curveData(Call& call, std::string_view name, int heads, int groupSize) {
  std::string text = std::string(name) + "(";
  for (int i = 0; i < call.count(); ++i) {
    if (i > 0) text += i > heads && (i - heads) % groupSize != 0 ? "," : ", ";
    text += roundedNumber(call.number(i));
  }
  return Value::text(text + ")");
}

constexpr FunctionRow rows[] = {
    {"PNT", point},
    {"PNTX", [](Call& c) { return coordinate(c, false); }},
    {"PNTY", [](Call& c) { return coordinate(c, true); }},
    {"LOC", toLocal, AsksHost | ReadsTransforms},
    {"PAR", toParent, AsksHost | ReadsTransforms},
    {"LOCTOLOC", [](Call& c) { return convertPoint(c, false); }, AsksHost | ReadsTransforms},
    {"LOCTOPAR", [](Call& c) { return convertPoint(c, true); }, AsksHost | ReadsTransforms},
    {"ANGLETOLOC", [](Call& c) { return convertAngle(c, false); }, AsksHost | ReadsTransforms},
    {"ANGLETOPAR", [](Call& c) { return convertAngle(c, true); }, AsksHost | ReadsTransforms},
    {"_XFTRIGGER", trigger, AsksHost},
    {"_WALKGLUE", walkedTo, AsksHost},
    {"ANG360",
     [](Call& c) {
       const Value angle = c.quantity(0);
       const bool isAngle = dimensionOf(angle.unit()) == Dimension::Angle;
       return Value::number(normalized(angle.internal()), isAngle ? angle.unit() : Unit::Degrees);
     }},
    {"GRAVITY", gravity},
    {"INTERSECTX", [](Call& c) { return intersection(c, false); }},
    {"INTERSECTY", [](Call& c) { return intersection(c, true); }},
    {"RECTSECT", sector},
    {"_ELLIPSE_THETA", stretchedAngle},
    {"_ELLIPSE_ECC", stretchedRatio},
    {"POLYLINE", [](Call& c) { return curveData(c, "POLYLINE", 2, 2); }},
    {"NURBS", [](Call& c) { return curveData(c, "NURBS", 4, 4); }},
};

}  // namespace

std::span<const FunctionRow> geometryFunctions() { return rows; }

}  // namespace quorvel::host
