// The question before a Task is deleted that hyperlinks point to.
#pragma once

#include <string>

#include "connect/dsr_visio_connect.h"
#include "model/form.h"

namespace quorvel::addin {

/// A dialog that is closed in any other way than by Yes is answered with No. Yes leaves the state of "Apply To All" in
/// `dsrVisioConnect::applyToAll`.
class frmProcessConnectorMsg : public Form {
 public:
  explicit frmProcessConnectorMsg(dsrVisioConnect& parent);

  /// To be called before the dialog is shown; `offersAll` shows the box for all Tasks of the deletion.
  void prepare(const std::string& question, bool offersAll);
  bool answeredNo() const { return answeredNo_; }

 protected:
  void loading() override;
  bool unloading() override;

 private:
  dsrVisioConnect& frmParent;
  Control& Label1;
  Control& chkapplytoAll;
  Control& btnYes;
  Control& btnNo;
  bool answeredNo_ = true;
};

/// Shows the dialog for the Task of this ID. `several`: it is deleted together with other shapes. True when the Task
/// must be kept.
bool askToKeepLinkedTask(dsrVisioConnect& connect, const std::string& id, bool several);

}  // namespace quorvel::addin
