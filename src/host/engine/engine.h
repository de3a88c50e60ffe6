// One running host: its documents, its undo log, its windows, and who listens. Commands work on it; the automation
// surface and an editor call the commands.
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
  explicit operator bool() const { return reason_.empty(); }
  const std::string& reason() const { return reason_; }

 private:
  std::string reason_;
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
  UndoLog undo{store, graph, placements};
  Editor edit{store, graph, undo, placements};
  EventDispatcher events;
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
  /// Takes what is gone out of selections and pages shown.
  void forgetTheGone();

  // Handles for events.
  Backend* backend = nullptr;  ///< set by the automation surface
  Shape handle(SheetId id) const { return {backend, {ObjectKind::Shape, id.value, 0}}; }
  quorvel::Cell handle(const CellAddress& cell) const {
    return {backend, {ObjectKind::Cell, cell.sheet.value, cell.key.packed()}};
  }
  quorvel::Document handle(DocumentId id) const { return {backend, {ObjectKind::Document, id.value, 0}}; }
  quorvel::Page handle(PageId id) const { return {backend, {ObjectKind::Page, id.value, 0}}; }
  Window handle(WindowId id) const { return {backend, {ObjectKind::Window, id.value, 0}}; }

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
