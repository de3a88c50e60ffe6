// The dialog that chooses which details Tasks show.
#pragma once

#include "dialogs/display_dialog.h"

namespace quorvel::addin {

/// Its boxes are in the order of `schema::boxedTaskSwitches`.
class frmTaskDisplayOption : public DisplayOptionsDialog {
 public:
  explicit frmTaskDisplayOption(Platform& platform);
};

}  // namespace quorvel::addin
