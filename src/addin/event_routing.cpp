// The routing of host events: each handler is a guard and a call of the routine that does the work.
//
// Guards read the host and not flags where they can, because a handler's own writes may call it again.
// They read the document and page of the event, which need not be the active ones: a script works on drawings that
// are not shown. A test whose read fails is false. Handlers that end in a comment have no consequence.
#include <algorithm>
#include <vector>

#include "addin/host_menus.h"
#include "addin/toolbar.h"
#include "base/ask_again.h"
#include "base/text.h"
#include "commands/edit_hyperlinks.h"
#include "commands/last_save_date.h"
#include "connect/dsr_visio_connect.h"
#include "connect/host_queries.h"
#include "dialogs/frm_converting.h"
#include "document/document_created.h"
#include "document/document_opened.h"
#include "document/hover_upkeep.h"
#include "document/initialize_page.h"
#include "document/save_tracking.h"
#include "hyperlinks/page_rename.h"
#include "schema/cells.h"
#include "shapes/emptied_notes.h"
#include "shapes/find_and_replace.h"
#include "shapes/formula_changes.h"
#include "shapes/paste_batch.h"
#include "shapes/selection_marks.h"
#include "shapes/shape_added.h"
#include "shapes/shape_data_changes.h"
#include "shapes/shape_deletion.h"
#include "shapes/text_guards.h"

namespace quorvel::addin {
namespace {

/// Cells that the add-in itself writes around every save.
bool isOwnBookkeeping(std::string_view name) {
  if (equalIgnoringCase(name, schema::documentCells::addinIsFound)) return true;
  // "Actions.Menu[1]" and, of a row with a name, "Actions.Row_1.Menu".
  if (!startsWithIgnoringCase(name, "Actions.")) return false;
  return startsWithIgnoringCase(name.substr(name.rfind('.') + 1), "Menu");
}

bool showsDrawing(const Window& window) {
  const auto caption = window.Caption();
  return window.Type() == visio::windowDrawing && caption && !containsIgnoringCase(*caption, ".vss");
}

constexpr int rightButton = 2;

/// The host's shape data dialog, and its Replace.
constexpr int shapeDataScope = 1312, replaceScope = 1179;

}  // namespace

// Documents.

void dsrVisioConnect::DocumentCreated(Document document) {
  if (!hasQuorvelTemplate(document)) return;
  CreateCommandBar(*this, "Quorvel");
  gvsoApp_DocumentCreated(*this, document);
  overWriteHyperlinkBtnFn(*this);
  insertControlDocLastSave(*this);
}

void dsrVisioConnect::DocumentOpened(Document document) {
  if (hasQuorvelTemplate(document)) {
    frmConverting note;
    if (versionOf(document) < firstCurrentVersion) platform.showNote(note);
    upgradeDocument(*this, document);
    note.hide();
    CreateCommandBar(*this, "Quorvel");
    toolbar.SetVisible(true);
    overWriteHyperlinkBtnFn(*this);
    takeUpDocument(*this, document);
  }
  insertControlDocLastSave(*this);
  // What was converted is converted again until the user saves it: opening alone changes no file.
  document.SetSaved(true);
}

void dsrVisioConnect::BeforeDocumentSave(Document document) {
  hideMarks(*this, document);
  beforeSave(document);
}

void dsrVisioConnect::BeforeDocumentSaveAs(Document document) {
  hideMarks(*this, document);
  beforeSaveAs(*this, document);
}

void dsrVisioConnect::DocumentSaved(Document document) {
  showMarks(*this, document);
  afterSave(document);
}

void dsrVisioConnect::DocumentSavedAs(Document document) {
  showMarks(*this, document);
  afterSaveAs(*this, document);
}

void dsrVisioConnect::BeforeDocumentClose(Document document) {
  forgetSelection(*this, document);
  if (!hasQuorvelTemplate(document) || !toolbarBuilt) return;
  const std::vector<Document> open = gvsoApp.Documents().all();
  if (std::ranges::count_if(open, hasQuorvelTemplate) > 1) return;
  deleteDocLastSave(*this);
  // The dialog of maps is of no use in other drawings.
  resetHyperlinkBtnFn(*this);
  removeToolbar(*this);
}

void dsrVisioConnect::AppActivated(Application) { endCancelledSaveAs(*this); }

void dsrVisioConnect::WindowActivated(Window window) {
  if (!toolbarBuilt || !(window.Type() == visio::windowDrawing) || !(toolbar.Enabled() == true)) return;
  const bool isOurs = hasQuorvelTemplate(window.Document());
  if (isOurs) {
    overWriteHyperlinkBtnFn(*this);
    insertControlDocLastSave(*this);
  } else {
    resetHyperlinkBtnFn(*this);
    deleteDocLastSave(*this);
  }
  toolbar.SetVisible(isOurs);
}

// Pages.

void dsrVisioConnect::PageAdded(Page page) {
  if (isForeground(page) && isMap(page.Document())) initializePage(*this, page);
}

void dsrVisioConnect::PageChanged(Page page) {
  if (!isMap(page.Document())) return;
  fitToPageKind(*this, page);
  gvsoApp_PageChanged(*this, page);
}

// Shapes and cells.

void dsrVisioConnect::ShapeAdded(Shape shape) {
  const Page page = askAgain([&] { return shape.ContainingPage(); });
  unmarkCopyLater(*this, shape);
  if (askAgain([&] { return isForeground(page); })) gvsoApp_ShapeAdded(*this, shape, page);
}

void dsrVisioConnect::BeforeShapeDelete(Shape shape) { gvsoApp_BeforeShapeDelete(*this, shape); }

void dsrVisioConnect::CellChanged(Cell cell) {
  // For cells of masters and of background pages no more than the class of their shape is read.
  const std::string name = askAgain([&] { return cell.Name(); }).or_({});
  if (!isOwnBookkeeping(name)) gvsoApp_CellChanged(*this, cell, name);
}

void dsrVisioConnect::FormulaChanged(Cell cell) { gvsoApp_FormulaChanged(*this, cell); }

void dsrVisioConnect::SelectionChanged(Window window) {
  if (!(window.SubType() == visio::windowPage)) return;
  const Page page = window.Page();
  if (!isForeground(page)) return;
  endCancelledSaveAs(*this);
  beginPasteBatch(*this, window, page.Document());
  markSelection(*this, window, page.Document());
  showDisplayStates(*this, window);
}

// Text.

void dsrVisioConnect::BeforeShapeTextEdit(Shape shape) { gvsoApp_BeforeShapeTextEdit(shape); }

void dsrVisioConnect::ShapeExitedTextEdit(Shape shape) { gvsoApp_ShapeExitedTextEdit(*this, shape); }

void dsrVisioConnect::TextChanged(Shape shape) {
  if (flagFindReplaceActive && flagFindScopeEntered) gvsoApp_TextChanged(*this, shape);
}

void dsrVisioConnect::BeforeModal(Application) { gvsoApp_BeforeModal(*this); }

void dsrVisioConnect::AfterModal(Application) { gvsoApp_AfterModal(*this); }

void dsrVisioConnect::EnterScope(int scope, std::string_view) {
  if (scope == shapeDataScope) removeMarksOfEmptyNotes(*this);
  if (scope == replaceScope) enterReplaceScope(*this);
}

void dsrVisioConnect::ExitScope(int scope, std::string_view) {
  // The notes were emptied in the dialog that now closes.
  if (scope == shapeDataScope) removeMarksOfEmptyNotes(*this);
  if (scope == replaceScope) exitReplaceScope(*this);
}

// Commands and the mouse.

void dsrVisioConnect::MarkerEvent(int, std::string_view context) {
  if (context.ends_with("cmd=1")) editHyperlinks(*this);
  if (context.ends_with("cmd=2")) insertLastSaveDate(*this);
}

void dsrVisioConnect::Click(CommandBarButton button) { runButton(*this, button); }

void dsrVisioConnect::MouseDown(int button, int, double, double) { flag_right = button == rightButton; }

void dsrVisioConnect::MouseMove(int, int, double x, double y) {
  // The pointer is over the window that is active; the event does not say which page.
  if (showsDrawing(gvsoApp.ActiveWindow())) gvsoApp_MouseMove(*this, x, y);
}

}  // namespace quorvel::addin
