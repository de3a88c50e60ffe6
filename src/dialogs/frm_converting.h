// The note that shows while an older drawing is converted.
#pragma once

#include "model/form.h"

namespace quorvel::addin {

/// Has no controls that act. The caller that shows it hides it.
class frmConverting : public Form {
 public:
  frmConverting() : Form("frmConverting", "Quorvel") {
    add(ControlKind::Label, "lblNote",
        "This drawing was made with an earlier version. It is being converted; please wait.");
  }
};

}  // namespace quorvel::addin
