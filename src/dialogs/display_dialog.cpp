#include "dialogs/display_dialog.h"

#include "dialogs/confirm_cancel.h"
#include "dialogs/ok_and_cancel.h"

namespace quorvel::addin {

DisplayDialog::DisplayDialog(const Texts& texts)
    : Form(texts.name, texts.caption),
      fraScope(add(ControlKind::Frame, "fraScope", texts.scopeFrame)),
      OptionSelected(add(ControlKind::OptionButton, "OptionSelected", texts.selected)),
      OptionPage(add(ControlKind::OptionButton, "OptionPage", texts.page)),
      OptionDrawing(add(ControlKind::OptionButton, "OptionDrawing", texts.drawing)),
      BtnOK(add(ControlKind::Button, "BtnOK", "OK")),
      BtnCancel(add(ControlKind::Button, "BtnCancel", "Cancel")) {
  fraScope.gridRow = 1;
  fraScope.columnSpan = 2;
  int row = 0;
  for (Control* option : {&OptionSelected, &OptionPage, &OptionDrawing}) {
    option->frame = fraScope.name();
    option->gridRow = row++;
  }
  layOutOkAndCancel(BtnOK, BtnCancel, 2);
  BtnOK.onClick = [this] {
    cancelled_ = false;
    hide();
  };
  BtnCancel.onClick = [this] { cancelClicked(); };
}

std::string_view DisplayDialog::scope() const {
  if (OptionDrawing.isOn()) return displayScope::drawing;
  return OptionPage.isOn() ? displayScope::page : displayScope::selected;
}

void DisplayDialog::offerSelection(bool hasSelection) {
  OptionSelected.setEnabled(hasSelection);
  (hasSelection ? OptionSelected : OptionPage).setState(CheckState::On);
}

bool DisplayDialog::unloading() {
  cancelled_ = true;
  return true;
}

DisplayOptionsDialog::DisplayOptionsDialog(Platform& platform, const Texts& texts, const char* boxesFrame)
    : DisplayDialog(texts), platform_(platform) {
  add(ControlKind::Frame, "fraBoxes", boxesFrame).columnSpan = 2;
}

Control& DisplayOptionsDialog::addBox(const char* name, const char* caption) {
  Control& box = add(ControlKind::CheckBox, name, caption);
  box.frame = "fraBoxes";
  const std::size_t index = boxes_.size();
  box.gridRow = static_cast<int>(index);
  boxes_.push_back(&box);
  box.onClick = [this, index] {
    changed_ = true;
    boxChanged(index);
  };
  return box;
}

void DisplayOptionsDialog::setBox(std::size_t index, int value) {
  boxes_[index]->setState(value == 0 ? CheckState::Off : value == 2 ? CheckState::Grey : CheckState::On);
  // A box that is set to its current state raises nothing, but what depends on it must be updated.
  boxChanged(index);
}

int DisplayOptionsDialog::box(std::size_t index) const {
  switch (boxes_[index]->state()) {
    case CheckState::Off:
      return 0;
    case CheckState::On:
      return 1;
    default:
      return 2;
  }
}

void DisplayOptionsDialog::loading() {
  DisplayDialog::loading();
  changed_ = false;  // the caller filled the boxes, the user did not
}

void DisplayOptionsDialog::cancelClicked() {
  if (!changed_ || confirmsCancel(platform_)) close();
}

}  // namespace quorvel::addin
