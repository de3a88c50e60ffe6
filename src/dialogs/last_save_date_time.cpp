#include "dialogs/last_save_date_time.h"

#include "base/date_text.h"
#include "dialogs/ok_and_cancel.h"
#include "document/last_save_field.h"

namespace quorvel::addin {

LastSaveDateTime::LastSaveDateTime(const std::tm& now)
    : Form("LastSaveDateTime", "Last Save Date/Time"),
      lblFormat(add(ControlKind::Label, "lblFormat", "F&ormat: ")),
      lstFormats(add(ControlKind::ListBox, "lstFormats")),
      cmdOk(add(ControlKind::Button, "cmdOk", "OK")),
      Command2(add(ControlKind::Button, "Command2", "Cancel")) {
  lblFormat.columnSpan = lstFormats.columnSpan = 2;
  lstFormats.gridRow = 1;
  lstFormats.widthInCharacters = 36;
  lstFormats.heightInLines = static_cast<int>(lastSaveFormats.size());
  layOutOkAndCancel(cmdOk, Command2, 2);
  for (const LastSaveFormat& format : lastSaveFormats) lstFormats.addRow(dateText(now, format.pattern));
  cmdOk.onClick = [this] {
    cancelled_ = false;
    hide();
  };
  Command2.onClick = [this] {
    cancelled_ = true;
    hide();
  };
}

void LastSaveDateTime::preselect(int format) {
  if (format > 0) lstFormats.selectRow(static_cast<std::size_t>(format) - 1);
}

int LastSaveDateTime::format() const { return cancelled_ ? 0 : lstFormats.selectedRow() + 1; }

}  // namespace quorvel::addin
