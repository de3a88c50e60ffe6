// One running host: its documents, its undo log, its windows and its listeners. Commands work on it; the automation
// surface and an editor call the commands.
//
// A listener may delete whatever a command works on. So a command holds numbers, never pointers or references into the
// store, over a call that raises an event, and checks with exists() all that it still needs. Events are raised through
// Engine::raise alone, which does the same for what the event is about.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/document_format.h"
#include "host/engine/command_bar_set.h"
#include "host/engine/deletions.h"
#include "host/engine/link_opener.h"
#include "host/engine/reports_dialog.h"
#include "host/engine/snapshots.h"
#include "host/engine/windows.h"
#include "host/events/event_dispatcher.h"
#include "host/recalc/recalculator.h"
#include "host/undo/editor.h"

namespace quorvel::host {

/// Whether a command was done; if not, why, as a clause that follows "refused: ".
class Outcome {
 public:
  static Outcome done() { return Outcome(); }
  static Outcome refused(std::string reason) {
    Outcome outcome;
    outcome.reason_ = std::move(reason);
    return outcome;
  }
  /// What was named does not exist; see Refusal::isUnknownName.
  static Outcome unknownName(std::string reason) {
    Outcome outcome = refused(std::move(reason));
    outcome.isUnknownName_ = true;
    return outcome;
  }
  explicit operator bool() const { return reason_.empty(); }
  const std::string& reason() const { return reason_; }
  bool isUnknownName() const { return isUnknownName_; }

 private:
  std::string reason_;
  bool isUnknownName_ = false;
};

class Engine;

/// Is called when a user's command as a whole begins and ends, not for each of the writes inside it.
class CommandObserver {
 public:
  virtual ~CommandObserver() = default;
  /// An outermost command begins: what changed before is ignored.
  virtual void commandBegins(Engine& engine) = 0;
  /// It is done; what the observer changes is part of its step.
  virtual void commandEnds(Engine& engine) = 0;
};

struct EngineOptions {
  std::string version = "12.0";
  std::vector<const DocumentFormat*> formats;  ///< borrowed; asked in this order
  const TextMetrics* textMetrics = nullptr;    ///< null: the table of widths
  UndoLimits undoLimits{};
};

class Engine {
 public:
  explicit Engine(EngineOptions options);

  const std::string& version() const { return version_; }

  /// The drawings. All changes go through the editor.
  const Store& store() const { return store_; }
  Editor& edit() { return edit_; }
  UndoLog& undo() { return undo_; }
  const UndoLog& undo() const { return undo_; }
  /// Which formulas read what.
  const DependencyGraph& graph() const { return graph_; }
  /// What moved since it was last asked.
  PlacementJournal& placements() { return placements_; }
  EventDispatcher& events() { return events_; }
  CommandBarSet& bars() { return bars_; }
  Snapshots<SelectionSnapshot>& selections() { return selections_; }
  Snapshots<CharacterRange>& characterRanges() { return characterRanges_; }
  Deletions& deletions() { return deletions_; }

  void setThemes(const ThemeValues* themes) { store_.setThemes(themes); }
  /// Borrowed; null: nothing outside of the drawings can be opened.
  void setLinkOpener(LinkOpener* opener) { linkOpener_ = opener; }
  LinkOpener* linkOpener() const { return linkOpener_; }
  /// Borrowed; null: there are no reports.
  void setReportsDialog(ReportsDialog* dialog) { reportsDialog_ = dialog; }
  ReportsDialog* reportsDialog() const { return reportsDialog_; }
  void setLocale(const FormulaLocale& locale) { store_.setLocale(locale); }
  void setCommandObserver(std::unique_ptr<CommandObserver> observer) { commandObserver_ = std::move(observer); }
  /// True while a command runs, in the handlers that it calls too.
  bool isInCommand() const { return commandDepth_ > 0; }

  // Documents are added and removed outside of steps.
  /// The format of the file's name; null for a name that no drawing has.
  const DocumentFormat* formatFor(std::string_view fileName) const { return host::formatFor(formats_, fileName); }
  /// An empty document with one page of letter size.
  DocumentId addDocument(const std::string& name);
  OpenResult readDocument(const std::string& fileName);
  /// With its steps and its windows.
  void removeDocument(DocumentId document);

  // Windows, the active one last.
  const std::vector<WindowState>& windows() const { return windows_; }
  WindowState* activeWindow() { return windows_.empty() ? nullptr : &windows_.back(); }
  WindowState* window(WindowId id);
  /// The one of the document that was active last; null for a document without a window.
  WindowState* windowOf(DocumentId document);
  WindowId addWindow(DocumentId document);  ///< active, on the first foreground page
  void removeWindow(WindowId id);
  void removeWindowsOf(DocumentId document);
  void bringToFront(WindowId id);
  DocumentId activeDocument();
  /// Takes deleted shapes out of selections, and shows other pages instead of deleted ones. SelectionChanged is raised
  /// for each window where this changed something. While shapes are being deleted, selections keep them.
  void leaveOutDeleted();

  // What a command still needs after an event.
  bool exists(SheetId id) const { return store_.sheet(id) != nullptr; }
  bool exists(PageId id) const { return store_.page(id) != nullptr; }
  bool exists(MasterId id) const { return store_.master(id) != nullptr; }
  bool exists(DocumentId id) const { return store_.document(id) != nullptr; }
  bool exists(WindowId id) { return window(id) != nullptr; }
  bool exists(const CellAddress& cell) const;
  template <class First, class Second, class... More>
  bool exists(First first, Second second, More... more) {
    return exists(first) && exists(second, more...);
  }

  /// Raises an event about one object. No listener is called about an object that another one has deleted. False when
  /// it does not exist afterwards.
  template <class Handle, class Id>
  bool raise(void (ApplicationEvents::*event)(Handle), const Id& id) {
    return raise(EventDispatcher::Occasion::Change, event, id);
  }
  /// The same for the events at which listeners look after their own marks.
  template <class Handle, class Id>
  bool raiseForUpkeep(void (ApplicationEvents::*event)(Handle), const Id& id) {
    return raise(EventDispatcher::Occasion::Upkeep, event, id);
  }

  // Handles for events; `backend` is what they call.
  void setBackend(Backend& backend) { backend_ = &backend; }
  Application application() const { return {backend_, backend_->application()}; }
  Shape handle(SheetId id) const { return {backend_, {ObjectKind::Shape, id.value, 0}}; }
  quorvel::Cell handle(const CellAddress& cell) const { return {backend_, refTo(cell)}; }
  quorvel::Document handle(DocumentId id) const { return {backend_, {ObjectKind::Document, id.value, 0}}; }
  quorvel::Page handle(PageId id) const { return {backend_, {ObjectKind::Page, id.value, 0}}; }
  Window handle(WindowId id) const { return {backend_, {ObjectKind::Window, id.value, 0}}; }

  // References to rows and cells of rows follow when the row is renamed. The upper byte of their second number is the
  // turn of the name, see RowRenames.
  ObjectRef refTo(const CellAddress& cell) const;
  ObjectRef refToRow(SheetId sheet, SectionNumber section, RowKey row) const;
  ObjectRef refToHyperlink(SheetId sheet, RowKey row) const;
  /// The reference with the present name of its row, and without the turn; others as they are.
  ObjectRef present(const ObjectRef& object) const;

  /// Values of cells follow; their changes are undoable. `changed` were set already. Gives the other cells that
  /// changed. `beforeChange` is called for each cell before it gets its new value.
  std::vector<CellAddress> recalculate(const std::vector<CellAddress>& seeds, const std::vector<CellAddress>& changed,
                                       const std::function<void(const CellAddress&)>& beforeChange = {});
  /// The same, and raises CellChanged of every cell that changed.
  void recalculateAndNotify(const std::vector<CellAddress>& seeds, const std::vector<CellAddress>& changed);

  /// Formulas that were evaluated so far.
  std::size_t evaluations() const { return recalculator_.evaluations(); }

  static constexpr int deepestWrite = 200;
  /// True when handlers of writes have written inside each other so often that another write must be refused.
  bool areWritesTooDeep() const { return writeDepth_ >= deepestWrite; }
  /// While it lives, a write raises its events.
  class NestedWrite {
   public:
    explicit NestedWrite(Engine& engine) : engine_(engine) { ++engine_.writeDepth_; }
    ~NestedWrite() { --engine_.writeDepth_; }
    NestedWrite(const NestedWrite&) = delete;
    NestedWrite& operator=(const NestedWrite&) = delete;

   private:
    Engine& engine_;
  };

  /// Shapes on the clipboard are on a page of their own, in a document that scripts do not see.
  struct Clipboard {
    PageId page;
    DocumentId document;
  };
  const Clipboard& clipboard() const { return clipboard_; }
  /// Gives a new, empty page.
  PageId emptyClipboard();

 private:
  template <class Handle, class Id>
  bool raise(EventDispatcher::Occasion occasion, void (ApplicationEvents::*event)(Handle), const Id& id) {
    events_.raise(
        occasion, [&] { return exists(id); }, [&](ApplicationEvents& listener) { (listener.*event)(handle(id)); });
    return exists(id);
  }

  friend class CommandScope;
  const std::string version_;
  const std::vector<const DocumentFormat*> formats_;
  Store store_;
  DependencyGraph graph_{store_};
  Recalculator recalculator_{store_, graph_};
  PlacementJournal placements_;
  RowRenames renames_;
  UndoLog undo_{Exchanged{store_, graph_, placements_, renames_}};
  Editor edit_{Exchanged{store_, graph_, placements_, renames_}, undo_};
  EventDispatcher events_{undo_};
  CommandBarSet bars_;
  Snapshots<SelectionSnapshot> selections_;
  Snapshots<CharacterRange> characterRanges_;
  Deletions deletions_;
  std::unique_ptr<CommandObserver> commandObserver_;  ///< null: commands have none
  Backend* backend_ = nullptr;
  LinkOpener* linkOpener_ = nullptr;
  ReportsDialog* reportsDialog_ = nullptr;
  int commandDepth_ = 0;  ///< commands inside commands, through handlers
  int writeDepth_ = 0;    ///< writes inside writes, through handlers
  Clipboard clipboard_;
  std::vector<WindowState> windows_;
  std::uint32_t lastWindow_ = 0;
};

/// One step of undo for a command with all that handlers do inside it. A scope that is not committed rolls back.
class CommandScope {
 public:
  CommandScope(Engine& engine, DocumentId document, std::string name);
  ~CommandScope();
  CommandScope(const CommandScope&) = delete;
  CommandScope& operator=(const CommandScope&) = delete;
  void commit() { committed_ = true; }

 private:
  Engine& engine_;
  int number_;
  bool committed_ = false;
};

}  // namespace quorvel::host
