// The dialog that confirms letters and first number when the first Task is added to a page.
#pragma once

#include <string>

#include "connect/dsr_visio_connect.h"
#include "model/form.h"

namespace quorvel::addin {

class frmTaskIdSuggestion : public Form {
 public:
  explicit frmTaskIdSuggestion(dsrVisioConnect& frmParent);

  /// Fills the boxes before the dialog is shown: the letters, and 1 for the first number.
  void suggest(const std::string& letters);

  /// True unless the dialog was closed by OK.
  bool refused() const { return refused_; }
  const std::string& letters() const { return txtTaskIdLetters.text(); }
  /// Nothing while the box holds a number that is too large for a Task; OK is then refused.
  Maybe<long> number() const;

 protected:
  void loading() override { refused_ = true; }
  bool unloading() override;

 private:
  void refreshSuggestion();

  bool refused_ = true;
  Control& txtTaskIdLetters;
  Control& txtTaskNumber;
  Control& txtSuggestedTaskId;
  Control& BtnOK;
};

}  // namespace quorvel::addin
