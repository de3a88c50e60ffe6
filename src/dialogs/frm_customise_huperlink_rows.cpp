// The list of links of the hyperlink dialog: its rows to and from the fields of a page, and to the shapes.
#include <algorithm>

#include "base/text.h"
#include "connect/undo_step.h"
#include "dialogs/frm_customise_huperlink.h"
#include "dialogs/frm_hyperlink_document.h"
#include "hyperlinks/link_indicators.h"
#include "hyperlinks/link_paths.h"
#include "hyperlinks/link_record.h"
#include "hyperlinks/write_links.h"
#include "vocab/parse.h"

namespace quorvel::addin {
namespace {

constexpr std::string_view mailStart = "mailto:";

/// The tag of a row that no shape has yet. A click on it makes it an edited one, which replaces nothing.
constexpr const char* neverWritten = "never written";

std::string withMailStart(const std::string& address) {
  return startsWithIgnoringCase(address, mailStart) ? address : std::string(mailStart) + address;
}

CheckState stateOf(bool isOn) { return isOn ? CheckState::On : CheckState::Off; }

}  // namespace

LinkRow frmcustomisehuperlink::rowAt(std::size_t index) const {
  LinkRow row;
  const std::vector<std::string>& texts = lstLinks.rows()[index].columns;
  std::copy_n(texts.begin(), std::min(texts.size(), row.size()), row.begin());
  return row;
}

void frmcustomisehuperlink::putRow(std::size_t index, const LinkRow& row) {
  if (index >= lstLinks.rows().size()) {
    lstLinks.addRow(std::vector<std::string>(row.begin(), row.end()));
    return;
  }
  for (std::size_t column = 0; column < row.size(); ++column) lstLinks.setRowText(index, column, row[column]);
}

bool frmcustomisehuperlink::validateEmail() {
  if (isValidEmail(txtAddress_email.text())) return true;
  frmParent.platform.showMessage({.text = "Please enter a valid email address"});
  txtAddress_email.focus();
  return false;
}

void frmcustomisehuperlink::putFields(LinkRow& row, const KindPage& page, const std::string& address) {
  row[linkColumns::kind] = page.kind;
  row[linkColumns::description] = page.description.text();
  row[linkColumns::location] = page.kind == linkKinds::email ? withMailStart(address) : address;
  if (page.newWindow) row[linkColumns::newWindow] = page.newWindow->isOn() ? "True" : "False";
  if (page.bookmark) row[linkColumns::page] = page.bookmark->text();
}

bool frmcustomisehuperlink::add_to_list(std::string_view key) {
  const KindPage& page = *std::ranges::find(pages_, key, &KindPage::key);
  if (page.kind == linkKinds::email && !validateEmail()) return false;
  const std::size_t count = lstLinks.rows().size();
  const bool hasCurrent = currentRow_ > 0;
  const std::size_t target = hasCurrent ? static_cast<std::size_t>(currentRow_) : count + 1;
  const bool isRelative = page.path && page.path->optionRelative.enabled() && page.path->optionRelative.isOn();
  const std::string address = (isRelative ? page.path->relative : page.address).text();
  if (!address.empty()) {
    const bool isNew = target > count;
    LinkRow row = isNew ? LinkRow() : rowAt(target - 1);
    putFields(row, page, address);
    row[linkColumns::state] = isNew ? linkStates::added : linkStates::edited;
    if (page.kind == linkKinds::task) {
      row[linkColumns::page] = Comb_Page.text();
      row[linkColumns::task] = Comb_Task.text();
      row[linkColumns::zoom] = zoomText(Comb_Zoom.text());
    }
    if (page.path) {
      row[linkColumns::relOrAbs] = isRelative ? pathKinds::relative : pathKinds::absolute;
      row[linkColumns::absolutePath] = page.path->path;
    }
    putRow(target - 1, row);
    if (isNew) lstLinks.setRowTag(target - 1, neverWritten);
  }
  currentRow_ = static_cast<int>(target);
  return true;
}

void frmcustomisehuperlink::appendListRow(const KindPage& page) {
  const std::string address = page.address.text();
  if (address.empty()) return;
  LinkRow row;
  putFields(row, page, address);
  row[linkColumns::state] = linkStates::added;
  if (page.path) {
    const bool isRelative = page.path->optionRelative.isOn();
    row[linkColumns::relOrAbs] = isRelative ? pathKinds::relative : pathKinds::absolute;
    row[linkColumns::absolutePath] = folderOf(address);
    row[linkColumns::relativePath] = get_relative_path_to(folder(), folderOf(address));
    row[linkColumns::documentName] = fileNameOf(address);
    if (isRelative) row[linkColumns::location] = row[linkColumns::relativePath] + fileNameOf(address);
  }
  putRow(lstLinks.rows().size(), row);
  lstLinks.setRowTag(lstLinks.rows().size() - 1, neverWritten);
}

void frmcustomisehuperlink::newRow() {
  const KindPage* const page = chosenPage();
  if (!page || !add_to_list(page->key)) return;
  if (page->kind == linkKinds::task || page->kind == linkKinds::document) {
    clearLinkFields(*page);
  } else {
    // These kinds get a second row and keep their fields.
    appendListRow(*page);
  }
  if (page->kind == linkKinds::task) clearTargets();
  currentRow_ = -1;
}

void frmcustomisehuperlink::clearTargets() {
  for (Control* box : {&Comb_Page, &Comb_Task}) {
    box->clearRows();
    box->setText("");
  }
  // Where no other kind can be chosen, the Task page could not be filled again by choosing it.
  if (!Option_Document.enabled()) kindChosen(pageOf(linkKinds::task));
  hasEntry_ = false;
}

void frmcustomisehuperlink::deleteRow() {
  const int row = lstLinks.selectedRow();
  const KindPage* const page = chosenPage();
  if (lstLinks.rows().empty()) return;
  if (row >= 0) lstLinks.removeRow(static_cast<std::size_t>(row));
  currentRow_ = -1;
  if (!page) return;
  const bool isTask = page->kind == linkKinds::task;
  const bool hasAddress = !page->address.text().empty() || (page->path && !page->path->relative.text().empty());
  if (isTask || hasAddress) clearLinkFields(*page);
  if (isTask) clearTargets();
}

void frmcustomisehuperlink::rowClicked() {
  const int index = lstLinks.selectedRow();
  if (index < 0) {
    currentRow_ = -1;
    return;
  }
  const KindPage* const before = chosenPage();
  if (currentRow_ > 0 && before) add_to_list(before->key);
  if (!fillFrom(rowAt(static_cast<std::size_t>(index)))) {
    currentRow_ = -1;
    return;
  }
  lstLinks.setRowText(static_cast<std::size_t>(index), linkColumns::state, std::string(linkStates::edited));
  currentRow_ = index + 1;
  dirty_ = hasEntry_ = false;
}

std::string frmcustomisehuperlink::fullTaskPath(const std::string& location, bool isRelative) const {
  // Links of older drawings count as relative whatever their address is.
  return isRelative && !holdsFullPath(location) ? folder() + location : location;
}

bool frmcustomisehuperlink::fillFrom(const LinkRow& row) {
  const std::string& kind = row[linkColumns::kind];
  const auto found = std::ranges::find_if(pages_, [&](const KindPage& each) {
    const bool byStart = each.kind == linkKinds::task || each.kind == linkKinds::document;
    return byStart ? kind.starts_with(each.kind) : kind == each.kind;
  });
  if (found == pages_.end()) return false;
  const KindPage& page = *found;
  chooseKind(page);
  if (!page.option.isOn()) return false;
  const Filling filling(filling_);
  if (page.path) {
    // Where relative paths are not offered, only what is in the absolute box is written.
    const bool isRelative = row[linkColumns::relOrAbs] == pathKinds::relative && page.path->optionRelative.enabled();
    const bool isTask = page.kind == linkKinds::task;
    showPath(*page.path, row[linkColumns::location], isRelative);
    page.path->path = isTask ? fullTaskPath(row[linkColumns::location], isRelative) : row[linkColumns::absolutePath];
  } else {
    page.address.setText(row[linkColumns::location]);
  }
  if (page.newWindow) page.newWindow->setState(stateOf(row[linkColumns::newWindow] == "True"));
  if (page.bookmark) page.bookmark->setText(row[linkColumns::page]);
  if (page.kind == linkKinds::task) {
    showTarget(row[linkColumns::page], row[linkColumns::task]);
    Comb_Zoom.setText(zoomChoiceOf(row[linkColumns::zoom]));
  }
  page.description.setText(row[linkColumns::description]);
  return true;
}

void frmcustomisehuperlink::copyExisting() {
  const KindPage* const page = chosenPage();
  if (!page) return;
  frmhyperlinkDocument picker(drawing_, page->kind);
  frmParent.platform.showModal(picker);
  if (picker.chosen()) fillFrom(*page, *picker.chosen());
}

void frmcustomisehuperlink::fillFrom(const KindPage& page, const ExistingLink& link) {
  const Filling filling(filling_);
  const bool isRelative = link.relOrAbs == "R", isTask = page.kind == linkKinds::task;
  const bool isProgram = page.kind == linkKinds::program;
  if (page.path) {
    showPath(*page.path, link.location, isRelative);
    if (isTask) {
      page.path->path = fullTaskPath(link.location, isRelative);
    } else if (isRelative) {
      page.path->absolute.setText(link.absPath + link.docName);
      page.path->path = isProgram ? link.absPath : link.absPath + link.docName;
    } else {
      page.path->relative.setText(get_relative_path_to(folder(), link.location));
      page.path->path = isProgram ? link.absPath : link.location;
    }
  } else {
    page.address.setText(link.location);
  }
  if (page.newWindow) page.newWindow->setState(stateOf(link.newWindow != "N"));
  if (page.bookmark) page.bookmark->setText(link.page);
  if (isTask) {
    showTarget(link.page, link.task);
    Comb_Zoom.setText(shownZoom(slot(parse(link.zoom, "="), 1).or_({})));
  }
  page.description.setText(link.description);
}

bool frmcustomisehuperlink::apply() {
  const KindPage* const page = chosenPage();
  // Unchanged fields are no link: the Task page opens with the name of the drawing itself.
  if (page && hasEntry_ && !add_to_list(page->key)) return false;
  std::vector<LinkRow> rows;
  for (std::size_t i = 0; i < lstLinks.rows().size(); ++i) {
    rows.push_back(rowAt(i));
    if (lstLinks.rows()[i].tag == neverWritten) rows.back()[linkColumns::state] = linkStates::added;
  }
  {
    const UndoStep step(frmParent.gvsoApp, caption());
    AddHyperLink_fnc(drawing_, selection_, rows);
    syncLinkIndicators(frmParent, selection_);
  }
  for (std::size_t i = 0; i < rows.size(); ++i) {
    putRow(i, rows[i]);
    lstLinks.setRowTag(i, {});
  }
  dirty_ = hasEntry_ = false;
  return true;
}

}  // namespace quorvel::addin
