#include "host/sheet/units_of_page.h"

#include "host/cells/cell_table.h"
#include "host/sheet/inheritance.h"
#include "host/sheet/store.h"

namespace quorvel::host {

namespace {

const CellKey& drawingScale() {
  static const CellKey key = objectCell("DrawingScale");
  return key;
}

const CellKey& pageScale() {
  static const CellKey key = objectCell("PageScale");
  return key;
}

const Page* pageOf(const Store& store, SheetId id) {
  const Sheet* sheet = store.sheet(id);
  return sheet ? store.page(sheet->page) : nullptr;
}

}  // namespace

Unit explicitUnitOf(const Store& store, SheetId id, Unit unit) {
  if (unit != Unit::Drawing && unit != Unit::Page) return unit;
  const Page* page = pageOf(store, id);
  if (!page) return Unit::Inches;
  const Unit scale = cellValue(store, page->sheet, unit == Unit::Drawing ? drawingScale() : pageScale()).unit();
  const bool names = dimensionOf(scale) == Dimension::Length && scale != Unit::Drawing && scale != Unit::Page;
  return names ? scale : Unit::Inches;
}

double drawingPerPaper(const Store& store, SheetId id) {
  const Page* page = pageOf(store, id);
  if (!page) return 1;
  const double drawing = cellNumber(store, page->sheet, drawingScale()),
               paper = cellNumber(store, page->sheet, pageScale());
  return drawing > 0 && paper > 0 ? drawing / paper : 1;
}

}  // namespace quorvel::host
