// The paths of the hyperlink dialog: absolute and relative, typed and browsed, and what the target offers.
#include "base/basic_text.h"
#include "base/text.h"
#include "dialogs/frm_book_mark.h"
#include "dialogs/frm_customise_huperlink.h"
#include "hyperlinks/link_paths.h"
#include "hyperlinks/link_record.h"
#include "links/link_target.h"
#include "sheets/page_walk.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

// Read-only, not listed, hidden, macros disabled.
constexpr int openForReading = 2 | 8 | 64 | 128;

bool isWebAddress(std::string_view text) {
  return startsWithIgnoringCase(text, "http://") || startsWithIgnoringCase(text, "https://") ||
         startsWithIgnoringCase(text, "ftp://");
}

/// A drawing of this path, opened when it is not open, and then closed again.
class OpenedDrawing {
 public:
  OpenedDrawing(dsrVisioConnect& connect, const std::string& path) {
    if (!connect.platform.fileExists(path)) return;
    document_ = openDocument(connect.gvsoApp, path);
    if (document_) return;
    document_ = connect.gvsoApp.Documents().OpenEx(path, openForReading);
    isOpened_ = bool(document_);
  }
  ~OpenedDrawing() {
    if (isOpened_) document_.Close();
  }
  OpenedDrawing(const OpenedDrawing&) = delete;
  OpenedDrawing& operator=(const OpenedDrawing&) = delete;

  /// Null when there is no such drawing.
  const Document& document() const { return document_; }

 private:
  Document document_;
  bool isOpened_ = false;
};

}  // namespace

void frmcustomisehuperlink::addPathRules() {
  for (PathBoxes* boxes : {&taskPath_, &documentPath_, &programPath_}) {
    boxes->optionAbsolute.onClick = [this, boxes] {
      if (boxes->optionAbsolute.isOn()) goAbsolute(*boxes);
    };
    boxes->optionRelative.onClick = [this, boxes] {
      if (boxes->optionRelative.isOn()) goRelative(*boxes);
    };
  }
  Combrowse_Task.onClick = [this] { browseTask(); };
  Comdbrowes_Document.onClick = [this] { browseDocument(); };
  cmdBrowes_Program.onClick = [this] { browseProgram(); };
  Command5.onClick = [this] { browseBookmarks(); };
  Command1.onClick = [this] { browseWeb(); };
  Comb_Task.onDropDown = [this] {
    const OpenedDrawing target(frmParent, taskPath_.path);
    fillTasks(target.document() ? target.document() : drawing_);
  };
  const KindPage& page = pageOf(linkKinds::task);
  Comb_Page.onLostFocus = [this, &page] {
    if (!linksToOwnDrawing()) return;
    page.description.setText(Comb_Page.text().empty() ? fileName() : Comb_Page.text());
  };
  Comb_Task.onLostFocus = [this, &page] {
    if (!linksToOwnDrawing()) return;
    const std::string task = Comb_Task.text();
    page.description.setText(task.empty() ? Comb_Page.text() : subAddressOf(Comb_Page.text(), task));
  };
}

void frmcustomisehuperlink::enableBox(PathBoxes& boxes, bool isRelative) {
  boxes.absolute.setEnabled(!isRelative);
  boxes.relative.setEnabled(isRelative);
}

void frmcustomisehuperlink::showPath(PathBoxes& boxes, const std::string& text, bool isRelative) {
  const Filling filling(filling_);
  boxes.absolute.setText("");
  boxes.relative.setText("");
  (isRelative ? boxes.optionRelative : boxes.optionAbsolute).setState(CheckState::On);
  enableBox(boxes, isRelative);
  (isRelative ? boxes.relative : boxes.absolute).setText(text);
}

void frmcustomisehuperlink::clearPath(PathBoxes& boxes) {
  // In a drawing that was never saved only the absolute box can be used.
  showPath(boxes, "", boxes.optionRelative.enabled());
  boxes.path.clear();
}

void frmcustomisehuperlink::goAbsolute(PathBoxes& boxes) {
  const Filling filling(filling_);
  const std::string text = boxes.relative.text();
  enableBox(boxes, false);
  if (text.empty()) return;
  const bool isChosenFile = holdsFullPath(text) || get_relative_path_to(folder(), boxes.path) == text;
  boxes.absolute.setText(isChosenFile ? boxes.path : text);
  boxes.relative.setText("");
}

void frmcustomisehuperlink::goRelative(PathBoxes& boxes) {
  const Filling filling(filling_);
  const std::string text = boxes.absolute.text();
  if (text.empty()) {
    enableBox(boxes, true);
    return;
  }
  const std::string& full = holdsFullPath(text) || boxes.path.empty() ? text : boxes.path;
  const bool isWeb = &boxes == &documentPath_ && isWebAddress(text);
  const std::string relative =
      isWeb || !haveSameRoot(full, folder()) ? std::string() : get_relative_path_to(folder(), full);
  if (relative.empty()) {
    boxes.relative.setText("");
    boxes.optionAbsolute.setState(CheckState::On);
    return;
  }
  enableBox(boxes, true);
  boxes.relative.setText(relative);
  if (&boxes != &programPath_) boxes.absolute.setText("");
}

void frmcustomisehuperlink::pathChanged(const Control& box) {
  const std::string text = box.text();
  if (&box == &documentPath_.relative && isWebAddress(text)) {
    showPath(documentPath_, text, false);
    documentPath_.path = text;
    return;
  }
  // What is filled in by code has its path from there.
  if (filling_ > 0) return;
  const bool isFull = holdsFullPath(text);
  for (PathBoxes* boxes : {&documentPath_, &programPath_}) {
    // Of a file that is typed only a full path is known; that of a file chosen before is not this one's.
    if (&box == &boxes->absolute || &box == &boxes->relative) boxes->path = isFull ? text : std::string();
  }
  if (&box == &taskPath_.absolute) taskPath_.path = text;
  if (&box == &taskPath_.relative) taskPath_.path = isFull || text.empty() ? text : folder() + text;
}

bool frmcustomisehuperlink::linksToOwnDrawing() const {
  const std::string path =
      taskPath_.optionAbsolute.isOn() ? taskPath_.absolute.text() : get_Rel(drawing_, taskPath_.relative.text());
  return !notCurrentDOc(drawing_, path);
}

void frmcustomisehuperlink::fillPages(const Document& document) {
  Comb_Page.clearRows();
  Comb_Page.setText("");
  for (const Page& page : everyPage(document)) Comb_Page.addRow(page.Name().or_({}));
  Comb_Page.addRow("");
}

void frmcustomisehuperlink::fillTasks(const Document& document) {
  Comb_Task.clearRows();
  for (const Page& page : everyPage(document)) {
    if (!(page.Name() == Comb_Page.text())) continue;
    for (const Shape& shape : everyShape(page)) {
      if (IsTask(shape)) Comb_Task.addRow(shape.Name().or_({}));
    }
  }
}

void frmcustomisehuperlink::showTarget(const std::string& page, const std::string& task) {
  const OpenedDrawing target(frmParent, taskPath_.path);
  if (target.document()) fillPages(target.document());
  // Also of a drawing that can't be opened now: the link keeps leading there.
  Comb_Page.setText(page);
  if (target.document()) fillTasks(target.document());
  Comb_Task.setText(task);
}

void frmcustomisehuperlink::browseTask() {
  const Maybe<std::string> file =
      frmParent.platform.chooseFile({"Browse", "Visio/Quorvel Files (*.vsd; *.vst)|*.vsd; *.vst", folder()});
  if (!file) return;
  taskPath_.path = *file;
  const bool isRelative = taskPath_.optionRelative.isOn() && haveSameRoot(*file, folder());
  showPath(taskPath_, isRelative ? get_relative_path_to(folder(), *file) : *file, isRelative);
  const OpenedDrawing target(frmParent, *file);
  fillPages(target.document());
  Comb_Task.clearRows();
  Comb_Task.setText("");
  Comb_Zoom.setText(std::string(defaultZoom));
  pageOf(linkKinds::task).description.setText(fileNameOf(*file));
}

void frmcustomisehuperlink::showChosenFile(PathBoxes& boxes, const std::string& file) {
  boxes.path = file;
  if (!offersRelative() || !haveSameRoot(file, folder())) {
    showPath(boxes, file, false);
    return;
  }
  showPath(boxes, get_relative_path_to(folder(), folderOf(file)) + fileNameOf(file), true);
  const Filling filling(filling_);
  boxes.absolute.setText(file);
}

void frmcustomisehuperlink::browseDocument() {
  const std::string file =
      frmParent.platform
          .chooseFile({"Browse",
                       "Office Documents (*.xls;*.doc;*.obd;*.ppt;*.mdb)|*.xls;*.doc;*.obd;*.ppt;*.mdb|All Files "
                       "(*.*)|*.*|PDF Document (*.pdf)| *.pdf",
                       folder()})
          .or_({});
  if (frmParent.platform.fileExists(file)) showChosenFile(documentPath_, file);
  txtInternalLoc.setText("");
  pageOf(linkKinds::document).description.setText(fileNameOf(file));
}

void frmcustomisehuperlink::browseProgram() {
  const std::string file = frmParent.platform.chooseFile({"Browse", "Executables (*.exe) | *.exe", folder()}).or_({});
  if (!frmParent.platform.fileExists(file)) return;
  showChosenFile(programPath_, file);
  pageOf(linkKinds::program).description.setText(fileNameOf(file));
}

void frmcustomisehuperlink::browseBookmarks() {
  Platform& platform = frmParent.platform;
  if (documentPath_.absolute.text().empty() && documentPath_.relative.text().empty()) return;
  const std::string path = documentPath_.optionRelative.isOn() ? documentPath_.path : documentPath_.absolute.text();
  const bool isWordFile = right(path, 3) == "doc" && platform.fileExists(path);
  const Maybe<std::vector<std::string>> names =
      isWordFile ? platform.bookmarksOf(path) : Maybe<std::vector<std::string>>();
  if (!names) {
    platform.showMessage({.text = "Quorvel cannot browse for bookmarks in this type of document."});
    return;
  }
  if (names->empty()) {
    platform.showMessage({.text = "There are no bookmarks in this document"});
    return;
  }
  frmBookMark dialog(*names);
  platform.showModal(dialog);
  if (!dialog.chosen().empty()) txtInternalLoc.setText(dialog.chosen());
}

void frmcustomisehuperlink::browseWeb() {
  web_.reset();
  web_ = frmParent.platform.openBrowser(
      {.navigated = [this](const std::string& address) { txtAddressWebPage.setText(address); }, .quit = {}});
}

}  // namespace quorvel::addin
