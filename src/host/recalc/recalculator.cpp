#include "host/recalc/recalculator.h"

#include <algorithm>
#include <unordered_map>

#include "host/cells/cell_table.h"
#include "host/cells/type_size.h"
#include "host/connectors/connector_ends.h"
#include "host/formula/formula.h"
#include "host/recalc/relations.h"
#include "host/recalc/sheet_context.h"
#include "host/sheet/inheritance.h"
#include "host/sheet/units_of_page.h"

namespace quorvel::host {
namespace {

/// Circles are looked for by evaluating their members one inside the other; a hostile file must not exhaust the stack.
constexpr int deepestCircle = 500;

/// Distances of paragraphs below 0 are shares of the letters' size.
bool isShareOfSize(const CellKey& key, const Value& value) {
  return key.section == SectionNumber::Paragraph && value.internal() < 0;
}

bool isOfType(Unit unit) {
  switch (unit) {
    case Unit::PicasAndPoints:
    case Unit::Points:
    case Unit::Picas:
    case Unit::CicerosAndDidots:
    case Unit::Didots:
    case Unit::Ciceros:
      return true;
    default:
      return false;
  }
}

}  // namespace

bool isFontWithoutName(const Store& store, const CellAddress& cell, const Value& value) {
  static const Column fonts[] = {columnOf(SectionNumber::Character, "Font").or_(0),
                                 columnOf(SectionNumber::Character, "AsianFont").or_(0),
                                 columnOf(SectionNumber::Character, "ComplexScriptFont").or_(0)};
  if (cell.key.section != SectionNumber::Character || value.kind() != ValueKind::Number) return false;
  if (std::find(std::begin(fonts), std::end(fonts), cell.key.column) == std::end(fonts)) return false;
  return cellValue(store, cell.sheet, cell.key).isText();
}

Value fitToCell(const Store& store, const CellAddress& cell, const Value& value) {
  const CellDefinition* definition = definitionOf(cell.key);
  if (!definition) return value;
  if (value.kind() == ValueKind::Point) {
    // A glued end has the same formula in both of its cells; each takes its own coordinate of the point.
    const bool vertical = definition->name.ends_with('Y');
    return Value::number(vertical ? value.y() : value.internal(), Unit::Inches);
  }
  if (value.kind() != ValueKind::Number || value.unit() != Unit::None) return value;
  if (definition->units == CellUnits::Length) {
    if (isShareOfSize(cell.key, value)) return value;
    const Unit unit = takesPoints(cell.key) ? Unit::Points : Unit::Inches;
    return Value::number(toInternal(value.internal(), unit), unit);
  }
  if (definition->units == CellUnits::Angle)
    return Value::number(toInternal(value.internal(), Unit::Degrees), Unit::Degrees);
  if (cell.key.section == SectionNumber::Property && cell.key.column == 0) {
    static const Column type = columnOf(SectionNumber::Property, "Type").or_(5);
    constexpr int durationType = 6;
    if (cellNumber(store, cell.sheet, {cell.key.section, cell.key.row, type}) == durationType)
      return Value::number(value.internal(), Unit::ElapsedDay);
  }
  return value;
}

Value fitWritten(const Store& store, const CellAddress& cell, const Value& value) {
  const CellDefinition* definition = definitionOf(cell.key);
  if (!definition || value.kind() != ValueKind::Number || value.unit() != Unit::None || isShareOfSize(cell.key, value))
    return fitToCell(store, cell, value);
  const FoundCell found = findCell(store, cell.sheet, cell.key);
  const Unit before = found ? found.value->value.unit() : Unit::None;
  Unit unit = Unit::None;
  if (definition->units == CellUnits::Length) {
    const bool named = dimensionOf(before) == Dimension::Length && before != Unit::Drawing && before != Unit::Page &&
                       before != Unit::Typographic;
    // A width of lines that was given in inches does not make the next number one of inches.
    const bool usable = takesPoints(cell.key) ? isOfType(before) : named;
    const Unit ofPage = takesPoints(cell.key) ? Unit::Points : explicitUnitOf(store, cell.sheet, Unit::Drawing);
    unit = usable ? before : ofPage;
  } else if (definition->units == CellUnits::Angle) {
    unit = dimensionOf(before) == Dimension::Angle && before != Unit::Angle ? before : Unit::Degrees;
  } else {
    return fitToCell(store, cell, value);
  }
  return Value::number(toInternal(value.internal(), unit), unit);
}

/// One run: the part of the graph that the seeds reach, in an order in which every cell comes after what it reads.
struct Recalculator::Run {
  enum class State : std::uint8_t { New, OnStack, Ordered };
  struct Node {
    CellAddress cell;
    std::vector<std::uint32_t> dependents;
    std::uint32_t index = 0, low = 0,
                  circle = 0;  ///< circle: number of the set of cells that read each other, 0 for none
    State state = State::New;
    bool dirty = false, done = false, evaluating = false, changed = false;
  };

  Run(Recalculator& recalculator, const SetValue& setValueIn) : owner(recalculator), setValue(setValueIn) {}

  std::uint32_t nodeOf(const CellAddress& cell) {
    const auto [place, made] = numbers.try_emplace(cell, static_cast<std::uint32_t>(nodes.size()));
    if (made) nodes.emplace_back().cell = cell;
    return place->second;
  }

  void expand(std::uint32_t number) {
    scratch.clear();
    owner.graph_.dependentsOf(nodes[number].cell, scratch);
    std::vector<std::uint32_t> dependents;
    dependents.reserve(scratch.size());
    for (const CellAddress& cell : scratch) dependents.push_back(nodeOf(cell));
    nodes[number].dependents = std::move(dependents);
  }

  /// Finds sets of cells that read each other, and appends cells to `order` so that readers come first.
  void orderFrom(std::uint32_t start) {
    if (nodes[start].state != State::New) return;
    struct Frame {
      std::uint32_t number;
      std::size_t next;
    };
    std::vector<Frame> frames;
    const auto enter = [&](std::uint32_t number) {
      expand(number);
      Node& node = nodes[number];
      node.index = node.low = ++counter;
      node.state = State::OnStack;
      stack.push_back(number);
      frames.push_back({number, 0});
    };
    enter(start);
    while (!frames.empty()) {
      const std::uint32_t number = frames.back().number;
      if (frames.back().next < nodes[number].dependents.size()) {
        const std::uint32_t next = nodes[number].dependents[frames.back().next++];
        if (nodes[next].state == State::New) {
          enter(next);
        } else if (nodes[next].state == State::OnStack) {
          nodes[number].low = std::min(nodes[number].low, nodes[next].index);
        }
        continue;
      }
      frames.pop_back();
      Node& node = nodes[number];
      if (!frames.empty()) nodes[frames.back().number].low = std::min(nodes[frames.back().number].low, node.low);
      if (node.low != node.index) continue;
      const bool alone = stack.back() == number;
      const bool readsItself =
          std::find(node.dependents.begin(), node.dependents.end(), number) != node.dependents.end();
      if (!alone || readsItself) ++circles;
      for (std::uint32_t member = 0;;) {
        member = stack.back();
        stack.pop_back();
        nodes[member].state = State::Ordered;
        if (!alone || readsItself) nodes[member].circle = circles;
        order.push_back(member);
        if (member == number) break;
      }
    }
  }

  /// The value is that of the master's cell, which changed in this run: no other value is there, but it is a new one.
  bool showsChangedMaster(const CellAddress& cell) const {
    if (owner.store_.sheet(cell.sheet)->findLocal(cell.key)) return false;
    const SheetId master = findCell(owner.store_, cell.sheet, cell.key).formulaSheet;
    const auto known = numbers.find({master, cell.key});
    return known != numbers.end() && nodes[known->second].changed;
  }

  void setIfChanged(std::uint32_t number, const Value& value) {
    Node& node = nodes[number];
    if (!(cellValue(owner.store_, node.cell.sheet, node.cell.key) == value)) {
      setValue(node.cell, value);
    } else if (!showsChangedMaster(node.cell)) {
      return;
    }
    node.changed = true;
    result.push_back(node.cell);
  }

  void markDependents(std::uint32_t number) {
    for (const std::uint32_t dependent : nodes[number].dependents) {
      Node& node = nodes[dependent];
      node.dirty = true;
      if (node.circle != 0 && node.circle == nodes[number].circle && !node.done) passed.push_back(dependent);
    }
  }

  void evaluateNode(std::uint32_t number, int depth);

  Recalculator& owner;
  const SetValue& setValue;
  std::vector<Node> nodes;
  std::unordered_map<CellAddress, std::uint32_t> numbers;
  std::vector<std::uint32_t> stack, order;
  std::vector<std::uint32_t> passed;  ///< of a circle, whose order is undefined: they may have been evaluated already
  std::vector<CellAddress> scratch, result;
  std::uint32_t counter = 0, circles = 0;
};

namespace {

/// Inside a circle, what is read is brought up to date first; only a cell that is read while it is being evaluated is
/// truly in a circle. A branch of IF that is not taken is never read.
class CircleContext : public SheetContext {
 public:
  using Visit = std::function<bool(const CellAddress&)>;
  CircleContext(const Store& store, const TextMetrics& metrics, SheetId definition, const CellAddress& cell,
                Visit visit)
      : SheetContext(store, metrics, definition, cell), visit_(std::move(visit)) {}

  Value valueOf(const Reference& reference) override {
    if (reference.watched) {
      const SheetId target = resolve(&reference);
      if (target && !visit_({target, keyOn(target, reference)})) {
        closed_ = true;
        return Value::error(ErrorCode::Circle);
      }
    }
    return SheetContext::valueOf(reference);
  }
  bool closed() const { return closed_; }

 private:
  Visit visit_;
  bool closed_ = false;
};

}  // namespace

void Recalculator::Run::evaluateNode(std::uint32_t number, int depth) {
  nodes[number].done = true;
  const CellAddress cell = nodes[number].cell;
  const FoundCell found = findCell(owner.store_, cell.sheet, cell.key);
  if (!found.formula || !found.formula->formula) {
    // An inherited constant whose master changed, or the text that TEXTWIDTH reads: nothing to evaluate, but readers go
    // on.
    nodes[number].changed = true;
    markDependents(number);
    return;
  }
  ++owner.evaluations_;
  Maybe<Value> value;
  if (const std::uint32_t circle = nodes[number].circle) {
    nodes[number].evaluating = true;
    CircleContext context(owner.store_, *owner.metrics_, found.formulaSheet, cell, [&](const CellAddress& read) {
      const auto known = numbers.find(read);
      if (known == numbers.end() || nodes[known->second].circle != circle) return true;
      const std::uint32_t other = known->second;
      if (nodes[other].evaluating || depth >= deepestCircle) return false;
      if (!nodes[other].done) evaluateNode(other, depth + 1);
      return true;
    });
    value = evaluate(*found.formula->formula, context);
    if (context.readUnknown()) value = {};
    if (context.closed()) value = Value::error(ErrorCode::Circle);
    nodes[number].evaluating = false;
  } else {
    SheetContext context(owner.store_, *owner.metrics_, found.formulaSheet, cell);
    value = evaluate(*found.formula->formula, context);
    if (context.readUnknown()) value = {};
  }
  if (value && !isFontWithoutName(owner.store_, cell, *value))
    setIfChanged(number, fitToCell(owner.store_, cell, *value));
  // A trigger says that something changed by being evaluated, not by its value; so do the relations of a shape.
  const bool isTrigger = cell.key == triggerCell(true) || cell.key == triggerCell(false) || namesRelated(cell.key);
  if (nodes[number].changed || isTrigger) markDependents(number);
}

std::vector<CellAddress> Recalculator::run(std::span<const CellAddress> seeds, std::span<const CellAddress> changed,
                                           const SetValue& setValue) {
  Run run(*this, setValue);
  for (const CellAddress& cell : seeds) run.nodes[run.nodeOf(cell)].dirty = true;
  for (const CellAddress& cell : changed) run.nodeOf(cell);
  // Starting from the last keeps the order of the seeds in the reversed walk below.
  for (std::size_t i = changed.size(); i-- > 0;) run.orderFrom(run.nodeOf(changed[i]));
  for (std::size_t i = seeds.size(); i-- > 0;) run.orderFrom(run.nodeOf(seeds[i]));
  for (const CellAddress& cell : changed) {
    const std::uint32_t number = run.nodeOf(cell);
    run.nodes[number].done = true;
    run.markDependents(number);
  }
  for (std::size_t i = run.order.size(); i-- > 0;) {
    const std::uint32_t number = run.order[i];
    if (run.nodes[number].dirty && !run.nodes[number].done) run.evaluateNode(number, 0);
    while (!run.passed.empty()) {
      const std::uint32_t mate = run.passed.back();
      run.passed.pop_back();
      if (!run.nodes[mate].done) run.evaluateNode(mate, 0);
    }
  }
  return std::move(run.result);
}

Maybe<Value> Recalculator::evaluateNow(const CellAddress& cell) {
  const FoundCell found = findCell(store_, cell.sheet, cell.key);
  if (!found.formula) return {};
  if (!found.formula->formula) return found.formula->value;
  ++evaluations_;
  SheetContext context(store_, *metrics_, found.formulaSheet, cell);
  const Maybe<Value> value = evaluate(*found.formula->formula, context);
  if (!value || context.readUnknown() || isFontWithoutName(store_, cell, *value)) return {};
  return fitToCell(store_, cell, *value);
}

}  // namespace quorvel::host
