#include "dialogs/frm_customize_role_names.h"

#include <algorithm>
#include <vector>

#include "base/basic_text.h"
#include "dialogs/frm_new_role_name.h"
#include "schema/cells.h"
#include "shapes/roles_in_use.h"
#include "vocab/parse.h"
#include "vocab/role_names.h"

namespace quorvel::addin {
namespace {

// The platform adds the other kinds of files that the host reads.
constexpr const char* importFilter = "drawing file (*.vsd;*.vdx)|*.vsd;*.vdx|template file (*.vst;*.vtx)|*.vst;*.vtx";

// Copy, read-only, not listed, minimized, hidden, macros disabled.
constexpr int openForReading = 1 | 2 | 8 | 16 | 64 | 128;

}  // namespace

frmCustomizeRoleNames::frmCustomizeRoleNames(dsrVisioConnect& parent, const Document& document)
    : Form("frmCustomizeRoleNames", "Customize Role Names"),
      frmParent(parent),
      document_(document),
      lblOrganizationRoles(add(ControlKind::Label, "lblOrganizationRoles", "Organization Roles")),
      lstRoleNames(add(ControlKind::ListBox, "lstRoleNames")),
      btnNew(add(ControlKind::Button, "btnNew", "New ...")),
      btnEdit(add(ControlKind::Button, "btnEdit", "Edit ...")),
      btnImport(add(ControlKind::Button, "btnImport", "Import ...")),
      btnDelete(add(ControlKind::Button, "btnDelete", "Delete")),
      btnClose(add(ControlKind::Button, "btnClose", "Close")) {
  lstRoleNames.sorted = true;
  lstRoleNames.multipleSelection = true;
  lstRoleNames.widthInCharacters = 40;
  lstRoleNames.heightInLines = 14;
  lstRoleNames.gridRow = 1;
  lblOrganizationRoles.columnSpan = lstRoleNames.columnSpan = 5;
  int column = 0;
  for (Control* button : {&btnNew, &btnEdit, &btnImport, &btnDelete, &btnClose}) {
    button->gridRow = 2;
    button->gridColumn = column++;
  }
  btnClose.isDefaultButton = btnClose.isCancelButton = true;

  lstRoleNames.onSelect = [this] { refreshButtons(); };
  lstRoleNames.onKeyDown = [this](int key) {
    if ((key == keys::deleteKey || key == keys::keypadDelete) && btnDelete.enabled()) deleteRoles();
  };
  btnNew.onClick = [this] { addRole(); };
  btnEdit.onClick = [this] { editRole(); };
  btnImport.onClick = [this] { importRoles(); };
  btnDelete.onClick = [this] { deleteRoles(); };
  btnClose.onClick = [this] { close(); };
}

void frmCustomizeRoleNames::loading() {
  lstRoleNames.clearRows();
  const Cell list = document_.DocumentSheet().Cells(schema::documentCells::roleNames);
  const Maybe<std::string> roles = list.ResultStr(visio::unitsNone);
  wasRead_ = roles.has();
  const std::vector<std::string> names = parse(roles.or_({}), ";");
  for (std::size_t i = 0; i + 1 < names.size(); ++i) lstRoleNames.addRow(names[i]);
  refreshButtons();
}

bool frmCustomizeRoleNames::unloading() {
  // A list that could not be read must not be replaced by an empty one.
  if (!wasRead_ && lstRoleNames.rows().empty()) return true;
  std::vector<std::string> roles;
  for (const ListRow& row : lstRoleNames.rows()) roles.push_back(row.text());
  beginStep();
  const Cell list = document_.DocumentSheet().Cells(schema::documentCells::roleNames);
  list.FormulaForce(quotedAsIs(roleListText(roles)));
  return true;
}

void frmCustomizeRoleNames::addMissing(const std::string& list) {
  const std::vector<std::string> roles = parse(list, ";");
  for (std::size_t i = 0; i + 1 < roles.size(); ++i) {
    const bool stands =
        std::ranges::any_of(lstRoleNames.rows(), [&](const ListRow& row) { return row.text() == roles[i]; });
    if (!stands) lstRoleNames.addRow(roles[i]);
  }
}

void frmCustomizeRoleNames::beginStep() {
  if (!step_) step_.emplace(frmParent.gvsoApp, caption());
}

void frmCustomizeRoleNames::refreshButtons() {
  const auto selected = std::ranges::count_if(lstRoleNames.rows(), &ListRow::selected);
  btnDelete.setEnabled(selected > 0);
  btnEdit.setEnabled(selected == 1);
}

void frmCustomizeRoleNames::addRole() {
  frmNewRoleName dialog(frmParent.platform, lstRoleNames);
  frmParent.platform.showModal(dialog);
  if (!dialog.cancelled()) lstRoleNames.addRow(dialog.roleName());
}

void frmCustomizeRoleNames::editRole() {
  const int place = lstRoleNames.selectedRow();
  if (place < 0) return;
  const std::string oldName = lstRoleNames.rows()[static_cast<std::size_t>(place)].text();
  frmNewRoleName dialog(frmParent.platform, lstRoleNames);
  dialog.edit(oldName);
  frmParent.platform.showModal(dialog);
  if (!dialog.cancelled()) {
    lstRoleNames.removeRow(static_cast<std::size_t>(place));
    lstRoleNames.addRow(dialog.roleName());
    beginStep();
    UpdateOldRoleNames(frmParent, document_, oldName, dialog.roleName());
  }
  refreshButtons();
}

void frmCustomizeRoleNames::deleteRoles() {
  const MessageBox question{"Are you sure you want to delete the selected role(s) ?", "Quorvel",
                            MessageButtons::YesNoCancel, MessageIcon::Question};
  if (frmParent.platform.showMessage(question) == MessageAnswer::Yes) {
    std::vector<std::string> names;
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < lstRoleNames.rows().size(); ++i) {
      if (!lstRoleNames.rows()[i].selected) continue;
      names.push_back(lstRoleNames.rows()[i].text());
      places.push_back(i);
    }
    btnDelete.setEnabled(false);
    names = deletableRoles(frmParent, document_, std::move(names));
    // From the last to the first, so that the remaining indices stay valid.
    for (std::size_t i = names.size(); i-- > 0;) {
      if (!names[i].empty()) lstRoleNames.removeRow(places[i]);
    }
    beginStep();
    for (std::size_t i = names.size(); i-- > 0;) {
      if (!names[i].empty()) UpdateOldRoleNames(frmParent, document_, names[i], "");
    }
  }
  refreshButtons();
}

/// Ends at the first failing step without a message, even if the file then stays open.
void frmCustomizeRoleNames::importRoles() {
  const std::string file = frmParent.platform.chooseFile({"Import Role Names", importFilter, {}}).or_({});
  if (!frmParent.platform.fileExists(file)) {
    frmParent.platform.showMessage({"Invalid Path", "Quorvel", MessageButtons::Ok, MessageIcon::Stop});
    return;
  }
  const Documents documents = frmParent.gvsoApp.Documents();
  const Maybe<int> count = documents.Count();
  if (!count) return;
  Document source;
  for (int i = 1; i <= *count; ++i) {
    const Document document = documents.Item(i);
    const Maybe<std::string> path = document.Path(), name = document.Name();
    if (!path || !name) return;
    if (*path + *name == file) source = document;
  }
  const bool wasOpen = bool(source);
  if (!wasOpen) source = documents.OpenEx(file, openForReading);
  const Maybe<bool> hasRoles = source.DocumentSheet().CellExists(schema::documentCells::roleNames, 1);
  if (!hasRoles) return;
  if (hasRoles == true) {
    const Maybe<std::string> list =
        source.DocumentSheet().Cells(schema::documentCells::roleNames).ResultStr(visio::unitsNone);
    if (!list) return;
    addMissing(*list);
  }
  if (!wasOpen) source.Close();
}

}  // namespace quorvel::addin
