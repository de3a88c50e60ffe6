#include "commands/quorvel_options.h"

#include "dialogs/frm_task_option.h"

namespace quorvel::addin {

void cbrQuorvelOption_Click(dsrVisioConnect& connect) {
  frmTaskOption dialog(connect, connect.gvsoApp.ActiveDocument());
  dialog.fill();
  connect.platform.showModal(dialog);
}

}  // namespace quorvel::addin
