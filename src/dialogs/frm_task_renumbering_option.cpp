#include "dialogs/frm_task_renumbering_option.h"

#include "dialogs/confirm_cancel.h"
#include "dialogs/filter_number_key.h"
#include "dialogs/ok_and_cancel.h"
#include "vocab/task_id.h"

namespace quorvel::addin {
namespace {

constexpr int digits = 5;

}  // namespace

frmTaskRenumberingOption::frmTaskRenumberingOption(Platform& platform)
    : Form("frmTaskRenumberingOption", "Task Renumbering Options"),
      Frame2(add(ControlKind::Frame, "Frame2", "Task ID Suggestion")),
      txtTaskIdLetters(add(ControlKind::TextBox, "txtTaskIdLetters")),
      txtTaskNumber(add(ControlKind::TextBox, "txtTaskNumber")),
      txtSuggestedTaskId(add(ControlKind::TextBox, "txtSuggestedTaskId")),
      Frame1(add(ControlKind::Frame, "Frame1", "Renumbering Options")),
      Option1(add(ControlKind::OptionButton, "Option1", "Renumber selected Task Shapes only")),
      Option2(add(ControlKind::OptionButton, "Option2", "Renumber all Task Shapes on the page")),
      Command2(add(ControlKind::Button, "Command2", "OK")),
      Command1(add(ControlKind::Button, "Command1", "Cancel")) {
  txtTaskIdLetters.label = "Task ID Letter(s)";
  txtTaskNumber.label = "Next Task Number";
  txtTaskNumber.maxLength = digits;
  txtSuggestedTaskId.label = "Suggested Task ID";
  txtSuggestedTaskId.readOnly = true;
  Frame1.gridRow = 1;
  Frame1.columnSpan = Frame2.columnSpan = 2;
  int row = 0;
  for (Control* box : {&txtTaskIdLetters, &txtTaskNumber, &txtSuggestedTaskId}) {
    box->frame = Frame2.name();
    box->gridRow = row++;
  }
  Option1.frame = Option2.frame = Frame1.name();
  Option2.gridRow = 1;
  layOutOkAndCancel(Command2, Command1, 2);

  txtTaskIdLetters.onChange = txtTaskNumber.onChange = [this] { boxChanged(); };
  txtTaskNumber.onKeyPress = [this, &platform](int key) {
    return filterNumberKey(platform, txtTaskNumber, key, digits, true, true);
  };
  Command2.onClick = [this, &platform] {
    if (!number()) {
      platform.beep();
      txtTaskNumber.focus();
      return;
    }
    cancelled_ = false;
    hide();
  };
  Command1.onClick = [this, &platform] {
    if (!changed_ || confirmsCancel(platform)) close();
  };
}

void frmTaskRenumberingOption::suggest(const std::string& letters, const std::string& number, bool onlySelected) {
  txtTaskIdLetters.setText(letters);
  txtTaskNumber.setText(number);
  (onlySelected ? Option1 : Option2).setState(CheckState::On);
  boxChanged();
}

Maybe<long> frmTaskRenumberingOption::number() const { return numberInBox(txtTaskNumber.text()); }

void frmTaskRenumberingOption::loading() {
  cancelled_ = true;
  changed_ = false;  // the caller filled the boxes, the user did not
}

bool frmTaskRenumberingOption::unloading() {
  cancelled_ = true;
  return true;
}

void frmTaskRenumberingOption::boxChanged() {
  changed_ = true;
  const Maybe<long> first = number();
  txtSuggestedTaskId.setText(first ? taskIdText(letters(), *first) : std::string());
}

}  // namespace quorvel::addin
