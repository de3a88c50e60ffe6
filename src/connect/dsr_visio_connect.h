// The add-in's one object: the state that lives from one host event to the next, and the listener of all host events.
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
class frmTaskIdSuggestion;

/// The drawing owns everything that lasts; what stands here is forgotten without loss when the host ends. The routines
/// that do the work are free functions of their own folders; they take this object and run on the host's one thread.
/// They may be entered again through their own writes.
class dsrVisioConnect : public UpkeepListener {
 public:
  explicit dsrVisioConnect(Platform& platform);
  dsrVisioConnect(const dsrVisioConnect&) = delete;
  dsrVisioConnect& operator=(const dsrVisioConnect&) = delete;
  ~dsrVisioConnect() override { AddinInstance_OnDisconnection(); }

  /// From here on host events arrive. A failing step is skipped; connecting to another host leaves the one before.
  void AddinInstance_OnConnection(Application application);
  /// Lets go of the host and of the dialogs; no event arrives after this. Allowed inside an event.
  void AddinInstance_OnDisconnection();

  Platform& platform;

  /// Asks the user for the letters and the first number of the page's Task IDs; see dialogs/ask_task_id_suggestion.h.
  /// The drop of a Task calls it, which knows no dialogs.
  bool (*const askTaskIds)(dsrVisioConnect& connect, const Page& page);

  // The host, and what its events leave behind for one another.
  Application gvsoApp;           ///< null while not connected
  bool bFlagSaveAs = false;      ///< a Save As was begun, and the document's cells still have to be brought back
  bool flag_right = false;       ///< the last mouse press was the right button
  bool DeleteShape = false;      ///< a deletion is pending; cleared by the next selection change
  Selection globalSelectionObj;  ///< what the last deletion or selection change worked on
  bool toolbarBuilt = false;     ///< the toolbar stands while any document of ours is open

  // One paste: what lies between two selection changes. Each question is asked once for it. All that follows is
  // about the drawing that is pasted into; shapes added to another one are a batch of their own, see joinPasteBatch.
  Document batchDocument;
  bool flagShapeAdded = false;         ///< a new selection has begun, so the next added shape opens a new batch
  bool flagTimeUnitAbbr = false;       ///< the question about time unit abbreviations was asked
  bool flagFeqAbbr_1 = false;          ///< "different description" was asked
  bool flagFeqAbbr_2 = false;          ///< "different abbreviation" was asked
  bool flagFeqAbbrNew = false;         ///< "new frequency" was asked
  bool flagContinueFreqCopy = false;   ///< the answer to either of the first two frequency questions
  bool flagAddNewFreq = false;         ///< the answer to the third
  bool flagKeepTaskIdNumbers = false;  ///< the copied Tasks keep their numbers
  std::string strTaskIdLetters;        ///< the letters of the batch
  long iTaskIdNumber = 0;              ///< the number that the batch's next Task gets

  // The host's Replace command on our behalf.
  bool flagFindReplaceActive = false;
  bool flagFindScopeEntered = false;
  std::vector<Shape> changedShapes;  ///< shapes whose text Replace changed

  Cell renamedRole;  ///< a role's name is being changed in this cell: it is the same role, which keeps its hyperlinks

  bool flagRestoringTask = false;  ///< a deletion duplicates a Task to keep it: the copy is no new drop

  /// The rows of a Task's details by position, from 1; empty until a document of ours was prepared.
  std::array<std::string, schema::lastDetail + 1> fieldNames;

  /// Read from the profile when connecting.
  std::string installPath;
  /// The current folder as it was before connecting made the install folder current. It is not put back.
  std::string folderBeforeConnecting;

  // Dialogs, made when first needed. A routine that shows one holds it itself for the length of the call, because the
  // host may disconnect us while it is open.
  std::shared_ptr<frmTaskIdSuggestion> taskIdSuggestion;
  std::shared_ptr<frmCopiedTaskIdSuggestion> copiedTaskIdSuggestion;

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
