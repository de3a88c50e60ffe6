// The dialog that turns the display of details on or off.
#pragma once

#include "dialogs/display_dialog.h"

namespace quorvel::addin {

class frmTaskDisplay : public DisplayDialog {
 public:
  /// `turnsOn` false: details are shown now, and the dialog hides them.
  explicit frmTaskDisplay(bool turnsOn)
      : DisplayDialog(
            {"frmTaskDisplay", turnsOn ? "Task Display ON" : "Task Display OFF",
             turnsOn ? "Turn display of detailed Task data ON for " : "Turn display of detailed Task data OFF for",
             "Selected Task(s) only", "All Tasks on the current page", "All Tasks on all pages in this drawing"}) {}
};

}  // namespace quorvel::addin
