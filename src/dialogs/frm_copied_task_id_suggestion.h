// The dialog that asks how Tasks pasted onto a page get their IDs.
#pragma once

#include <string>

#include "connect/dsr_visio_connect.h"
#include "model/form.h"

namespace quorvel::addin {

/// OK stores the answer in flagKeepTaskIdNumbers, strTaskIdLetters and iTaskIdNumber of its parent; any other way to
/// close it stores nothing.
class frmCopiedTaskIdSuggestion : public Form {
 public:
  explicit frmCopiedTaskIdSuggestion(dsrVisioConnect& frmParent);

  /// Sets the page of the pasted Tasks before the dialog is shown; without it, the letters of an unnamed page are used.
  void askFor(const Page& page) { page_ = page; }

  /// True unless the dialog was closed by OK.
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
