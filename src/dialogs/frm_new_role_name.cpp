#include "dialogs/frm_new_role_name.h"

#include "base/text.h"
#include "dialogs/ok_and_cancel.h"

namespace quorvel::addin {
namespace {

constexpr const char* editCaption = "Edit Role";

}  // namespace

frmNewRoleName::frmNewRoleName(Platform& platform, const Control& roles)
    : Form("frmNewRoleName", "New Role"),
      platform_(platform),
      roles_(roles),
      lblRoleName(add(ControlKind::Label, "lblRoleName", "Role Name")),
      txtNewRoleName(add(ControlKind::TextBox, "txtNewRoleName")),
      btnOK(add(ControlKind::Button, "btnOK", "OK")),
      btnCancel(add(ControlKind::Button, "btnCancel", "Cancel")) {
  txtNewRoleName.gridColumn = 1;
  txtNewRoleName.columnSpan = 2;
  txtNewRoleName.widthInCharacters = 40;
  layOutOkAndCancel(btnOK, btnCancel, 1, 1);
  btnOK.onClick = [this] { accept(); };
  btnCancel.onClick = [this] { close(); };
}

void frmNewRoleName::edit(const std::string& oldName) {
  oldName_ = oldName;
  txtNewRoleName.setText(oldName);
  setCaption(editCaption);
}

bool frmNewRoleName::unloading() {
  cancelled_ = true;
  return true;
}

void frmNewRoleName::complain(const char* text) {
  platform_.showMessage({text, "Quorvel", MessageButtons::Ok, MessageIcon::Stop});
}

void frmNewRoleName::accept() {
  if (roleName().find(';') != std::string::npos) return complain("Please enter a valid role name. ';' is not allowed ");
  txtNewRoleName.setText(std::string(trimmed(roleName())));
  if (roleName().empty()) return complain("Please enter a valid role name");
  for (const ListRow& role : roles_.rows()) {
    if (!equalIgnoringCase(role.text(), roleName())) continue;
    if (caption() != editCaption || !equalIgnoringCase(roleName(), oldName_))
      return complain("The role name you have entered already exists");
    // The old name again, perhaps in other letter case: nothing is to be changed.
    cancelled_ = true;
    hide();
    return;
  }
  cancelled_ = false;
  hide();
}

}  // namespace quorvel::addin
