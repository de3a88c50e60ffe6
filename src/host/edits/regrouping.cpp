#include "host/edits/regrouping.h"

#include <cmath>
#include <numbers>
#include <unordered_set>

#include "base/text.h"
#include "host/cells/cell_table.h"
#include "host/connector_edits/route_drawing.h"
#include "host/connectors/connector_ends.h"
#include "host/sheet/inheritance.h"
#include "host/sheet/references.h"

namespace quorvel::host {
namespace {

constexpr double epsilon = 1e-9;

struct Keys {
  CellKey pinX = objectCell("PinX"), pinY = objectCell("PinY"), width = objectCell("Width"),
          height = objectCell("Height"), locPinX = objectCell("LocPinX"), locPinY = objectCell("LocPinY"),
          angle = objectCell("Angle"), flipX = objectCell("FlipX"), flipY = objectCell("FlipY");
};
const Keys& keys() {
  static const Keys known;
  return known;
}

bool isAlike(const Matrix& one, const Matrix& other) {
  const double most = epsilon * (1 + std::fabs(one.e) + std::fabs(one.f));
  return std::fabs(one.a - other.a) < epsilon && std::fabs(one.b - other.b) < epsilon &&
         std::fabs(one.c - other.c) < epsilon && std::fabs(one.d - other.d) < epsilon &&
         std::fabs(one.e - other.e) < most && std::fabs(one.f - other.f) < most;
}

bool isAlike(const Polyline& one, const Polyline& other) {
  if (one.size() != other.size()) return false;
  for (std::size_t i = 0; i < one.size(); ++i) {
    if (std::fabs(one[i].x - other[i].x) > 1e-6 || std::fabs(one[i].y - other[i].y) > 1e-6) return false;
  }
  return true;
}

}  // namespace

double Regrouping::number(SheetId shape, const CellKey& key) const { return cellNumber(store_, shape, key); }

Regrouping::Regrouping(Engine& engine, const std::vector<SheetId>& shapes, const GroupTransform& transform)
    : engine_(engine), store_(engine.store()), transform_(transform) {
  for (const SheetId shape : shapes) {
    Member member;
    member.shape = shape;
    member.isOneD = bool(findCell(store_, shape, endCell(true, false)));
    member.onPage = toPageMatrix(store_, shape);
    if (mayBeRedrawn(store_, shape)) member.line = lineOnPage(store_, shape);
    member.pin = {number(shape, keys().pinX), number(shape, keys().pinY)};
    member.begin = {number(shape, endCell(true, false)), number(shape, endCell(true, true))};
    member.end = {number(shape, endCell(false, false)), number(shape, endCell(false, true))};
    member.angle = number(shape, keys().angle);
    member.flipX = number(shape, keys().flipX) != 0;
    member.flipY = number(shape, keys().flipY) != 0;
    members_.push_back(std::move(member));
  }
}

bool Regrouping::readsLeft(SheetId shape, const CellKey& key) const {
  const FoundCell found = findCell(store_, shape, key);
  if (!transform_.left || !found.formula || !found.formula->formula) return false;
  for (const Reference& reference : found.formula->formula->references()) {
    if (resolveReference(store_, found.formulaSheet, shape, reference) == transform_.left) return true;
  }
  return false;
}

bool Regrouping::isComputed(SheetId shape, const CellKey& key) const {
  const FormulaPtr formula = formulaOf(store_, shape, key);
  return formula && !formula->references().empty() && !readsLeft(shape, key);
}

bool Regrouping::scales(SheetId shape, std::string_view lock) const {
  return transform_.scaleWith && number(shape, objectCell(lock)) == 0;
}

void Regrouping::putFormula(SheetId shape, const CellKey& key, const std::string& formula) {
  Cell content;
  content.value = cellValue(store_, shape, key);
  content.formula = engine_.store().formulas().get(isGuarded(store_, shape, key) ? "GUARD(" + formula + ")" : formula);
  if (!content.formula) return;
  engine_.edit().setCell({shape, key}, std::move(content));
  seeds_.push_back({shape, key});
  written_.push_back({shape, key});
}

void Regrouping::putValue(SheetId shape, const CellKey& key, const Value& value) {
  Cell content;
  content.value = value;
  const FormulaPtr formula = formulaOf(store_, shape, key);
  if (formula && formula->isGuarded()) return putFormula(shape, key, formulaText(content));
  const bool isSame = cellValue(store_, shape, key) == value;
  if (isSame && (!formula || formula->constant())) return;
  engine_.edit().setCell({shape, key}, std::move(content));
  if (!isSame) changed_.push_back({shape, key});
  written_.push_back({shape, key});
}

void Regrouping::putAlong(SheetId shape, const CellKey& key, double inches, bool vertical, bool scaled) {
  if (std::fabs(inches) < 1e-12) inches = 0;
  const double span = scaled ? number(transform_.scaleWith, vertical ? keys().height : keys().width) : 0;
  if (span != 0) {
    const std::string group = "Sheet." + std::to_string(store_.sheet(transform_.scaleWith)->shapeId);
    return putFormula(shape, key, group + (vertical ? "!Height*" : "!Width*") + shortestNumber(inches / span));
  }
  const Value before = cellValue(store_, shape, key);
  const bool isLength = before.kind() == ValueKind::Number && before.unit() != Unit::None;
  putValue(shape, key, Value::number(inches, isLength ? before.unit() : Unit::Inches));
}

void Regrouping::keepLocalPin(SheetId shape) {
  for (const bool vertical : {false, true}) {
    const CellKey& key = vertical ? keys().locPinY : keys().locPinX;
    const double span = number(shape, vertical ? keys().height : keys().width);
    if (span == 0 || isComputed(shape, key) || !findCell(store_, shape, key)) continue;
    if (!readsLeft(shape, key) && (isGuarded(store_, shape, key) || !transform_.scaleWith)) continue;
    putFormula(shape, key, (vertical ? "Height*" : "Width*") + shortestNumber(number(shape, key) / span));
  }
}

void Regrouping::size(SheetId shape, bool vertical, bool crosswise) {
  static const CellKey resizeMode = objectCell("ResizeMode");
  constexpr int repositionOnly = 1;
  const CellKey& key = vertical ? keys().height : keys().width;
  if (isComputed(shape, key)) return;
  const bool isLost = readsLeft(shape, key);
  const bool isFree = !isGuarded(store_, shape, key) && number(shape, resizeMode) != repositionOnly;
  const bool scaled = isFree && scales(shape, vertical ? "LockHeight" : "LockWidth");
  if (scaled || isLost) putAlong(shape, key, number(shape, key), vertical != crosswise, scaled);
}

void Regrouping::turnMember(const Member& member) {
  double turned = transform_.turn + (transform_.flipX == transform_.flipY ? member.angle : -member.angle);
  turned = std::remainder(turned, 2 * std::numbers::pi);
  const auto put = [&](const CellKey& key, const Value& value, bool changes) {
    if (changes || readsLeft(member.shape, key)) putValue(member.shape, key, value);
  };
  const bool flips = transform_.flipX || transform_.flipY;
  put(keys().angle, Value::number(turned, Unit::Degrees), transform_.turn != 0 || (flips && turned != member.angle));
  put(keys().flipX, Value::boolean(member.flipX != transform_.flipX), transform_.flipX);
  put(keys().flipY, Value::boolean(member.flipY != transform_.flipY), transform_.flipY);
}

void Regrouping::placeBox(const Member& member) {
  const SheetId shape = member.shape;
  turnMember(member);
  keepLocalPin(shape);
  const Point pin = transform_.map(member.pin);
  putAlong(shape, keys().pinX, pin.x, false, scales(shape, "LockMoveX"));
  putAlong(shape, keys().pinY, pin.y, true, scales(shape, "LockMoveY"));
  const double angle = number(shape, keys().angle);
  const bool crosswise = std::fabs(std::sin(angle)) > std::fabs(std::cos(angle));
  size(shape, false, crosswise);
  size(shape, true, crosswise);
}

void Regrouping::placeEnds(const Member& member) {
  const SheetId shape = member.shape;
  for (const bool begin : {true, false}) {
    const Point at = transform_.map(begin ? member.begin : member.end);
    for (const bool vertical : {false, true}) {
      const CellKey key = endCell(begin, vertical);
      const FormulaPtr formula = formulaOf(store_, shape, key);
      const double inches = vertical ? at.y : at.x;
      if (formula && isWalkingFormula(formula->text())) {
        engine_.edit().setValue({shape, key}, Value::number(inches, Unit::Inches));
        changed_.push_back({shape, key});
      } else if (formula && formula->readsTransforms()) {
        seeds_.push_back({shape, key});
      } else {
        putAlong(shape, key, inches, vertical, scales(shape, vertical ? "LockMoveY" : "LockMoveX"));
      }
    }
  }
  // Whatever else follows from the ends; what doesn't is kept as of other shapes.
  const Point pin = transform_.map(member.pin);
  for (const bool vertical : {false, true}) {
    const CellKey& key = vertical ? keys().pinY : keys().pinX;
    if (!isComputed(shape, key)) putAlong(shape, key, vertical ? pin.y : pin.x, vertical, bool(transform_.scaleWith));
    const CellKey& span = vertical ? keys().height : keys().width;
    if (readsLeft(shape, span)) putAlong(shape, span, number(shape, span), vertical, false);
  }
  if (!member.line.empty()) return;
  if (!isComputed(shape, keys().angle)) {
    turnMember(member);
  } else if (transform_.flipX != transform_.flipY) {
    // The angle follows the ends; only what is across the line changes sides.
    putValue(shape, keys().flipY, Value::boolean(!member.flipY));
  }
}

void Regrouping::follow() {
  const std::vector<CellAddress> followed = engine_.recalculate(seeds_, changed_);
  followed_.insert(followed_.end(), changed_.begin(), changed_.end());
  followed_.insert(followed_.end(), followed.begin(), followed.end());
  seeds_.clear();
  changed_.clear();
}

/// What was moved by formulas that were left unchanged is moved back.
void Regrouping::straighten(const Member& member) {
  const SheetId shape = member.shape;
  if (!member.line.empty()) {
    if (isAlike(lineOnPage(store_, shape), member.line)) return;
    if (isStraightLined(store_, shape)) {
      drawLine(engine_, shape, member.line, followed_);
    } else {
      stretchLine(engine_, shape, followed_);
    }
    return;
  }
  if (member.isOneD || isAlike(toPageMatrix(store_, shape), member.onPage)) return;
  const Matrix wanted = toPageMatrix(store_, store_.sheet(shape)->parent).inverse() * member.onPage;
  const Point pin = wanted({number(shape, keys().locPinX), number(shape, keys().locPinY)});
  putAlong(shape, keys().pinX, pin.x, false, scales(shape, "LockMoveX"));
  putAlong(shape, keys().pinY, pin.y, true, scales(shape, "LockMoveY"));
}

void Regrouping::settle() {
  for (const Member& member : members_) {
    if (member.isOneD) {
      placeEnds(member);
    } else {
      placeBox(member);
    }
  }
  for (const Member& member : members_) engine_.graph().appendReadersOfPlace(member.shape, seeds_);
  follow();
  for (const Member& member : members_) straighten(member);
  follow();
}

void Regrouping::tell() {
  const auto raiseOnce = [&](const std::vector<CellAddress>& cells, auto event) {
    std::unordered_set<CellAddress> raised;
    for (const CellAddress& cell : cells) {
      if (raised.insert(cell).second) engine_.raise(event, cell);
    }
  };
  const Engine::NestedWrite nested(engine_);
  raiseOnce(written_, &ApplicationEvents::FormulaChanged);
  raiseOnce(followed_, &ApplicationEvents::CellChanged);
}

}  // namespace quorvel::host
