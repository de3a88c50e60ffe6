// The dialog that asks for the new IDs of Tasks: letters, first number, and which Tasks.
#pragma once

#include <string>

#include "model/form.h"
#include "model/platform.h"

namespace quorvel::addin {

class frmTaskRenumberingOption : public Form {
 public:
  explicit frmTaskRenumberingOption(Platform& platform);

  /// Fills the boxes before the dialog is shown.
  void suggest(const std::string& letters, const std::string& number, bool onlySelected);

  /// True unless the dialog was closed by OK.
  bool cancelled() const { return cancelled_; }
  const std::string& letters() const { return txtTaskIdLetters.text(); }
  /// Nothing while the box holds a number that is too large for a Task; OK is then refused.
  Maybe<long> number() const;
  bool onlySelected() const { return Option1.isOn(); }

 protected:
  void loading() override;
  bool unloading() override;

 private:
  void boxChanged();

  bool cancelled_ = true;
  bool changed_ = false;
  Control& Frame2;
  Control& txtTaskIdLetters;
  Control& txtTaskNumber;
  Control& txtSuggestedTaskId;
  Control& Frame1;
  Control& Option1;
  Control& Option2;
  Control& Command2;
  Control& Command1;
};

}  // namespace quorvel::addin
