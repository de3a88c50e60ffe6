#include "host/commands/documents.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>

#include "base/text.h"
#include "host/cells/cell_table.h"

namespace quorvel::host {
namespace {

namespace fs = std::filesystem;

std::string nowUtc() {
  const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  std::tm parts{};
  gmtime_r(&now, &parts);
  char text[32];
  std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
  return text;
}

std::string drawingName(const Engine& engine) {
  for (int n = 1;; ++n) {
    const std::string name = "Drawing" + std::to_string(n);
    const auto& documents = engine.store().documents();
    if (std::none_of(documents.begin(), documents.end(),
                     [&](DocumentId id) { return engine.store().document(id)->name == name; }))
      return name;
  }
}

DocumentOutcome refusedDocument(std::string reason) { return {Outcome::refused(std::move(reason)), {}}; }

/// The document of a file, also of one that is reached through a symbolic link; null when it is not open.
DocumentId openedFrom(const Store& store, const std::string& fileName) {
  Document probe;
  placeDocument(probe, fileName);
  const std::string wanted = probe.path + probe.name;
  DocumentId sameFile;
  for (const DocumentId id : store.documents()) {
    const Document& open = *store.document(id);
    if (open.path.empty()) continue;
    if (open.path + open.name == wanted) return id;
    std::error_code error;
    if (!sameFile && fs::equivalent(open.path + open.name, wanted, error)) sameFile = id;
  }
  return sameFile;
}

DocumentOutcome read(Engine& engine, const std::string& fileName) {
  const OpenResult result = engine.readDocument(fileName);
  if (!result.document) return refusedDocument(result.error);
  return {Outcome::done(), result.document};
}

void activate(Engine& engine, DocumentId document, bool hidden) {
  if (hidden) return;
  engine.addWindow(document);
}

void raiseWindowActivated(Engine& engine) {
  if (!engine.activeWindow()) return;
  const WindowId window = engine.activeWindow()->id;
  engine.raise(&ApplicationEvents::WindowActivated, window);
}

/// Values that follow the time of the last save. They are brought up to date before the file is written, so that it
/// shows the time of its own save, and restored when it could not be written.
class LastSaveValues {
 public:
  LastSaveValues(Engine& engine, DocumentId document);
  void restore();

 private:
  void raiseChanged(const std::vector<CellAddress>& cells);
  Engine& engine_;
  std::vector<std::pair<CellAddress, std::optional<Cell>>> before_;
};

/// Formulas that show when the document was last saved.
std::vector<CellAddress> showingLastSave(const Store& store, const Document& document) {
  std::vector<SheetId> sheets{document.sheet};
  const auto addPage = [&](PageId id) {
    const Page& page = *store.page(id);
    sheets.push_back(page.sheet);
    for (const SheetId top : page.shapes) {
      for (const SheetId each : store.subtree(top)) sheets.push_back(each);
    }
  };
  for (const MasterId master : document.masters) addPage(store.master(master)->contents);
  for (const PageId page : document.pages) addPage(page);
  std::vector<CellAddress> cells;
  for (const SheetId id : sheets) {
    for (const Section& section : store.sheet(id)->sections) {
      for (const Row& row : section.rows) {
        for (const auto& [column, cell] : row.cells) {
          if (cell.formula && cell.formula->isVolatile() && containsIgnoringCase(cell.formula->text(), "DOCLASTSAVE"))
            cells.push_back({id, {section.number, row.key, column}});
        }
      }
    }
  }
  return cells;
}

LastSaveValues::LastSaveValues(Engine& engine, DocumentId document) : engine_(engine) {
  const std::vector<CellAddress> showing = showingLastSave(engine.store(), *engine.store().document(document));
  if (showing.empty()) return;
  const UndoLog::Attribution housekeeping(engine.undo(), true);  // the time of a save is not taken back
  raiseChanged(engine.recalculate(showing, {}, [this](const CellAddress& cell) {
    const Cell* const held = engine_.store().sheet(cell.sheet)->findLocal(cell.key);
    before_.emplace_back(cell, held ? std::optional<Cell>(*held) : std::nullopt);
  }));
}

void LastSaveValues::restore() {
  const UndoLog::Attribution housekeeping(engine_.undo(), true);
  std::vector<CellAddress> changed;
  for (auto& [cell, held] : before_) {
    if (!engine_.store().sheet(cell.sheet)) continue;
    engine_.edit().setCell(cell, std::move(held));
    changed.push_back(cell);
  }
  raiseChanged(changed);
}

void LastSaveValues::raiseChanged(const std::vector<CellAddress>& cells) {
  for (const CellAddress& cell : cells) engine_.raise(&ApplicationEvents::CellChanged, cell);
}

}  // namespace

DocumentOutcome newDocument(Engine& engine, const std::string& templateFile) {
  DocumentId id;
  const std::string name = drawingName(engine);
  if (templateFile.empty()) {
    id = engine.addDocument(name);
  } else {
    const DocumentOutcome opened = read(engine, templateFile);
    if (!opened.outcome) return opened;
    id = opened.document;
    Document& document = engine.edit().documentFields(id);
    document.name = name;
    document.path.clear();
    document.properties.templateName = fs::path(templateFile).filename().string();
    document.properties.timeCreated = nowUtc();
    document.properties.timeSaved.clear();
  }
  engine.edit().documentFields(id).isStencil = false;
  activate(engine, id, false);
  if (!engine.raiseForUpkeep(&ApplicationEvents::DocumentCreated, id))
    return refusedDocument("the document was closed while it was made");
  raiseWindowActivated(engine);
  if (!engine.exists(id)) return refusedDocument("the document was closed while it was made");
  return {Outcome::done(), id};
}

DocumentOutcome openDocument(Engine& engine, const std::string& fileName, bool readOnly, bool hidden, bool asCopy,
                             const std::function<Outcome(DocumentId)>& admits) {
  if (!asCopy) {
    if (const DocumentId open = openedFrom(engine.store(), fileName))
      return {admits ? admits(open) : Outcome::done(), open};
  }
  const DocumentOutcome opened = read(engine, fileName);
  if (!opened.outcome) return opened;
  const DocumentId id = opened.document;
  if (const Outcome admitted = admits ? admits(id) : Outcome::done(); !admitted) {
    engine.removeDocument(id);
    return {admitted, {}};
  }
  Document& document = engine.edit().documentFields(id);
  if (asCopy) {
    document.name = drawingName(engine);
    document.path.clear();
  }
  document.readOnly = readOnly;
  document.saved = true;
  activate(engine, id, hidden || document.isStencil);
  if (!engine.raiseForUpkeep(&ApplicationEvents::DocumentOpened, id))
    return refusedDocument("the document was closed while it was opened");
  if (!hidden && !engine.store().document(id)->isStencil) raiseWindowActivated(engine);
  if (!engine.exists(id)) return refusedDocument("the document was closed while it was opened");
  return {Outcome::done(), id};
}

Outcome writeCopy(Engine& engine, DocumentId id, const std::string& fileName) {
  const DocumentFormat* format = engine.formatFor(fileName);
  if (!format)
    return Outcome::refused("\"" + fileName +
                            "\" is not a kind of drawing that can be written; use .vsdx, .vssx, .vstx or .vdx.");
  const std::string error = format->save(engine.store(), id, fileName);
  return error.empty() ? Outcome::done() : Outcome::refused(error);
}

Outcome saveDocument(Engine& engine, DocumentId id, const std::string& fileName) {
  const Document* document = engine.store().document(id);
  if (!document) return Outcome::refused("the document is deleted");
  const bool saveAs = !fileName.empty();
  if (!saveAs && document->path.empty()) return Outcome::refused("the document was never saved; give it a file name");
  if (!saveAs && document->readOnly) return Outcome::refused("the document was opened for reading only");
  const std::string target = saveAs ? fileName : document->path + document->name;
  if (!engine.formatFor(target))
    return Outcome::refused("\"" + target +
                            "\" is not a kind of drawing that can be written; use .vsdx, .vssx, .vstx or .vdx.");
  if (!engine.raiseForUpkeep(saveAs ? &ApplicationEvents::BeforeDocumentSaveAs : &ApplicationEvents::BeforeDocumentSave,
                             id))
    return Outcome::refused("the document was closed while it was saved");
  DocumentProperties& properties = engine.edit().documentFields(id).properties;
  const DocumentProperties before = properties;
  properties.timeSaved = nowUtc();
  if (properties.timeCreated.empty()) properties.timeCreated = properties.timeSaved;
  LastSaveValues lastSave(engine, id);
  if (!engine.exists(id)) return Outcome::refused("the document was closed while it was saved");
  const Outcome written = writeCopy(engine, id, target);
  Document& saved = engine.edit().documentFields(id);
  if (!written) {
    saved.properties = before;
    lastSave.restore();
    return written;
  }
  placeDocument(saved, target);
  saved.saved = true;
  engine.undo().noteSaved(id);
  if (saveAs) saved.readOnly = false;
  engine.raiseForUpkeep(saveAs ? &ApplicationEvents::DocumentSavedAs : &ApplicationEvents::DocumentSaved, id);
  return Outcome::done();
}

Outcome closeDocument(Engine& engine, DocumentId id) {
  if (!engine.store().document(id)) return Outcome::refused("the document is deleted");
  // A scope that a script holds open does not need the other documents; a command may.
  if (engine.isInCommand() || engine.undo().isInOpenStep(id))
    return Outcome::refused("a document can't be closed inside a command");
  if (!engine.raiseForUpkeep(&ApplicationEvents::BeforeDocumentClose, id)) return Outcome::done();
  // A listener may have opened a step and left it open.
  if (engine.undo().isInOpenStep(id)) return Outcome::refused("a document can't be closed inside a command");
  const bool wasActive = engine.activeDocument() == id;
  engine.removeDocument(id);
  if (wasActive) raiseWindowActivated(engine);
  return Outcome::done();
}

Outcome closeWindow(Engine& engine, WindowId id) {
  const WindowState* const window = engine.window(id);
  if (!window) return Outcome::refused("the window is closed");
  const DocumentId document = window->document;
  if (std::ranges::count(engine.windows(), document, &WindowState::document) == 1)
    return closeDocument(engine, document);
  const bool wasActive = engine.activeWindow()->id == id;
  engine.removeWindow(id);
  if (wasActive) raiseWindowActivated(engine);
  return Outcome::done();
}

}  // namespace quorvel::host
