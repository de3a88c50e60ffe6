// Fields of a background page while it is drawn behind another: the page's number and name are those of the one in
// front.
#pragma once

#include <string>

#include "host/sheet/store.h"

namespace quorvel::host {

/// What field row `index` of a sheet on a background page shows behind the page `front`.
std::string fieldTextBehind(const Store& store, SheetId sheet, int index, PageId front);

}  // namespace quorvel::host
