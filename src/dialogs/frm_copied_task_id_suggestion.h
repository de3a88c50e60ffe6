// The dialog that asks how Tasks pasted onto a page get their IDs.
#pragma once

#include <string>

#include "connect/dsr_visio_connect.h"
#include "model/form.h"

namespace quorvel::addin {

/// Left by OK, it stores the answer in flagKeepTaskIdNumbers, strTaskIdLetters and iTaskIdNumber of its parent; left by
/// any other way it stores nothing.
class frmCopiedTaskIdSuggestion : public Form {
 public:
  explicit frmCopiedTaskIdSuggestion(dsrVisioConnect& frmParent);

  /// The page that the Tasks come to, before the dialog is shown; without one it suggests what an unnamed page gets.
  void askFor(const Page& page) { page_ = page; }

  /// True unless the dialog was left by OK.
  bool refused() const { return refused_; }

 protected:
  void loading() override;
  bool unloading() override;

 private:
  void refreshSuggestion();

  dsrVisioConnect& frmParent;
  Page page_;
  bool refused_ = true;
  Control& lblLetters;
  Control& txtTaskIdLetter;
  Control& lblNumbers;
  Control& OptionNew;
  Control& OptionKeep;
  Control& txtNextTaskNumber;
  Control& txtSuggestedTaskId;
  Control& BtnOK;
};

}  // namespace quorvel::addin
