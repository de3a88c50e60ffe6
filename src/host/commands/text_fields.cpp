#include "host/commands/text_fields.h"

#include "base/text.h"
#include "host/cells/cell_table.h"
#include "host/edits/write_cell.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

CellAddress textCell(SheetId shape) {
  static const CellKey key = objectCell("TheText");
  return {shape, key};
}

CellKey fieldCell(std::uint32_t index, std::string_view column) {
  return {SectionNumber::TextField, RowKey::index(index), columnOf(SectionNumber::TextField, column).or_(0)};
}

void replaceText(Engine& engine, SheetId shape, TextBody body) {
  engine.edit().setFields(
      shape, [&](SheetFields& fields) { fields.text = std::make_shared<const TextBody>(std::move(body)); });
}

void raiseTextChanged(Engine& engine, SheetId shape) {
  engine.recalculateAndNotify({}, {textCell(shape)});
  engine.raise(&ApplicationEvents::TextChanged, shape);
}

/// The field rows move one place down, and those that are only inherited become the shape's own.
void shiftFieldRows(Engine& engine, SheetId shape) {
  Section shifted;
  shifted.number = SectionNumber::TextField;
  for (const RowView& view : rowsOf(engine.store(), shape, SectionNumber::TextField)) {
    Row row;
    row.key = RowKey::index(view.key.index() + 1);
    for (const CellDefinition& definition : cellDefinitions()) {
      if (definition.section != SectionNumber::TextField) continue;
      const FoundCell found = findCell(engine.store(), shape, {SectionNumber::TextField, view.key, definition.column});
      if (!found) continue;
      Cell cell = *found.value;
      cell.inheritsFormula = false;
      if (found.formula && found.formula->formula)
        cell.formula = engine.store().formulas().get(formulaFor(engine.store(), shape, found));
      row.cells.emplace_back(definition.column, std::move(cell));
    }
    std::sort(row.cells.begin(), row.cells.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    shifted.rows.push_back(std::move(row));
  }
  if (shifted.rows.empty()) return;
  engine.edit().replaceSection(shape, SectionNumber::TextField, std::move(shifted));
}

}  // namespace

Outcome setText(Engine& engine, SheetId shape, std::string_view text) {
  const Sheet* sheet = engine.store().sheet(shape);
  if (!sheet || !sheet->isShape()) return Outcome::refused("only shapes have text");
  const TextBody* now = textOf(engine.store(), shape);
  const bool plain = !now || (now->size() <= 1 && (now->empty() || now->front().kind == TextPiece::Characters));
  if (plain && shownText(engine.store(), shape) == text) return Outcome::done();
  CommandScope scope(engine, sheet->document, "Text");
  TextBody body;
  if (!text.empty()) body.push_back({TextPiece::Characters, 0, std::string(text)});
  replaceText(engine, shape, std::move(body));
  if (!rowsOf(engine.store(), shape, SectionNumber::TextField).empty()) {
    std::optional<Section> none;
    if (sheet->prototype) {
      none.emplace();
      none->number = SectionNumber::TextField;
      none->deleted = true;
    }
    engine.edit().replaceSection(shape, SectionNumber::TextField, std::move(none));
  }
  raiseTextChanged(engine, shape);
  scope.commit();
  return Outcome::done();
}

Outcome addCustomField(Engine& engine, SheetId shape, std::string_view formula, int format) {
  const Sheet* sheet = engine.store().sheet(shape);
  if (!sheet || !sheet->isShape()) return Outcome::refused("only shapes have text");
  formula = trimmed(formula);
  if (!formula.empty() && !engine.store().formulas().get(formula)) return Outcome::refused("the text is no formula");
  CommandScope scope(engine, sheet->document, "Field");
  shiftFieldRows(engine, shape);
  TextBody body{{TextPiece::Field, 0, {}}};
  if (const TextBody* now = textOf(engine.store(), shape)) {
    for (TextPiece piece : *now) {
      if (piece.kind == TextPiece::Field) ++piece.index;
      body.push_back(std::move(piece));
    }
  }
  Cell value;
  value.value = Value::text("");
  // As files have it: a bare number in a text cell would be read as a format made of digits.
  Cell picture;
  picture.formula = engine.store().formulas().get("FIELDPICTURE(" + std::to_string(format) + ")");
  picture.value = Value::text("esc(" + std::to_string(format) + ")");
  engine.edit().setCell({shape, fieldCell(0, "Value")}, value);
  engine.edit().setCell({shape, fieldCell(0, "Format")}, picture);
  replaceText(engine, shape, std::move(body));
  if (!formula.empty()) writeFormula(engine, {shape, fieldCell(0, "Value")}, formula, true);
  if (engine.exists(shape)) raiseTextChanged(engine, shape);
  scope.commit();
  return Outcome::done();
}

bool isFirstField(const Engine& engine, const CellAddress& cell) {
  const Sheet* sheet = engine.store().sheet(cell.sheet);
  return sheet && sheet->isShape() && cell.key == fieldCell(0, "Value") &&
         rowsOf(engine.store(), cell.sheet, SectionNumber::TextField).empty() &&
         shownText(engine.store(), cell.sheet).empty();
}

Outcome writeFirstField(Engine& engine, SheetId shape, std::string_view formula) {
  if (engine.areWritesTooDeep()) return Outcome::refused("writes inside writes are nested too deeply");
  return addCustomField(engine, shape, withoutEqualSign(formula), 0);
}

Outcome beginTextEdit(Engine& engine, SheetId shape) {
  static const CellKey lock = objectCell("LockTextEdit");
  if (cellNumber(engine.store(), shape, lock) != 0) return Outcome::refused("the shape's text is locked");
  engine.raise(&ApplicationEvents::BeforeShapeTextEdit, shape);
  return Outcome::done();
}

Outcome endTextEdit(Engine& engine, SheetId shape, std::string_view typed) {
  const Sheet* sheet = engine.store().sheet(shape);
  if (!sheet || !sheet->isShape()) return Outcome::refused("only shapes have text");
  CommandScope scope(engine, sheet->document, "Text edit");
  // Text that was left as it was keeps its fields.
  if (shownText(engine.store(), shape) != typed) setText(engine, shape, typed);
  engine.raise(&ApplicationEvents::ShapeExitedTextEdit, shape);
  scope.commit();
  return Outcome::done();
}

}  // namespace quorvel::host
