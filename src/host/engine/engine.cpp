#include "host/engine/engine.h"

#include <algorithm>

#include "host/cells/cell_table.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {

Engine::Engine(EngineOptions options)
    : version_(std::move(options.version)), formats_(std::move(options.formats)), bars_(version_) {
  undo_.setLimits(options.undoLimits);
  if (options.textMetrics) recalculator_.setTextMetrics(*options.textMetrics);
}

WindowState* Engine::window(WindowId id) {
  const auto found =
      std::find_if(windows_.begin(), windows_.end(), [&](const auto& window) { return window.id == id; });
  return found == windows_.end() ? nullptr : &*found;
}

WindowState* Engine::windowOf(DocumentId document) {
  const auto found =
      std::find_if(windows_.rbegin(), windows_.rend(), [&](const auto& window) { return window.document == document; });
  return found == windows_.rend() ? nullptr : &*found;
}

WindowId Engine::addWindow(DocumentId document) {
  WindowState made;
  made.id = WindowId{++lastWindow_};
  made.document = document;
  for (const PageId page : store_.document(document)->pages) {
    if (!made.page || (store_.page(made.page)->background && !store_.page(page)->background)) made.page = page;
  }
  windows_.push_back(std::move(made));
  return windows_.back().id;
}

void Engine::removeWindow(WindowId id) {
  std::erase_if(windows_, [&](const auto& window) { return window.id == id; });
}

void Engine::removeWindowsOf(DocumentId document) {
  std::erase_if(windows_, [&](const auto& window) { return window.document == document; });
}

void Engine::bringToFront(WindowId id) {
  const auto found =
      std::find_if(windows_.begin(), windows_.end(), [&](const auto& window) { return window.id == id; });
  if (found != windows_.end()) std::rotate(found, found + 1, windows_.end());
}

DocumentId Engine::activeDocument() { return windows_.empty() ? DocumentId{} : windows_.back().document; }

void Engine::leaveOutDeleted() {
  std::vector<WindowId> changed;
  for (WindowState& window : windows_) {
    std::vector<SheetId> selection = window.selection();
    const bool lostShapes =
        !deletions_.areGoingOn() && std::erase_if(selection, [&](SheetId id) { return !exists(id); }) > 0;
    const bool lostPage = window.page && !exists(window.page);
    if (lostPage) {
      const auto& pages = store_.document(window.document)->pages;
      window.page = pages.empty() ? PageId{} : pages.front();
      selection.clear();
    }
    if (window.selection().empty()) continue;
    if (!lostShapes && !lostPage) continue;
    window.select(std::move(selection));
    changed.push_back(window.id);
  }
  for (const WindowId id : changed) raiseForUpkeep(&ApplicationEvents::SelectionChanged, id);
}

DocumentId Engine::addDocument(const std::string& name) {
  const DocumentId id = store_.addDocument(name);
  Sheet& page = *store_.sheet(store_.page(store_.addPage(id, "Page-1"))->sheet);
  // A page without a size is a file that other programs refuse.
  for (const auto& [cell, inches] : {std::pair("PageWidth", 8.5), std::pair("PageHeight", 11.0),
                                     std::pair("PageScale", 1.0), std::pair("DrawingScale", 1.0)})
    page.local(objectCell(cell)).value = Value::number(inches, Unit::Inches);
  graph_.addDocument(id);
  return id;
}

OpenResult Engine::readDocument(const std::string& fileName) {
  OpenResult result = openFile(formats_, store_, fileName);
  if (result.document) graph_.addDocument(result.document);
  return result;
}

void Engine::removeDocument(DocumentId document) {
  undo_.discard(document);
  graph_.removeDocument(document);
  removeWindowsOf(document);
  store_.removeDocument(document);
}

PageId Engine::emptyClipboard() {
  if (clipboard_.document) {
    graph_.removeDocument(clipboard_.document);
    store_.removeDocument(clipboard_.document);
  }
  clipboard_.document = store_.addDocument("Clipboard");
  clipboard_.page = store_.addPage(clipboard_.document, "Clipboard");
  return clipboard_.page;
}

bool Engine::exists(const CellAddress& cell) const { return cellExists(store_, cell.sheet, cell.key, false); }

namespace {

constexpr int turnShift = 56, sectionShift = 32;
std::uint64_t turned(std::uint64_t part, std::uint8_t turn) { return part | (std::uint64_t{turn} << turnShift); }
std::uint8_t turnIn(std::uint64_t part) { return static_cast<std::uint8_t>(part >> turnShift); }
std::uint64_t withoutTurn(std::uint64_t part) { return part & ((std::uint64_t{1} << turnShift) - 1); }

}  // namespace

ObjectRef Engine::refTo(const CellAddress& cell) const {
  const std::uint8_t turn = renames_.turnOf(cell.sheet, cell.key.section, cell.key.row);
  return {ObjectKind::Cell, cell.sheet.value, turned(cell.key.packed(), turn)};
}

ObjectRef Engine::refToRow(SheetId sheet, SectionNumber section, RowKey row) const {
  const std::uint64_t part = (std::uint64_t(section) << sectionShift) | row.packed();
  return {ObjectKind::Row, sheet.value, turned(part, renames_.turnOf(sheet, section, row))};
}

ObjectRef Engine::refToHyperlink(SheetId sheet, RowKey row) const {
  const std::uint8_t turn = renames_.turnOf(sheet, SectionNumber::Hyperlink, row);
  return {ObjectKind::Hyperlink, sheet.value, turned(row.packed(), turn)};
}

ObjectRef Engine::present(const ObjectRef& object) const {
  ObjectRef now = object;
  const SheetId sheet{object.id};
  const std::uint8_t turn = turnIn(object.part);
  if (object.kind == ObjectKind::Cell) {
    CellKey key = CellKey::fromPacked(object.part);
    key.row = renames_.follow(sheet, key.section, key.row, turn);
    now.part = key.packed();
  } else if (object.kind == ObjectKind::Row || object.kind == ObjectKind::Hyperlink) {
    const bool isRow = object.kind == ObjectKind::Row;
    const auto section =
        isRow ? static_cast<SectionNumber>(withoutTurn(object.part) >> sectionShift) : SectionNumber::Hyperlink;
    const RowKey row =
        renames_.follow(sheet, section, RowKey::fromPacked(static_cast<std::uint32_t>(object.part)), turn);
    now.part = row.packed() | (isRow ? std::uint64_t(section) << sectionShift : 0);
  }
  return now;
}

std::vector<CellAddress> Engine::recalculate(const std::vector<CellAddress>& seeds,
                                             const std::vector<CellAddress>& changed,
                                             const std::function<void(const CellAddress&)>& beforeChange) {
  return recalculator_.run(seeds, changed, [&](const CellAddress& cell, const Value& value) {
    if (beforeChange) beforeChange(cell);
    edit_.setValue(cell, value);
  });
}

void Engine::recalculateAndNotify(const std::vector<CellAddress>& seeds, const std::vector<CellAddress>& changed) {
  for (const CellAddress& cell : recalculate(seeds, changed)) raise(&ApplicationEvents::CellChanged, cell);
}

CommandScope::CommandScope(Engine& engine, DocumentId document, std::string name)
    : engine_(engine), number_(engine.undo_.begin(document, std::move(name))) {
  if (engine_.commandDepth_++ == 0 && engine_.commandObserver_) engine_.commandObserver_->commandBegins(engine_);
}

CommandScope::~CommandScope() {
  if (engine_.commandDepth_ == 1 && committed_ && engine_.commandObserver_)
    engine_.commandObserver_->commandEnds(engine_);
  --engine_.commandDepth_;
  engine_.undo_.end(number_, committed_);
  if (!committed_) engine_.leaveOutDeleted();
}

}  // namespace quorvel::host
