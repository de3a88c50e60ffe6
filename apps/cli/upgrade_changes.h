// What an upgrade has changed in a map, found by comparing the file with the drawing that was made from it.
#pragma once

#include <string>
#include <vector>

#include "host/sheet/store.h"

namespace quorvel::cli {

struct PageChanges {
  std::string page;
  bool pageCells = false;          ///< the page's own cells were changed
  std::vector<std::string> tasks;  ///< the IDs of those that were changed, members included
  int taskLinks = 0, processConnectors = 0;
  int rowsAdded = 0;     ///< of User, shape data and menus, on the page and on shapes that were there before
  int recordsAdded = 0;  ///< hyperlinks that did not say before what kind of link they are

  bool any() const {
    return pageCells || !tasks.empty() || taskLinks || processConnectors || rowsAdded || recordsAdded;
  }
};

/// One for each page that was changed. Pages are compared by their order, shapes by their IDs.
std::vector<PageChanges> changesBetween(const host::Store& before, host::DocumentId fileDocument,
                                        const host::Store& after, host::DocumentId upgraded);

}  // namespace quorvel::cli
