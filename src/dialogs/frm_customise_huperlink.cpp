#include "dialogs/frm_customise_huperlink.h"

#include <algorithm>

#include "base/ask_again.h"
#include "dialogs/confirm_cancel.h"
#include "hyperlinks/link_paths.h"
#include "hyperlinks/link_record.h"
#include "sheets/document_cells.h"
#include "sheets/page_walk.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

constexpr const char* browseCaption = "...";
constexpr int columnsOfPage = 3;

}  // namespace

frmcustomisehuperlink::frmcustomisehuperlink(dsrVisioConnect& parent)
    : Form("frmcustomisehuperlink", "Hyperlinks"),
      frmParent(parent),
      drawing_(askAgain([&] { return parent.gvsoApp.ActiveWindow().Document(); })),
      fraKind(addFrame("fraKind", "HyperLink Type")),
      fraTask(addFrame("fraTask", "Add/Edit link details")),
      fraDocument(addFrame("fraDocument", "Add/Edit link details")),
      fraProgram(addFrame("fraProgram", "Add/Edit link details")),
      fraWebPage(addFrame("fraWebPage", "Add/Edit link details")),
      fraEmail(addFrame("fraEmail", "Add/Edit link details")),
      Option_Task(addOption("Option_Task", "Quorvel", 0)),
      Option_Document(addOption("Option_Document", "Document", 1)),
      Option_Program(addOption("Option_Program", "Program", 2)),
      Option_Web_page(addOption("Option_Web_page", "Web Page", 3)),
      OptEmail(addOption("OptEmail", "Email", 4)),
      taskPath_(addPath(fraTask, "Path to Quorvel", "txtAddress_Task", "txtaddressTask_relative", "Task")),
      documentPath_(
          addPath(fraDocument, "Path to Document", "txtAddress_Document", "txtAddressRelative_Doc", "Document")),
      programPath_(addPath(fraProgram, "Path to Program", "txtAddress_program", "txtProgram_Rel", "Program")),
      Combrowse_Task(addTo(fraTask, ControlKind::Button, "Combrowse_Task", browseCaption, 0, 2)),
      Comb_Page(addTo(fraTask, ControlKind::ComboBox, "Comb_Page", "Page", 2)),
      Comb_Task(addTo(fraTask, ControlKind::ComboBox, "Comb_Task", "Task", 2, 1)),
      Comb_Zoom(addTo(fraTask, ControlKind::ComboBox, "Comb_Zoom", "Zoom", 2, 2)),
      Comdbrowes_Document(addTo(fraDocument, ControlKind::Button, "Comdbrowes_Document", browseCaption, 0, 2)),
      txtInternalLoc(addTo(fraDocument, ControlKind::TextBox, "txtInternalLoc", "Bookmark", 2)),
      Command5(addTo(fraDocument, ControlKind::Button, "Command5", "....", 2, 2)),
      cmdBrowes_Program(addTo(fraProgram, ControlKind::Button, "cmdBrowes_Program", browseCaption, 0, 2)),
      txtAddressWebPage(addTo(fraWebPage, ControlKind::TextBox, "txtAddressWebPage", " Address", 0)),
      Command1(addTo(fraWebPage, ControlKind::Button, "Command1", browseCaption, 0, 2)),
      txtbookMark_Email(addTo(fraWebPage, ControlKind::TextBox, "txtbookMark_Email", "BookMark", 2)),
      txtAddress_email(addTo(fraEmail, ControlKind::TextBox, "txtAddress_email", "Email Address", 0)),
      pages_(addPages()),
      lblLinks(add(ControlKind::Label, "lblLinks", "Existing links for this Item. Select to Edit ")),
      lstLinks(add(ControlKind::ListView, "lstLinks")),
      cmdNew(add(ControlKind::Button, "cmdNew", "New")),
      CmdDelete(add(ControlKind::Button, "CmdDelete", "Delete")),
      cmbApplay(add(ControlKind::Button, "cmbApplay", "Apply")),
      cmbSaveAndClose(add(ControlKind::Button, "cmbSaveAndClose", "Apply And Close")),
      cmbCancle(add(ControlKind::Button, "cmbCancle", "Cancel")) {
  layOut();
  addRules();
}

Control& frmcustomisehuperlink::addFrame(const char* name, const char* caption) {
  Control& frame = add(ControlKind::Frame, name, caption);
  // The pages are at one place, and one of them shows.
  frame.gridRow = name == std::string_view("fraKind") ? 0 : 1;
  frame.columnSpan = 5;
  return frame;
}

Control& frmcustomisehuperlink::addOption(const char* name, const char* caption, int column) {
  return addTo(fraKind, ControlKind::OptionButton, name, caption, 0, column);
}

Control& frmcustomisehuperlink::addTo(const Control& frame, ControlKind kind, const char* name, const char* caption,
                                      int row, int column) {
  const bool isBox = kind == ControlKind::TextBox || kind == ControlKind::ComboBox;
  Control& control = add(kind, name, isBox ? "" : caption);
  if (isBox) control.label = caption;
  control.frame = frame.name();
  control.gridRow = row;
  control.gridColumn = column;
  if (kind == ControlKind::TextBox) control.columnSpan = columnsOfPage - 1;
  return control;
}

frmcustomisehuperlink::PathBoxes frmcustomisehuperlink::addPath(const Control& frame, const char* label,
                                                                const char* absolute, const char* relative,
                                                                const char* options) {
  const std::string absoluteOption = std::string("OptAbsolute_") + options,
                    relativeOption = std::string("OptRelative_") + options;
  Control& absoluteBox = addTo(frame, ControlKind::TextBox, absolute, label, 0);
  Control& relativeBox = addTo(frame, ControlKind::TextBox, relative, "", 1);
  Control& isAbsolute = addTo(frame, ControlKind::OptionButton, absoluteOption.c_str(), "Absolute", 0, 3);
  Control& isRelative = addTo(frame, ControlKind::OptionButton, relativeOption.c_str(), "Relative", 1, 3);
  return {absoluteBox, relativeBox, isAbsolute, isRelative, {}};
}

std::vector<frmcustomisehuperlink::KindPage> frmcustomisehuperlink::addPages() {
  const auto description = [&](const Control& frame, const char* name) -> Control& {
    return addTo(frame, ControlKind::TextBox, name, "Description", 3);
  };
  const auto newWindow = [&](const Control& frame, const char* name) {
    return &addTo(frame, ControlKind::CheckBox, name, "Open page in new window?", 4);
  };
  const auto copy = [&](const Control& frame, const char* name) {
    addTo(frame, ControlKind::Button, name, "Copy previously defined link", 4, 1).onClick = [this] { copyExisting(); };
  };
  std::vector<KindPage> pages;
  pages.push_back({linkKinds::task, "Task", Option_Task, fraTask, taskPath_.absolute,
                   description(fraTask, "txtDescription_Task"), newWindow(fraTask, "chkNewWindow_Task"), nullptr,
                   &taskPath_});
  copy(fraTask, "btncopypreviouslyTask");
  pages.push_back({linkKinds::document, "Doc", Option_Document, fraDocument, documentPath_.absolute,
                   description(fraDocument, "txtDescription_Document"), newWindow(fraDocument, "chkNewWindow_Document"),
                   &txtInternalLoc, &documentPath_});
  copy(fraDocument, "btnCopypreviouslyDoc");
  pages.push_back({linkKinds::program, "Program", Option_Program, fraProgram, programPath_.absolute,
                   description(fraProgram, "txtDescription_Program"), nullptr, nullptr, &programPath_});
  // These two have each other's names; what they copy is decided by the chosen kind.
  copy(fraProgram, "btncopypreviouslywebpage");
  pages.push_back({linkKinds::webPage, "Web_Page", Option_Web_page, fraWebPage, txtAddressWebPage,
                   description(fraWebPage, "txtDescription_WebPage"), newWindow(fraWebPage, "chkNewWindow_WebPage"),
                   &txtbookMark_Email, nullptr});
  copy(fraWebPage, "Command6");
  pages.push_back({linkKinds::email, "Email", OptEmail, fraEmail, txtAddress_email,
                   description(fraEmail, "txtDescription_Email"), nullptr, nullptr, nullptr});
  copy(fraEmail, "btnCopypreviouslyEmail");
  return pages;
}

void frmcustomisehuperlink::layOut() {
  lblLinks.gridRow = 2;
  lstLinks.gridRow = 3;
  lblLinks.columnSpan = lstLinks.columnSpan = 5;
  for (const std::string_view title : linkColumnTitles) lstLinks.columnTitles.emplace_back(title);
  lstLinks.shownColumns = 2;
  lstLinks.widthInCharacters = 80;
  lstLinks.heightInLines = 8;
  for (const auto& control : controls()) {
    if (control->kind() == ControlKind::TextBox) control->widthInCharacters = 50;
  }
  int column = 0;
  for (Control* button : {&cmdNew, &CmdDelete, &cmbApplay, &cmbSaveAndClose, &cmbCancle}) {
    button->gridRow = 4;
    button->gridColumn = column++;
  }
  cmbSaveAndClose.isDefaultButton = true;
  cmbCancle.isCancelButton = true;
}

void frmcustomisehuperlink::addRules() {
  for (const auto& each : controls()) {
    Control& control = *each;
    if (control.kind() == ControlKind::TextBox || control.kind() == ControlKind::ComboBox)
      control.onChange = [this, &control] { boxChanged(control); };
    if (control.kind() == ControlKind::ComboBox) control.onSelect = [this] { dirty_ = hasEntry_ = true; };
    if (control.kind() == ControlKind::CheckBox) control.onClick = [this] { dirty_ = hasEntry_ = true; };
  }
  for (const KindPage& page : pages_) {
    page.option.onClick = [this, &page] {
      if (page.option.isOn() && !goesBackToKind_) kindChosen(page);
    };
  }
  addPathRules();
  lstLinks.onSelect = [this] { rowClicked(); };
  // A click beside the rows.
  lstLinks.onClick = [this] { currentRow_ = -1; };
  cmdNew.onClick = [this] { newRow(); };
  CmdDelete.onClick = [this] { deleteRow(); };
  cmbApplay.onClick = [this] { apply(); };
  cmbSaveAndClose.onClick = [this] {
    if (apply()) close();
  };
  cmbCancle.onClick = [this] {
    if (!dirty_ || confirmsCancel(frmParent.platform)) close();
  };
}

void frmcustomisehuperlink::boxChanged(const Control& box) {
  dirty_ = hasEntry_ = true;
  if (&box == &txtAddress_email) pageOf(linkKinds::email).description.setText(box.text());
  pathChanged(box);
}

void frmcustomisehuperlink::loading() {
  currentRow_ = 0;
  for (const std::string_view choice : zoomChoices) Comb_Zoom.addRow(std::string(choice));
  Comb_Zoom.setText(std::string(defaultZoom));
  showOnly(nullptr);
  const Window window = askAgain([&] { return frmParent.gvsoApp.ActiveWindow(); });
  const Selection selection = askAgain([&] { return window.Selection(); });
  const bool hasTaskOfOtherPage = containProcessConectorOrSubtask(selection);
  selection_ = everyItem(selection);

  for (PathBoxes* boxes : {&taskPath_, &documentPath_, &programPath_}) {
    const bool offered = isSaved() || boxes == &taskPath_;
    boxes->optionAbsolute.setEnabled(offered);
    boxes->optionRelative.setEnabled(offered);
    enableBox(*boxes, offered);
  }
  const auto allowTaskOnly = [&] {
    for (const KindPage& page : pages_) page.option.setEnabled(page.kind == linkKinds::task);
  };
  if (hasTaskOfOtherPage && isSaved()) {
    allowTaskOnly();
    chooseKind(pageOf(linkKinds::task));
  }
  if (isSaved()) fillPages(drawing_);
  lstLinks.clearRows();
  if (selection_.size() == 1) {
    if (hasTaskOfOtherPage) {
      allowTaskOnly();
      if (!Option_Task.isOn()) chooseKind(pageOf(linkKinds::task));
    } else {
      chooseKind(pageOf(linkKinds::document));
    }
    std::size_t count = 0;
    for (const LinkRow& row : readLinks(selection_.front(), drawing_, offersRelative())) putRow(count++, row);
    if (hasTaskOfOtherPage) currentRow_ = -1;
  } else if (!hasTaskOfOtherPage) {
    chooseKind(pageOf(linkKinds::document));
  }
  taskPath_.path = fullPathOf(drawing_);
  // The boxes were filled by code, the user has changed nothing.
  dirty_ = hasEntry_ = false;
}

bool frmcustomisehuperlink::unloading() {
  dirty_ = false;
  web_.reset();
  return true;
}

std::string frmcustomisehuperlink::fileName() const {
  return askAgain([&] { return drawing_.Name(); }).or_({});
}

std::string frmcustomisehuperlink::folder() const {
  return askAgain([&] { return drawing_.Path(); }).or_({});
}

bool frmcustomisehuperlink::isSaved() const { return wasSavedReads(drawing_, "TRUE"); }

const frmcustomisehuperlink::KindPage* frmcustomisehuperlink::chosenPage() const {
  const auto page = std::ranges::find_if(pages_, [](const KindPage& each) { return each.option.isOn(); });
  return page == pages_.end() ? nullptr : &*page;
}

const frmcustomisehuperlink::KindPage& frmcustomisehuperlink::pageOf(std::string_view kind) const {
  return *std::ranges::find(pages_, kind, &KindPage::kind);
}

void frmcustomisehuperlink::chooseKind(const KindPage& page) {
  if (page.option.isOn()) {
    kindChosen(page);
  } else {
    page.option.setState(CheckState::On);
  }
}

void frmcustomisehuperlink::showOnly(const Control* frame) {
  for (const KindPage& page : pages_) {
    page.frame.setVisible(&page.frame == frame);
    for (const auto& control : controls()) {
      if (control->frame == page.frame.name()) control->setVisible(&page.frame == frame);
    }
  }
}

void frmcustomisehuperlink::kindChosen(const KindPage& page) {
  const bool isTask = page.kind == linkKinds::task;
  if (isTask && !isSaved()) {
    frmParent.platform.showMessage({.text = "You should save the document first"});
    // Back to the page that shows, with what is typed there.
    const auto shown = std::ranges::find_if(pages_, [](const KindPage& each) { return each.frame.visible(); });
    goesBackToKind_ = true;
    page.option.setState(CheckState::Off);
    if (shown != pages_.end()) shown->option.setState(CheckState::On);
    goesBackToKind_ = false;
    return;
  }
  showOnly(&page.frame);
  Comb_Page.setEnabled(isTask);
  Comb_Task.setEnabled(isTask);
  currentRow_ = -1;
  clearLinkFields(page);
  if (!isTask) return;
  const Filling filling(filling_);
  page.description.setText(fileName());
  taskPath_.relative.setText(fileName());
  taskPath_.path = fullPathOf(drawing_);
  fillPages(drawing_);
  Comb_Task.clearRows();
  Comb_Task.setText("");
}

void frmcustomisehuperlink::clearLinkFields(const KindPage& page) {
  const Filling filling(filling_);
  page.description.setText("");
  if (page.path) {
    clearPath(*page.path);
  } else {
    page.address.setText("");
  }
  if (page.bookmark) page.bookmark->setText("");
  if (page.newWindow && page.kind != linkKinds::task) page.newWindow->setState(CheckState::Off);
  if (page.kind == linkKinds::task) {
    Comb_Zoom.setText(std::string(defaultZoom));
    Comb_Zoom.setEnabled(true);
  }
  // The bookmark of web pages is emptied with the program's fields too.
  if (page.kind == linkKinds::program) txtbookMark_Email.setText("");
}

}  // namespace quorvel::addin
