// The units in which a page's drawing is measured, which numbers without a unit are taken in.
#pragma once

#include "host/formula/units.h"
#include "host/sheet/ids.h"

namespace quorvel::host {

class Store;

/// The unit that an implicit one means on the sheet's page: Drawing that of its DrawingScale, Page that of its
/// PageScale; inches where the scale is given in none. Other units mean themselves.
Unit explicitUnitOf(const Store& store, SheetId sheet, Unit unit);

/// How many inches of the drawing an inch of paper shows on the sheet's page.
double drawingPerPaper(const Store& store, SheetId sheet);

}  // namespace quorvel::host
