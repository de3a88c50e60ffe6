#include "host/connector_edits/route_drawing.h"

#include <cmath>

#include "base/text.h"
#include "host/cells/cell_table.h"
#include "host/connectors/connector_ends.h"
#include "host/geometry/row_tags.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

constexpr SectionNumber geometry = SectionNumber::Geometry;
constexpr std::uint8_t moveTo = numberOf(RowTag::MoveTo), lineTo = numberOf(RowTag::LineTo);
constexpr double epsilon = 1e-6;

CellKey vertexCell(RowKey row, std::string_view column) {
  static const Column x = columnOf(geometry, "X").or_(0), y = columnOf(geometry, "Y").or_(1),
                      a = columnOf(geometry, "A").or_(2), b = columnOf(geometry, "B").or_(3);
  return {geometry, row, column == "X" ? x : column == "Y" ? y : column == "A" ? a : b};
}

std::vector<RowView> vertexRows(const Store& store, SheetId connector) {
  std::vector<RowView> rows = rowsOf(store, connector, geometry);
  std::erase_if(rows, [](const RowView& row) { return row.key == RowKey::index(0); });
  return rows;
}

class Drawing {
 public:
  Drawing(Engine& engine, SheetId connector, std::vector<CellAddress>& changed)
      : engine_(engine), store_(engine.store()), connector_(connector), changed_(changed) {}

  void setEnds(const Polyline& line);
  void setSize();
  void setVertices(const Polyline& local);
  void setText(const Point& before, const Point& now);
  Polyline toLocal(const Polyline& line) const;
  Polyline vertices() const;
  void follow() {
    const std::vector<CellAddress> followed = engine_.recalculate(seeds_, written_);
    changed_.insert(changed_.end(), written_.begin(), written_.end());
    changed_.insert(changed_.end(), followed.begin(), followed.end());
    written_.clear();
    seeds_.clear();
  }
  /// A plain number instead of the formula of the cell.
  void setPlain(const CellKey& key, double inches);

 private:
  void setWalking(const CellKey& key, double inches);
  void setSpan(std::string_view cell, bool vertical);
  void putVertex(std::size_t number, std::uint8_t type, const Point& at);
  void dropVertex(RowKey row);
  std::size_t localPlace(RowKey row) const;

  Engine& engine_;
  const Store& store_;
  SheetId connector_;
  std::vector<CellAddress>& changed_;
  std::vector<CellAddress> written_, seeds_;
};

Polyline Drawing::toLocal(const Polyline& line) const {
  const Matrix inverse = toPageMatrix(store_, connector_).inverse();
  Polyline local;
  for (const Point& spot : line) {
    const Point at = inverse(spot);
    // What is left of sums of fractions of inches would fill files with digits.
    const auto settled = [](double number) { return std::fabs(number) < 1e-12 ? 0 : number; };
    local.push_back({settled(at.x), settled(at.y)});
  }
  return local;
}

Polyline Drawing::vertices() const {
  Polyline line;
  for (const RowView& row : vertexRows(store_, connector_)) {
    line.push_back({cellNumber(store_, connector_, vertexCell(row.key, "X")),
                    cellNumber(store_, connector_, vertexCell(row.key, "Y"))});
  }
  return line;
}

void Drawing::setPlain(const CellKey& key, double inches) {
  const FoundCell found = findCell(store_, connector_, key);
  const bool computed = found.formula && found.formula->formula && !found.formula->formula->constant();
  const Value value = Value::number(inches, Unit::Inches);
  const double before = cellNumber(store_, connector_, key);
  if (found && !computed && before == inches) return;
  Cell content;
  content.value = value;
  engine_.edit().setCell({connector_, key}, std::move(content));
  if (before != inches) written_.push_back({connector_, key});
}

void Drawing::setWalking(const CellKey& key, double inches) {
  if (cellNumber(store_, connector_, key) == inches) return;
  engine_.edit().setValue({connector_, key}, Value::number(inches, Unit::Inches));
  written_.push_back({connector_, key});
}

void Drawing::setEnds(const Polyline& line) {
  const Matrix fromPage = toPageMatrix(store_, store_.sheet(connector_)->parent).inverse();
  for (const bool begin : {true, false}) {
    if (!endOf(store_, connector_, begin).walks) continue;
    const Point& onPage = begin ? line.front() : line.back();
    const Point at = fromPage(onPage);
    setWalking(endCell(begin, false), at.x);
    setWalking(endCell(begin, true), at.y);
  }
}

/// Connectors whose ends lie on one line are often given a fixed size across it; any other needs the span of its ends.
void Drawing::setSpan(std::string_view cell, bool vertical) {
  const double span = cellNumber(store_, connector_, endCell(false, vertical)) -
                      cellNumber(store_, connector_, endCell(true, vertical));
  const CellKey key = objectCell(cell);
  const FoundCell found = findCell(store_, connector_, key);
  const auto readsEnds = [&](const FoundCell& each) {
    if (!each.formula || !each.formula->formula) return false;
    for (const Reference& reference : each.formula->formula->references()) {
      bool begin = false;
      if (isEndCell(reference.cell, begin)) return true;
    }
    return false;
  };
  if (std::fabs(span) < epsilon || readsEnds(found)) return;
  const SheetId prototype = store_.sheet(connector_)->prototype;
  Cell content;
  content.value = cellValue(store_, connector_, key);
  if (prototype && readsEnds(findCell(store_, prototype, key))) {
    content.inheritsFormula = true;
  } else {
    content.formula = engine_.store().formulas().get(vertical ? "GUARD(EndY-BeginY)" : "GUARD(EndX-BeginX)");
  }
  engine_.edit().setCell({connector_, key}, std::move(content));
  seeds_.push_back({connector_, key});
}

void Drawing::setSize() {
  setSpan("Width", false);
  setSpan("Height", true);
}

std::size_t Drawing::localPlace(RowKey row) const {
  const Section* held = store_.sheet(connector_)->find(geometry);
  if (!held) return 0;
  const auto found =
      std::find_if(held->rows.begin(), held->rows.end(), [&](const Row& other) { return other.key == row; });
  return static_cast<std::size_t>(found - held->rows.begin());
}

void Drawing::putVertex(std::size_t number, std::uint8_t type, const Point& at) {
  const RowKey key = RowKey::index(static_cast<std::uint32_t>(number));
  const Row* local = store_.sheet(connector_)->find(geometry, key);
  bool fits = false;
  for (const RowView& row : vertexRows(store_, connector_)) fits |= row.key == key && row.type == type;
  if (fits && !(local && local->deleted)) {
    setPlain(vertexCell(key, "X"), at.x);
    setPlain(vertexCell(key, "Y"), at.y);
    return;
  }
  if (local) engine_.edit().removeRow(connector_, geometry, localPlace(key));
  Row row;
  row.key = key;
  row.type = type;
  for (const auto& [column, inches] : {std::pair("X", at.x), std::pair("Y", at.y)}) {
    Cell content;
    content.value = Value::number(inches, Unit::Inches);
    row.cells.emplace_back(vertexCell(key, column).column, std::move(content));
    written_.push_back({connector_, vertexCell(key, column)});
  }
  std::size_t place = 0;
  if (const Section* held = store_.sheet(connector_)->find(geometry)) {
    while (place < held->rows.size() && held->rows[place].key.index() < key.index()) ++place;
  }
  engine_.edit().insertRow(connector_, geometry, place, std::move(row));
}

void Drawing::dropVertex(RowKey row) {
  if (store_.sheet(connector_)->find(geometry, row)) engine_.edit().removeRow(connector_, geometry, localPlace(row));
  if (rowExists(store_, connector_, geometry, row, false)) {
    Row hidden;
    hidden.key = row;
    hidden.deleted = true;
    std::size_t place = 0;
    if (const Section* held = store_.sheet(connector_)->find(geometry)) {
      while (place < held->rows.size() && held->rows[place].key.index() < row.index()) ++place;
    }
    engine_.edit().insertRow(connector_, geometry, place, std::move(hidden));
  }
  for (const char* column : {"X", "Y"}) written_.push_back({connector_, vertexCell(row, column)});
}

void Drawing::setVertices(const Polyline& local) {
  std::vector<RowKey> surplus;
  for (const RowView& row : vertexRows(store_, connector_)) {
    if (row.key.index() > local.size()) surplus.push_back(row.key);
  }
  for (std::size_t i = surplus.size(); i-- > 0;) dropVertex(surplus[i]);
  for (std::size_t i = 0; i < local.size(); ++i) putVertex(i + 1, i == 0 ? moveTo : lineTo, local[i]);
}

/// Whether a formula puts the cell in the middle of the box, as in connectors whose text was not placed by hand.
bool isPlacedByBox(const Store& store, SheetId sheet, const CellKey& key) {
  static const CellKey width = objectCell("Width"), height = objectCell("Height");
  const FoundCell found = sheet ? findCell(store, sheet, key) : FoundCell{};
  if (!found.formula || !found.formula->formula || found.formula->formula->isGuarded()) return false;
  const std::vector<Reference>& references = found.formula->formula->references();
  double span = 0;
  for (const Reference& each : references) {
    if (each.scope != ReferenceScope::ThisSheet || !(each.cell == width || each.cell == height)) return false;
    span = cellNumber(store, sheet, each.cell);
  }
  return references.size() == 1 && std::fabs(cellNumber(store, sheet, key) - span / 2) < epsilon;
}

/// The cell to write so that the text's pin moves: the control that it follows, or the pin itself where the master
/// keeps it in the middle of the box, which is no place on a bent line. A null key for a text that is placed otherwise.
CellKey textHandle(const Store& store, SheetId connector, const CellKey& pin) {
  const FoundCell found = findCell(store, connector, pin);
  const FormulaPtr formula = found.formula ? found.formula->formula : nullptr;
  constexpr std::string_view redirects = "SETATREF(";
  if (formula && equalIgnoringCase(std::string_view(formula->text()).substr(0, redirects.size()), redirects)) {
    const auto& references = formula->references();
    const bool isControl = !references.empty() && references.front().scope == ReferenceScope::ThisSheet &&
                           references.front().cell.section == SectionNumber::Control &&
                           !isGuarded(store, connector, references.front().cell);
    return isControl ? references.front().cell : CellKey{};
  }
  const bool isOwnWish = found.formulaSheet == connector && formula && !formula->constant();
  return !isOwnWish && isPlacedByBox(store, store.sheet(connector)->prototype, pin) ? pin : CellKey{};
}

/// A text stays where it was beside the line's middle.
void Drawing::setText(const Point& before, const Point& now) {
  static const CellKey pins[] = {objectCell("TxtPinX"), objectCell("TxtPinY")};
  for (const bool vertical : {false, true}) {
    const CellKey handle = textHandle(store_, connector_, pins[vertical ? 1 : 0]);
    if (!handle) continue;
    // A formula has followed the size already, and the line has not.
    const bool inTheMiddle = isPlacedByBox(store_, connector_, handle);
    const double aside = inTheMiddle ? 0 : cellNumber(store_, connector_, handle) - (vertical ? before.y : before.x);
    // Values that programs write differ a little; that does not mean that a user moved the text.
    constexpr double wish = 1e-3;
    const double wanted = (vertical ? now.y : now.x) + (std::fabs(aside) > wish ? aside : 0);
    // A formula that gives just this value is kept.
    if (std::fabs(cellNumber(store_, connector_, handle) - wanted) > 1e-9) setPlain(handle, wanted);
  }
}

}  // namespace

bool isStraightLined(const Store& store, SheetId connector) {
  static const CellKey own = objectCell("ConLineRouteExt");
  constexpr int curved = 2;
  if (cellNumber(store, connector, own) == curved) return false;
  for (const RowView& row : vertexRows(store, connector)) {
    if (row.type != moveTo && row.type != lineTo) return false;
    for (const char* column : {"X", "Y"}) {
      if (isGuarded(store, connector, vertexCell(row.key, column))) return false;
    }
  }
  return true;
}

void drawLine(Engine& engine, SheetId connector, const Polyline& line, std::vector<CellAddress>& changed) {
  if (line.size() < 2 || vertexRows(engine.store(), connector).empty()) return;
  Drawing drawing(engine, connector, changed);
  const Point before = midpointOf(drawing.vertices());
  drawing.setEnds(line);
  drawing.setSize();
  drawing.follow();
  const Polyline local = drawing.toLocal(line);
  drawing.setVertices(local);
  drawing.setText(before, midpointOf(local));
  drawing.follow();
}

void moveEnds(Engine& engine, SheetId connector, const Polyline& line, std::vector<CellAddress>& changed) {
  Drawing drawing(engine, connector, changed);
  drawing.setEnds(line);
  drawing.follow();
}

void stretchLine(Engine& engine, SheetId connector, std::vector<CellAddress>& changed) {
  const Store& store = engine.store();
  const std::vector<RowView> rows = vertexRows(store, connector);
  if (rows.size() < 2) return;
  for (const RowView& row : rows) {
    // Vertices that formulas place follow by themselves, and relative ones with the size.
    if (row.type == numberOf(RowTag::RelMoveTo) || row.type == numberOf(RowTag::RelLineTo)) return;
    for (const char* column : {"X", "Y"}) {
      const FoundCell found = findCell(store, connector, vertexCell(row.key, column));
      if (found.formula && found.formula->formula && !found.formula->formula->constant()) return;
    }
  }
  Drawing drawing(engine, connector, changed);
  drawing.setSize();
  drawing.follow();
  const Polyline old = drawing.vertices();
  const Polyline ends = drawing.toLocal({endOf(store, connector, true).at, endOf(store, connector, false).at});
  const auto map = [](double at, double oldFirst, double oldLast, double first, double last) {
    const double span = oldLast - oldFirst;
    if (std::fabs(span) < epsilon) return at - oldFirst + first;
    return first + (at - oldFirst) * (last - first) / span;
  };
  const auto mapX = [&](double x) { return map(x, old.front().x, old.back().x, ends[0].x, ends[1].x); };
  const auto mapY = [&](double y) { return map(y, old.front().y, old.back().y, ends[0].y, ends[1].y); };
  Polyline now;
  for (const Point& spot : old) now.push_back({mapX(spot.x), mapY(spot.y)});
  now.front() = ends[0];
  now.back() = ends[1];
  for (std::size_t i = 0; i < rows.size(); ++i) {
    drawing.setPlain(vertexCell(rows[i].key, "X"), now[i].x);
    drawing.setPlain(vertexCell(rows[i].key, "Y"), now[i].y);
    if (rows[i].type != numberOf(RowTag::EllipticalArcTo)) continue;
    const CellKey a = vertexCell(rows[i].key, "A"), b = vertexCell(rows[i].key, "B");
    drawing.setPlain(a, mapX(cellNumber(store, connector, a)));
    drawing.setPlain(b, mapY(cellNumber(store, connector, b)));
  }
  drawing.setText(midpointOf(old), midpointOf(now));
  drawing.follow();
}

}  // namespace quorvel::host
