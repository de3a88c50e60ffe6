#include "commands/edit_hyperlinks.h"

#include "dialogs/frm_customise_huperlink.h"
#include "sheets/document_cells.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
void editHyperlinks(dsrVisioConnect& connect) {
  const Window window = connect.gvsoApp.ActiveWindow();
  // What can be linked to Tasks alone says so in the dialog.
  if (!containProcessConectorOrSubtask(window.Selection()) && wasSavedReads(window.Document(), "False"))
    connect.platform.showMessage({.text = "You should save the document first"});
  frmcustomisehuperlink dialog(connect);
  connect.platform.showModal(dialog);
}

}  // namespace quorvel::addin
