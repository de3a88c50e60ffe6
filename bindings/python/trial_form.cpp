#include "trial_form.h"

#include <functional>

namespace quorvel::python {

TrialForm::TrialForm(const std::vector<TrialControl>& controls) : Form("frmTrial", "Trial") {
  for (const TrialControl& wanted : controls) {
    Control& control = add(static_cast<ControlKind>(wanted.kind), wanted.name);
    control.multipleSelection = wanted.multipleSelection;
    if (control.kind() == ControlKind::TabStrip) {
      control.tabs = wanted.items;
    } else {
      for (const std::string& item : wanted.items) control.addRow({item, "second column"});
    }
    control.setEnabled(wanted.enabled);
    const auto note = [this, name = wanted.name](const char* what) {
      return [this, entry = what + (" " + name)] { recorded.push_back(entry); };
    };
    control.onClick = note("click");
    control.onDoubleClick = note("double click");
    control.onChange = note("change");
    control.onSelect = note("select");
    control.onGotFocus = note("got focus");
    control.onLostFocus = note("lost focus");
    control.onKeyDown = [down = note("key down")](int) { down(); };
    control.onKeyPress = [](int key) { return key == '?' ? 0 : key; };
  }
}

}  // namespace quorvel::python
