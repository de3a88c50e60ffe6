// The add-in's one object: the state that is kept from one host event to the next, and the listener of all host events.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "model/platform.h"
#include "model/upkeep_listener.h"
#include "schema/details.h"

namespace quorvel::addin {

class frmCopiedTaskIdSuggestion;
class frmProcessConnectorMsg;
class frmTaskIdSuggestion;
struct Deletion;
struct ReplacedTexts;
struct SelectionMarks;

/// One paste: all shapes that are added between two selection changes. Each question is asked once for it. It belongs
/// to the drawing that is pasted into; see shapes/paste_batch.h.
struct PasteBatch {
  Document batchDocument;
  std::vector<Shape> batchShapes;      ///< what is pasted; empty until the first copy of a Task or Task Link is handled
  int batchTasks = 0;                  ///< the Tasks among them, as many as there were at first
  bool timeUnitsChecked = false;       ///< their time units were compared with those of the document
  bool flagShapeAdded = false;         ///< the questions about the IDs are still to be asked
  bool flagTimeUnitAbbr = false;       ///< the question about time unit abbreviations was asked
  bool flagFeqAbbr_1 = false;          ///< "different description" was asked
  bool flagFeqAbbr_2 = false;          ///< "different abbreviation" was asked
  bool flagFeqAbbrNew = false;         ///< "new frequency" was asked
  bool flagContinueFreqCopy = false;   ///< the answer to either of the first two frequency questions
  bool flagAddNewFreq = false;         ///< the answer to the third
  bool flagKeepTaskIdNumbers = false;  ///< the copied Tasks keep their numbers
  std::string strTaskIdLetters;        ///< the letters of the batch
  long iTaskIdNumber = 0;              ///< the number that the batch's next Task gets
};

/// Everything that must be kept is in the drawing; the state here may be lost when the host ends. The routines that do
/// the work are free functions in the other folders; they take this object and run on the host's one thread. Their own
/// writes may raise events that call them again.
class dsrVisioConnect : public UpkeepListener, public PasteBatch {
 public:
  explicit dsrVisioConnect(Platform& platform);
  dsrVisioConnect(const dsrVisioConnect&) = delete;
  dsrVisioConnect& operator=(const dsrVisioConnect&) = delete;
  ~dsrVisioConnect() override { AddinInstance_OnDisconnection(); }

  /// Starts to receive host events. A failing step is skipped; connecting to another host disconnects from the first.
  void AddinInstance_OnConnection(Application application);
  /// Disconnects from the host and deletes the dialogs; no event is received after this. Allowed inside an event.
  void AddinInstance_OnDisconnection();

  Platform& platform;

  /// Asks the user for the letters and the first number of the page's Task IDs; see dialogs/ask_task_id_suggestion.h.
  /// A member, because the drop of a Task calls it and may not include dialogs.
  bool (*const askTaskIds)(dsrVisioConnect& connect, const Page& page);
  /// Asks how the Tasks of a paste get their IDs; the answers go into the batch. False when the user refused.
  bool (*const askCopiedTaskIds)(dsrVisioConnect& connect, const Page& page);
  /// Asks the user whether a Task that hyperlinks point to is deleted; see dialogs/frm_process_connector_msg.h.
  bool (*const keepsLinkedTask)(dsrVisioConnect& connect, const std::string& id, bool several);

  // The host, and what one event handler keeps for the next.
  Application gvsoApp;        ///< null while not connected
  bool bFlagSaveAs = false;   ///< a Save As was begun, and the document's cells must still be restored
  Document documentSavedAs;   ///< that document
  bool flag_right = false;    ///< the last mouse press was the right button
  bool DeleteShape = false;   ///< a deletion is pending; cleared by the next selection change
  bool toolbarBuilt = false;  ///< the toolbar exists while a map is open
  // The toolbar and its buttons, null while it does not exist; see addin/toolbar.h. No button is made for two of them.
  CommandBar toolbar;
  CommandBarButton cbrBtnTaskLinkDisplayOption, cbrBtnTaskdisplay, cbrBtnTaskDisplayOption, cbrBtnRenumberTasks,
      cbrBtnCustomizeRoleName, cbrQuorvelOption, cbrQuorvelReports, cbrBtnAskQVExpert, cbrBtnQVHelp, cbrBtnAboutQuorvel,
      cbrBtnFindReplace, cbrBtnTaskLinkDisplay;
  /// What is marked as selected in each window; see shapes/selection_marks.cpp.
  std::shared_ptr<SelectionMarks> globalSelectionObj;

  // One deletion, which may be that of many shapes.
  bool applyToAll = false;  ///< the user agreed to delete all linked Tasks; cleared by the next selection change
  std::shared_ptr<Deletion> deletion;  ///< what it found in the drawing; see shapes/shape_deletion.cpp

  // The host's Replace command, when the add-in runs it.
  bool flagFindReplaceActive = false;
  bool flagFindScopeEntered = false;
  std::vector<Shape> changedShapes;  ///< shapes whose text Replace changed
  /// Null while no Replace runs; see shapes/find_and_replace.cpp.
  std::shared_ptr<ReplacedTexts> replacedTexts;

  Cell renamedRole;  ///< a role is being renamed in this cell; it keeps its hyperlinks

  /// This Task gets an ID from a routine that keeps all hyperlinks right by itself: a first drop or a paste, to which
  /// nothing links yet, or the renumbering of many Tasks. The change of its ID rewrites no hyperlink.
  Shape numberedTask;

  /// Links are being brought up to date with the name of this page.
  Page renamedPage;

  /// Shapes that were added are being handled. Meanwhile the add-in does not clear the selection, and a change of it
  /// begins no new paste.
  int shapesBeingAdded = 0;
  /// Those of them that are copies, which ask questions.
  int copiesBeingHandled = 0;
  /// A paste that a script made while another one was handled.
  PasteBatch nestedBatch;

  /// Shapes are being deleted that the user refused while they were added. Their IDs are still those of the originals,
  /// and no question is asked about hyperlinks to them.
  bool deletesRefusedShapes = false;

  bool flagRestoringTask = false;  ///< a Task is being duplicated to undo its deletion; the copy is no first drop

  /// The rows of a Task's details by position, from 1; empty until a map is initialized.
  std::array<std::string, schema::lastDetail + 1> fieldNames;

  /// Read from the profile when connecting.
  std::string installPath;
  /// The current folder before connecting, which makes the install folder current. It is not restored.
  std::string folderBeforeConnecting;

  // Dialogs, created when first needed. A routine that shows one keeps its own pointer during the call, because the
  // host may disconnect the add-in while the dialog is open.
  std::shared_ptr<frmTaskIdSuggestion> taskIdSuggestion;
  std::shared_ptr<frmCopiedTaskIdSuggestion> copiedTaskIdSuggestion;
  std::shared_ptr<frmProcessConnectorMsg> processConnectorMsg;

  // What each event leads to is listed in event_routing.cpp.
  void DocumentCreated(Document document) override;
  void DocumentOpened(Document document) override;
  void BeforeDocumentSave(Document document) override;
  void BeforeDocumentSaveAs(Document document) override;
  void DocumentSaved(Document document) override;
  void DocumentSavedAs(Document document) override;
  void BeforeDocumentClose(Document document) override;
  void PageAdded(Page page) override;
  void PageChanged(Page page) override;
  void ShapeAdded(Shape shape) override;
  void BeforeShapeDelete(Shape shape) override;
  void BeforeShapeTextEdit(Shape shape) override;
  void ShapeExitedTextEdit(Shape shape) override;
  void TextChanged(Shape shape) override;
  void CellChanged(Cell cell) override;
  void FormulaChanged(Cell cell) override;
  void SelectionChanged(Window window) override;
  void WindowActivated(Window window) override;
  void AppActivated(Application application) override;
  void BeforeModal(Application application) override;
  void AfterModal(Application application) override;
  void EnterScope(int scope, std::string_view description) override;
  void ExitScope(int scope, std::string_view description) override;
  void MarkerEvent(int sequence, std::string_view context) override;
  void MouseDown(int button, int shift, double x, double y) override;
  void MouseMove(int button, int shift, double x, double y) override;
  void Click(CommandBarButton button) override;
};

}  // namespace quorvel::addin
