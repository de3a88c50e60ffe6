#include "dialogs/frm_book_mark.h"

#include "dialogs/ok_and_cancel.h"

namespace quorvel::addin {

frmBookMark::frmBookMark(const std::vector<std::string>& bookmarks)
    : Form("frmBookMark", "Bookmarks"),
      fraBookmarks(add(ControlKind::Frame, "fraBookmarks", "Select a bookmark from the list below")),
      lstBookmarks(add(ControlKind::ListView, "lstBookmarks")),
      btnOK(add(ControlKind::Button, "btnOK", "OK")),
      btnCancel(add(ControlKind::Button, "btnCancel", "Cancel")) {
  fraBookmarks.columnSpan = 2;
  lstBookmarks.frame = fraBookmarks.name();
  lstBookmarks.widthInCharacters = 40;
  lstBookmarks.heightInLines = 12;
  layOutOkAndCancel(btnOK, btnCancel, 1);
  for (const std::string& name : bookmarks) lstBookmarks.addRow(name);

  const auto accept = [this] {
    const int row = lstBookmarks.selectedRow();
    if (row >= 0) chosen_ = lstBookmarks.rows()[static_cast<std::size_t>(row)].text();
    hide();
  };
  btnOK.onClick = lstBookmarks.onDoubleClick = accept;
  btnCancel.onClick = [this] { close(); };
}

}  // namespace quorvel::addin
