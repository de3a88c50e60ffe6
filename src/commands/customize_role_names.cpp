#include "commands/customize_role_names.h"

#include "dialogs/frm_customize_role_names.h"
#include "vocab/role_names.h"

namespace quorvel::addin {

void cbrBtnCustomizeRoleName_Click(dsrVisioConnect& connect) {
  const Document document = connect.gvsoApp.ActiveDocument();
  frmCustomizeRoleNames dialog(connect, document);
  connect.platform.showModal(dialog);
  // The dialog has written the document's list when it closed.
  updateRoleFormats(document);
}

}  // namespace quorvel::addin
