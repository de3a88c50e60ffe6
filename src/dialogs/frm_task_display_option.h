// The dialog that chooses which details Tasks show.
#pragma once

#include "dialogs/display_dialog.h"

namespace quorvel::addin {

/// Its boxes stand in the order of `taskSwitches`.
class frmTaskDisplayOption : public DisplayOptionsDialog {
 public:
  explicit frmTaskDisplayOption(Platform& platform);
};

}  // namespace quorvel::addin
