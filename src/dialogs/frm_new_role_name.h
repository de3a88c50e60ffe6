// The small dialog that takes the name of a new role, or another name for one.
#pragma once

#include <string>

#include "model/form.h"
#include "model/platform.h"

namespace quorvel::addin {

class frmNewRoleName : public Form {
 public:
  /// `roles` is the list that must not hold the name yet; it must live longer than the dialog.
  frmNewRoleName(Platform& platform, const Control& roles);

  /// For an existing role: it shows the old name.
  void edit(const std::string& oldName);

  /// True unless the dialog was closed by OK with another name than before.
  bool cancelled() const { return cancelled_; }
  const std::string& roleName() const { return txtNewRoleName.text(); }

 protected:
  void loading() override { cancelled_ = true; }
  bool unloading() override;

 private:
  void accept();
  void complain(const char* text);

  Platform& platform_;
  const Control& roles_;
  std::string oldName_;
  bool cancelled_ = true;
  Control& lblRoleName;
  Control& txtNewRoleName;
  Control& btnOK;
  Control& btnCancel;
};

}  // namespace quorvel::addin
