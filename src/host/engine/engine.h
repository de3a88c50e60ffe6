// One running host: its documents, its undo log, its windows, and who listens. Commands work on it; the automation
// surface and an editor call the commands.
//
// A listener may delete whatever a command works on. So a command holds numbers, never pointers or references into the
// store, over a call that raises an event, and asks exists() for all that it goes on with. Events are raised through
// Engine::raise alone, which does the same for what the event is about.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/document_format.h"
#include "host/engine/command_bar_set.h"
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

/// What follows a user's command as a whole, once, before its step ends: not each of the writes inside it.
class Aftermath {
 public:
  virtual ~Aftermath() = default;
  /// An outermost command begins: what changed before is no business of it.
  virtual void commandBegins(Engine& engine) = 0;
  /// It is done; what the aftermath changes joins its step.
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

  const std::string version;
  const std::vector<const DocumentFormat*> formats;  ///< borrowed; asked in this order
  Store store;
  DependencyGraph graph{store};
  Recalculator recalculator{store, graph};
  PlacementJournal placements;
  RowRenames renames;
  UndoLog undo{Exchanged{store, graph, placements, renames}};
  Editor edit{Exchanged{store, graph, placements, renames}, undo};
  EventDispatcher events{undo};
  CommandBarSet bars;
  SelectionSnapshots selections;

  std::unique_ptr<Aftermath> aftermath;  ///< null: commands have none
  int commandDepth = 0;                  ///< commands inside commands, through handlers

  // Windows, the active one last.
  const std::vector<WindowState>& windows() const { return windows_; }
  WindowState* activeWindow() { return windows_.empty() ? nullptr : &windows_.back(); }
  WindowState* window(WindowId id);
  WindowState* windowOf(DocumentId document);
  WindowId addWindow(DocumentId document);  ///< active, on the first foreground page
  void removeWindow(DocumentId document);
  void bringToFront(WindowId id);
  DocumentId activeDocument();
  /// Takes deleted shapes out of selections, and shows other pages instead of deleted ones. SelectionChanged is raised
  /// for each window where this changed something.
  void leaveOutDeleted();

  // What a command goes on with after an event.
  bool exists(SheetId id) const { return store.sheet(id) != nullptr; }
  bool exists(PageId id) const { return store.page(id) != nullptr; }
  bool exists(MasterId id) const { return store.master(id) != nullptr; }
  bool exists(DocumentId id) const { return store.document(id) != nullptr; }
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

  // Handles for events.
  Backend* backend = nullptr;  ///< set by the automation surface
  Shape handle(SheetId id) const { return {backend, {ObjectKind::Shape, id.value, 0}}; }
  quorvel::Cell handle(const CellAddress& cell) const { return {backend, refTo(cell)}; }
  quorvel::Document handle(DocumentId id) const { return {backend, {ObjectKind::Document, id.value, 0}}; }
  quorvel::Page handle(PageId id) const { return {backend, {ObjectKind::Page, id.value, 0}}; }
  Window handle(WindowId id) const { return {backend, {ObjectKind::Window, id.value, 0}}; }

  // References to rows and cells of rows follow when the row is renamed. The upper byte of their second number is the
  // turn of the name, see RowRenames.
  ObjectRef refTo(const CellAddress& cell) const;
  ObjectRef refToRow(SheetId sheet, SectionNumber section, RowKey row) const;
  ObjectRef refToHyperlink(SheetId sheet, RowKey row) const;
  /// The reference with the present name of its row, and without the turn; others as they are.
  ObjectRef present(const ObjectRef& object) const;

  /// Values of cells follow; their changes are undoable. `changed` were set already. Gives what changed besides.
  std::vector<CellAddress> recalculate(const std::vector<CellAddress>& seeds, const std::vector<CellAddress>& changed);
  /// The same, and tells listeners of every cell that changed besides.
  void recalculateAndTell(const std::vector<CellAddress>& seeds, const std::vector<CellAddress>& changed);

  /// Depth of writes inside writes, through handlers.
  int writeDepth = 0;
  static constexpr int deepestWrite = 200;

  /// Shapes on the clipboard live on a page of their own, in a document that is not listed.
  struct Clipboard {
    PageId page;
    DocumentId document;
  } clipboard;

 private:
  template <class Handle, class Id>
  bool raise(EventDispatcher::Occasion occasion, void (ApplicationEvents::*event)(Handle), const Id& id) {
    events.raise(
        occasion, [&] { return exists(id); }, [&](ApplicationEvents& listener) { (listener.*event)(handle(id)); });
    return exists(id);
  }

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
