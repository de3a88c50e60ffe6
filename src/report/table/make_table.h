// Runs a report: from a drawing and a definition to the table.
#pragma once

#include <string>

#include "host/sheet/store.h"
#include "report/table/table.h"

namespace quorvel::report {

struct TableOptions {
  std::string page;  ///< only the page of this name, whatever the definition says; empty: as the definition says
};

struct MadeTable {
  Table table;
  std::string problem;  ///< empty, or one sentence; then there is no table
};

/// The document must exist in the store. Rows are in the order of the pages and their stacks where the definition does
/// not sort them.
MadeTable makeTable(const host::Store& store, host::DocumentId document, const Definition& definition,
                    const TableOptions& options = {});

}  // namespace quorvel::report
