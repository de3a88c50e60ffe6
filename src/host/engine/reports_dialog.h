// What the engine asks of the application when its Reports command runs: reports are above the engine.
#pragma once

#include "host/sheet/ids.h"

namespace quorvel::host {

class ReportsDialog {
 public:
  virtual ~ReportsDialog() = default;
  /// Lists the report definitions of the document, and runs the one that the user chooses. The drawing does not change.
  virtual void showReports(DocumentId document) = 0;
};

}  // namespace quorvel::host
