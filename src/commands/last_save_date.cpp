#include "commands/last_save_date.h"

#include "base/date_text.h"
#include "connect/undo_step.h"
#include "dialogs/last_save_date_time.h"
#include "document/last_save_field.h"

namespace quorvel::addin {

void insertLastSaveDate(dsrVisioConnect& connect) {
  const Selection selection = connect.gvsoApp.ActiveWindow().Selection();
  LastSaveDateTime dialog(localTime());
  dialog.preselect(lastSaveFormatOf(selection));
  connect.platform.showModal(dialog);
  if (dialog.format() == 0) return;
  const UndoStep step(connect.gvsoApp, dialog.caption());
  addDocLastSave(selection, dialog.format());
}

}  // namespace quorvel::addin
