#include "host/commands/text_fields.h"

#include <algorithm>

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

void putBody(Engine& engine, SheetId shape, TextBody body) {
  engine.edit().setFields(
      shape, [&](SheetFields& fields) { fields.text = std::make_shared<const TextBody>(std::move(body)); });
}

void raiseTextChanged(Engine& engine, SheetId shape) {
  engine.recalculateAndNotify({}, {textCell(shape)});
  engine.raise(&ApplicationEvents::TextChanged, shape);
}

/// The field rows from the given one move one place down, and those that are only inherited become the shape's own.
void shiftFieldRows(Engine& engine, SheetId shape, std::uint32_t from) {
  Section shifted;
  shifted.number = SectionNumber::TextField;
  const std::vector<RowView> rows = rowsOf(engine.store(), shape, SectionNumber::TextField);
  const auto moves = [&](const RowView& view) { return view.key.index() >= from; };
  if (std::none_of(rows.begin(), rows.end(), moves)) return;
  for (const RowView& view : rows) {
    Row row;
    row.key = RowKey::index(view.key.index() + (moves(view) ? 1 : 0));
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
  engine.edit().replaceSection(shape, SectionNumber::TextField, std::move(shifted));
}

/// In front of `piece`, or behind its first `bytes`.
struct TextPlace {
  std::size_t piece = 0, bytes = 0;
};

TextPlace placeInText(const Store& store, SheetId shape, const TextBody& body, int characters) {
  for (std::size_t i = 0; i < body.size(); ++i) {
    if (characters <= 0) return {i, 0};
    const std::string shown = shownText(store, shape, body[i]);
    const int length = static_cast<int>(lengthOf(shown));
    if (characters < length) {
      TextPlace place{i, 0};
      if (body[i].kind == TextPiece::Field) return place;
      for (; characters > 0; --characters) decodeNext(shown, place.bytes);
      return place;
    }
    characters -= length;
  }
  return {body.size(), 0};
}

/// The row of a field that is inserted there: that of the next one, or behind all that come before it.
std::uint32_t fieldRowAt(const TextBody& body, const TextPlace& place) {
  if (place.piece == 0 && place.bytes == 0) return 0;
  int row = 0;
  for (std::size_t i = 0; i < body.size(); ++i) {
    if (body[i].kind != TextPiece::Field) continue;
    if (i >= place.piece) return static_cast<std::uint32_t>(body[i].index);
    row = std::max(row, body[i].index + 1);
  }
  return static_cast<std::uint32_t>(row);
}

/// The text with a field of that row at the place.
TextBody withField(TextBody body, const TextPlace& place, std::uint32_t row) {
  for (TextPiece& piece : body) {
    if (piece.kind == TextPiece::Field && piece.index >= static_cast<int>(row)) ++piece.index;
  }
  auto at = body.begin() + static_cast<std::ptrdiff_t>(place.piece);
  if (place.bytes > 0) {
    TextPiece rest = *at;
    rest.text.erase(0, place.bytes);
    at->text.erase(place.bytes);
    at = body.insert(at + 1, std::move(rest));
  }
  body.insert(at, {TextPiece::Field, static_cast<int>(row), {}});
  return body;
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
  putBody(engine, shape, std::move(body));
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

void setTextBody(Engine& engine, SheetId shape, TextBody body) {
  CommandScope scope(engine, engine.store().sheet(shape)->document, "Text");
  putBody(engine, shape, std::move(body));
  raiseTextChanged(engine, shape);
  scope.commit();
}

Outcome addCustomField(Engine& engine, SheetId shape, std::string_view formula, int format, int place) {
  const Sheet* sheet = engine.store().sheet(shape);
  if (!sheet || !sheet->isShape()) return Outcome::refused("only shapes have text");
  formula = trimmed(formula);
  if (!formula.empty() && !engine.store().formulas().get(formula)) return Outcome::refused("the text is no formula");
  CommandScope scope(engine, sheet->document, "Field");
  const TextBody* now = textOf(engine.store(), shape);
  TextBody body = now ? *now : TextBody();
  const TextPlace at = placeInText(engine.store(), shape, body, place);
  const std::uint32_t row = fieldRowAt(body, at);
  body = withField(std::move(body), at, row);
  shiftFieldRows(engine, shape, row);
  Cell value;
  value.value = Value::text("");
  // As files have it: a bare number in a text cell would be read as a format made of digits.
  Cell picture;
  picture.formula = engine.store().formulas().get("FIELDPICTURE(" + std::to_string(format) + ")");
  picture.value = Value::text("esc(" + std::to_string(format) + ")");
  engine.edit().setCell({shape, fieldCell(row, "Value")}, value);
  engine.edit().setCell({shape, fieldCell(row, "Format")}, picture);
  putBody(engine, shape, std::move(body));
  if (!formula.empty()) writeFormula(engine, {shape, fieldCell(row, "Value")}, formula, true);
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
  const Sheet* sheet = engine.store().sheet(shape);
  if (!sheet || !sheet->isShape()) return Outcome::refused("only shapes have text");
  if (!engine.raise(&ApplicationEvents::BeforeShapeTextEdit, shape)) return Outcome::refused("the shape is deleted");
  if (cellNumber(engine.store(), shape, lock) != 0) return Outcome::refused("the shape's text is locked");
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
