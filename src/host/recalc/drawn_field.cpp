#include "host/recalc/drawn_field.h"

#include "host/cells/cell_table.h"
#include "host/recalc/recalculator.h"
#include "host/recalc/sheet_context.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {

std::string fieldTextBehind(const Store& store, SheetId sheet, int index, PageId front) {
  const CellAddress cell{sheet,
                         {SectionNumber::TextField, RowKey::index(static_cast<std::uint32_t>(index)),
                          columnOf(SectionNumber::TextField, "Value").or_(0)}};
  const FoundCell found = findCell(store, sheet, cell.key);
  const Formula* const formula = found.formula ? found.formula->formula.get() : nullptr;
  // Only what asks for the page can differ.
  if (!formula || !formula->isVolatile()) return fieldText(store, sheet, index);
  SheetContext context(store, tableTextMetrics(), found.formulaSheet, cell, front);
  const Maybe<Value> value = evaluate(*formula, context);
  if (!value || context.readUnknown()) return fieldText(store, sheet, index);
  return fieldText(store, sheet, index, fitToCell(store, cell, *value));
}

}  // namespace quorvel::host
