#include "dialogs/frm_process_connector_msg.h"

#include "dialogs/escape_unloads.h"

namespace quorvel::addin {

frmProcessConnectorMsg::frmProcessConnectorMsg(dsrVisioConnect& parent)
    : Form("frmProcessConnectorMsg", "Quorvel"),
      frmParent(parent),
      Label1(add(ControlKind::Label, "Label1")),
      chkapplytoAll(add(ControlKind::CheckBox, "chkapplytoAll", "Apply To &All")),
      btnYes(add(ControlKind::Button, "btnYes", "&Yes")),
      btnNo(add(ControlKind::Button, "btnNo", "&No")) {
  Label1.columnSpan = chkapplytoAll.columnSpan = 2;
  chkapplytoAll.gridRow = 1;
  btnYes.gridRow = btnNo.gridRow = 2;
  btnNo.gridColumn = 1;
  btnYes.isDefaultButton = true;
  btnNo.isCancelButton = true;
  for (Control* control : {&chkapplytoAll, &btnYes, &btnNo}) escapeUnloads(*control);

  chkapplytoAll.onClick = [this] { frmParent.applyToAll = chkapplytoAll.isOn(); };
  btnYes.onClick = [this] {
    answeredNo_ = false;
    frmParent.applyToAll = chkapplytoAll.isOn();
    hide();
  };
  btnNo.onClick = [this] { close(); };
}

void frmProcessConnectorMsg::prepare(const std::string& question, bool offersAll) {
  Label1.setCaption(question);
  chkapplytoAll.setVisible(offersAll);
}

void frmProcessConnectorMsg::loading() {
  answeredNo_ = true;
  chkapplytoAll.setState(CheckState::Off);
  frmParent.applyToAll = false;
}

bool frmProcessConnectorMsg::unloading() {
  answeredNo_ = true;
  // Only Yes is an answer for all: after No the next Task is asked about too.
  frmParent.applyToAll = false;
  return true;
}

bool askToKeepLinkedTask(dsrVisioConnect& connect, const std::string& id, bool several) {
  // A script may delete another Task while the dialog is open; that one gets a dialog of its own.
  if (!connect.processConnectorMsg || connect.processConnectorMsg->isOpen())
    connect.processConnectorMsg = std::make_shared<frmProcessConnectorMsg>(connect);
  const auto dialog = connect.processConnectorMsg;
  dialog->prepare(several
                      ? "There are active hyperlinks to at least one of the Tasks you are trying to delete. Are "
                        "you sure you want to delete these Tasks?"
                      : "There are active hyperlinks to Task " + id + ". Are you sure you want to delete this task?",
                  several);
  connect.platform.showModal(*dialog);
  return dialog->answeredNo();
}

}  // namespace quorvel::addin
