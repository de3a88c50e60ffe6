#include "dialogs/frm_copied_task_id_suggestion.h"

#include "dialogs/escape_unloads.h"
#include "dialogs/filter_number_key.h"
#include "vocab/task_id.h"

namespace quorvel::addin {

frmCopiedTaskIdSuggestion::frmCopiedTaskIdSuggestion(dsrVisioConnect& parent)
    : Form("frmCopiedTaskIdSuggestion", "Copied Task ID Suggestion"),
      frmParent(parent),
      lblLetters(add(ControlKind::Label, "lblLetters",
                     "When you copy tasks to this page, the Task ID letter shown below will be assigned to every task. "
                     "If you prefer that a different letter be assigned,  enter it in the space provided. ")),
      txtTaskIdLetter(add(ControlKind::TextBox, "txtTaskIdLetter")),
      lblNumbers(add(ControlKind::Label, "lblNumbers",
                     "Indicate below how you would like Quorvel to assign Task ID numbers:")),
      OptionNew(add(ControlKind::OptionButton, "OptionNew",
                    "Let the system assign new Task ID numbers, in the order in which tasks were originally placed on "
                    "the page, starting with the number shown below.")),
      OptionKeep(add(ControlKind::OptionButton, "OptionKeep", "Keep the existing Task ID numbers. ")),
      txtNextTaskNumber(add(ControlKind::TextBox, "txtNextTaskNumber")),
      txtSuggestedTaskId(add(ControlKind::TextBox, "txtSuggestedTaskId")),
      BtnOK(add(ControlKind::Button, "BtnOK", "OK")) {
  txtTaskIdLetter.label = "Task ID Letter(s)";
  txtNextTaskNumber.label = "Next Task Number";
  txtSuggestedTaskId.label = "Suggested Task ID";
  txtSuggestedTaskId.readOnly = true;
  BtnOK.isDefaultButton = true;
  int row = 0;
  for (const auto& control : controls()) control->gridRow = row++;

  txtTaskIdLetter.onChange = txtNextTaskNumber.onChange = [this] { refreshSuggestion(); };
  OptionNew.onClick = [this] { txtNextTaskNumber.setEnabled(true); };
  OptionKeep.onClick = [this] { txtNextTaskNumber.setEnabled(false); };
  for (Control* control : {&txtTaskIdLetter, &OptionNew, &OptionKeep, &BtnOK}) escapeUnloads(*control);
  escapeUnloads(txtNextTaskNumber,
                [this](int key) { return filterNumberKey(frmParent.platform, txtNextTaskNumber, key, 5, true, true); });
  BtnOK.onClick = [this] {
    if (!numberInBox(txtNextTaskNumber.text())) {
      frmParent.platform.beep();
      txtNextTaskNumber.focus();
      return;
    }
    refused_ = false;
    close();
  };
}

void frmCopiedTaskIdSuggestion::loading() {
  refused_ = true;
  Maybe<std::string> letters = taskIdLettersOf(page_);
  Maybe<long> number = nextTaskIdOf(page_);
  if (letters == "") {
    letters = getTaskLetterPartFromPageName(page_);
    number = 1;
  }
  // When the cells can't be read, the user decides: a guess could use an ID twice.
  txtTaskIdLetter.setText(letters.or_({}));
  txtNextTaskNumber.setText(number ? std::to_string(*number) : std::string());
  refreshSuggestion();
  OptionNew.setState(CheckState::On);
}

bool frmCopiedTaskIdSuggestion::unloading() {
  if (refused_) return true;
  frmParent.flagKeepTaskIdNumbers = OptionKeep.isOn();
  frmParent.strTaskIdLetters = txtTaskIdLetter.text();
  frmParent.iTaskIdNumber = numberInBox(txtNextTaskNumber.text()).or_(0);
  return true;
}

void frmCopiedTaskIdSuggestion::refreshSuggestion() {
  const Maybe<long> number = numberInBox(txtNextTaskNumber.text());
  txtSuggestedTaskId.setText(number ? taskIdText(txtTaskIdLetter.text(), *number) : std::string());
}

}  // namespace quorvel::addin
