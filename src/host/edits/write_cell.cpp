#include "host/edits/write_cell.h"

#include "base/text.h"
#include "host/cells/cell_table.h"
#include "host/connector_edits/end_glue.h"
#include "host/formula/number_text.h"
#include "host/recalc/relations.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

bool isText(const Engine& engine, const CellAddress& cell) {
  const CellDefinition* definition = definitionOf(cell.key);
  if (definition && definition->units == CellUnits::Text) return true;
  return (cell.key.section == SectionNumber::User || cell.key.section == SectionNumber::Property) &&
         cellValue(engine.store(), cell.sheet, cell.key).isText();
}

bool isPlainNumber(std::string_view text) {
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
  return !text.empty() && numberLength(text) == text.size();
}

/// The new content of the cell, before evaluation; nothing for text that is no formula.
Maybe<Cell> contentFor(Engine& engine, const CellAddress& cell, std::string_view formula) {
  Cell content;
  if (formula.empty() || equalIgnoringCase(formula, "No Formula")) {
    content.noFormula = true;
    content.value = isText(engine, cell) ? Value::text("") : fitToCell(engine.store(), cell, Value());
    return content;
  }
  FormulaPtr parsed = engine.store().formulas().get(formula);
  if (!parsed) return {};
  if (parsed->constant()) {
    const bool isPlain = isPlainNumber(parsed->text());
    content.value = isPlain ? fitWritten(engine.store(), cell, *parsed->constant())
                            : fitToCell(engine.store(), cell, *parsed->constant());
    // The number without the unit would mean another one when the page's units change.
    const Dimension dimension = dimensionOf(content.value.unit());
    if (isPlain && (dimension == Dimension::Length || dimension == Dimension::Angle)) return content;
    // Most cells hold plain constants; those that read back to the letter need no formula object.
    if (formulaText(content) == parsed->text()) return content;
  } else {
    content.value = cellValue(engine.store(), cell.sheet, cell.key);
  }
  content.formula = std::move(parsed);
  return content;
}

Outcome commit(Engine& engine, const CellAddress& cell, Cell content) {
  const FoundCell before = findCell(engine.store(), cell.sheet, cell.key);
  const std::string oldFormula = formulaFor(engine.store(), cell.sheet, before);
  const Value oldValue = cellValue(engine.store(), cell.sheet, cell.key);
  const bool evaluates = content.formula && !content.formula->constant();
  const bool formulaChanged = formulaText(content) != oldFormula;
  if (!formulaChanged && !evaluates && content.value == oldValue && before) return Outcome::done();

  CommandScope scope(engine, engine.store().sheet(cell.sheet)->document, "Cell");
  const FormulaPtr formulaBefore = before.formula ? before.formula->formula : nullptr;
  engine.edit().setCell(cell, std::move(content));
  followGlue(engine, cell, formulaBefore);
  std::vector<CellAddress> followed;
  if (evaluates) {
    followed = engine.recalculate({cell}, {});
    std::erase(followed, cell);
  } else if (!(cellValue(engine.store(), cell.sheet, cell.key) == oldValue) ||
             (formulaChanged && namesRelated(cell.key))) {
    followed = engine.recalculate({}, {cell});
  }
  const bool valueChanged = !(cellValue(engine.store(), cell.sheet, cell.key) == oldValue);
  const Engine::NestedWrite nested(engine);
  if (formulaChanged) engine.raise(&ApplicationEvents::FormulaChanged, cell);
  if (valueChanged) engine.raise(&ApplicationEvents::CellChanged, cell);
  for (const CellAddress& other : followed) engine.raise(&ApplicationEvents::CellChanged, other);
  scope.commit();
  return Outcome::done();
}

Outcome check(Engine& engine, const CellAddress& cell, bool force) {
  if (!engine.store().sheet(cell.sheet)) return Outcome::refused("the object is deleted");
  if (engine.areWritesTooDeep()) return Outcome::refused("writes inside writes are nested too deeply");
  if (!cellExists(engine.store(), cell.sheet, cell.key, false)) return Outcome::unknownName("no such cell");
  if (force) return Outcome::done();
  if (isGuarded(engine.store(), cell.sheet, cell.key)) return Outcome::refused("the cell is guarded");
  return Outcome::done();
}

}  // namespace

std::string_view withoutEqualSign(std::string_view formula) {
  formula = trimmed(formula);
  if (!formula.empty() && formula.front() == '=') formula = trimmed(formula.substr(1));
  return formula;
}

Outcome writeFormula(Engine& engine, const CellAddress& cell, std::string_view formula, bool force) {
  if (Outcome checked = check(engine, cell, force); !checked) return checked;
  Maybe<Cell> content = contentFor(engine, cell, withoutEqualSign(formula));
  if (!content) return Outcome::refused("the text is no formula");
  return commit(engine, cell, *content);
}

Outcome writeResult(Engine& engine, const CellAddress& cell, int unitsCode, double number, bool force) {
  if (Outcome checked = check(engine, cell, force); !checked) return checked;
  Cell content;
  const auto unit = static_cast<Unit>(unitsCode);
  content.value = unitsCode == 0 ? Value::number(number) : Value::number(toInternal(number, unit), unit);
  if (content.value.unit() == Unit::None) {
    // A bare number means internal units here, so an angle is not read as degrees.
    const CellDefinition* definition = definitionOf(cell.key);
    if (definition && definition->units == CellUnits::Length) content.value = Value::number(number, Unit::Inches);
    if (definition && definition->units == CellUnits::Angle) content.value = Value::number(number, Unit::Degrees);
    if (unitsCode == 0 && (!definition || definition->units == CellUnits::Number))
      content.value = fitToCell(engine.store(), cell, content.value);
  }
  if (!isRepresentable(content.value.internal())) return Outcome::refused("the number is too large");
  return commit(engine, cell, std::move(content));
}

}  // namespace quorvel::host
