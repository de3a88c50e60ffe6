// A dialog that no command shows: what Task Links show is set through their options. It is kept for scripts that know
// it by name.
#pragma once

#include "dialogs/display_dialog.h"

namespace quorvel::addin {

class frmTaskLinkDisplay : public DisplayDialog {
 public:
  frmTaskLinkDisplay()
      : DisplayDialog({"frmTaskLinkDisplay", "Task Link Display ON", "Turn display of detailed Task Link data ON for ",
                       "Selected Task Link(s) only", "All Task Links on current page",
                       "All Task Links on all pages in this drawing"}) {}
};

}  // namespace quorvel::addin
