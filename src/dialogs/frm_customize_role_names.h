// The dialog that edits the organisation's roles.
#pragma once

#include <optional>
#include <string>

#include "connect/dsr_visio_connect.h"
#include "connect/undo_step.h"
#include "model/form.h"

namespace quorvel::addin {

/// Its list is the working copy: Tasks follow a rename or a deletion at once, while the document's list is written when
/// the dialog unloads, however it is closed. The changes cannot be discarded.
class frmCustomizeRoleNames : public Form {
 public:
  /// The drawing whose roles are edited, even when another one becomes active.
  frmCustomizeRoleNames(dsrVisioConnect& frmParent, const Document& document);

 protected:
  void loading() override;
  bool unloading() override;

 private:
  void addRole();
  void editRole();
  void importRoles();
  void deleteRoles();
  void refreshButtons();
  /// Adds the roles of a list's text that the dialog's list does not hold; letter case counts.
  void addMissing(const std::string& list);
  /// All that the dialog writes, and what its caller writes during its lifetime, is one undo step.
  void beginStep();

  dsrVisioConnect& frmParent;
  const Document document_;
  std::optional<UndoStep> step_;
  bool wasRead_ = false;
  Control& lblOrganizationRoles;
  Control& lstRoleNames;
  Control& btnNew;
  Control& btnEdit;
  Control& btnImport;
  Control& btnDelete;
  Control& btnClose;
};

}  // namespace quorvel::addin
