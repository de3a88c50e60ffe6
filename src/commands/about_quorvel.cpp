#include "commands/about_quorvel.h"

#include "dialogs/frm_about.h"

namespace quorvel::addin {

void cbrBtnAboutQuorvel_Click(dsrVisioConnect& connect) {
  frmAbout dialog(connect);
  connect.platform.showModal(dialog);
}

}  // namespace quorvel::addin
