// Which sheet a reference in a formula means.
#pragma once

#include "host/formula/formula.h"
#include "host/sheet/store.h"

namespace quorvel::host {

/// For a formula that is written on `definition` and evaluated for `context`; null when there is no such sheet.
SheetId resolveReference(const Store& store, SheetId definition, SheetId context, const Reference& reference);

}  // namespace quorvel::host
