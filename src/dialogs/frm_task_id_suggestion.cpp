#include "dialogs/frm_task_id_suggestion.h"

#include "dialogs/escape_unloads.h"
#include "dialogs/filter_number_key.h"
#include "vocab/task_id.h"

namespace quorvel::addin {

frmTaskIdSuggestion::frmTaskIdSuggestion(dsrVisioConnect& frmParent)
    : Form("frmTaskIdSuggestion", "Task ID Suggestion"),
      txtTaskIdLetters(add(ControlKind::TextBox, "txtTaskIdLetters")),
      txtTaskNumber(add(ControlKind::TextBox, "txtTaskNumber")),
      txtSuggestedTaskId(add(ControlKind::TextBox, "txtSuggestedTaskId")),
      BtnOK(add(ControlKind::Button, "BtnOK", "OK")) {
  txtTaskIdLetters.label = "Task ID Letter(s)";
  txtTaskNumber.label = "Next Task Number";
  txtSuggestedTaskId.label = "Suggested Task ID";
  txtSuggestedTaskId.readOnly = true;
  BtnOK.isDefaultButton = true;
  int row = 0;
  for (Control* control : {&txtTaskIdLetters, &txtTaskNumber, &txtSuggestedTaskId, &BtnOK}) control->gridRow = row++;

  txtTaskIdLetters.onChange = txtTaskNumber.onChange = [this] { refreshSuggestion(); };
  escapeUnloads(txtTaskIdLetters);
  escapeUnloads(txtTaskNumber, [this, &platform = frmParent.platform](int key) {
    return filterNumberKey(platform, txtTaskNumber, key, 5, true, true);
  });
  escapeUnloads(BtnOK);
  BtnOK.onClick = [this, &platform = frmParent.platform] {
    if (!numberInBox(txtTaskNumber.text())) {
      platform.beep();
      txtTaskNumber.focus();
      return;
    }
    refused_ = false;
    hide();
  };
}

void frmTaskIdSuggestion::suggest(const std::string& letters) {
  txtTaskIdLetters.setText(letters);
  // An empty box would read as 0 and make the first Task of the page number 00.
  txtTaskNumber.setText("1");
  refreshSuggestion();
}

Maybe<long> frmTaskIdSuggestion::number() const { return numberInBox(txtTaskNumber.text()); }

bool frmTaskIdSuggestion::unloading() {
  refused_ = true;
  return true;
}

void frmTaskIdSuggestion::refreshSuggestion() {
  const Maybe<long> fits = number();
  txtSuggestedTaskId.setText(fits ? taskIdText(letters(), *fits) : std::string());
}

}  // namespace quorvel::addin
