#include "host/engine/engine.h"

#include <algorithm>

#include "host/sheet/inheritance.h"

namespace quorvel::host {

Engine::Engine(EngineOptions options)
    : version(std::move(options.version)), formats(std::move(options.formats)), bars(version) {
  undo.setLimits(options.undoLimits);
  if (options.textMetrics) recalculator.setTextMetrics(*options.textMetrics);
}

WindowState* Engine::window(WindowId id) {
  const auto found =
      std::find_if(windows_.begin(), windows_.end(), [&](const auto& window) { return window.id == id; });
  return found == windows_.end() ? nullptr : &*found;
}

WindowState* Engine::windowOf(DocumentId document) {
  const auto found =
      std::find_if(windows_.begin(), windows_.end(), [&](const auto& window) { return window.document == document; });
  return found == windows_.end() ? nullptr : &*found;
}

WindowId Engine::addWindow(DocumentId document) {
  WindowState made;
  made.id = WindowId{++lastWindow_};
  made.document = document;
  for (const PageId page : store.document(document)->pages) {
    if (!made.page || (store.page(made.page)->background && !store.page(page)->background)) made.page = page;
  }
  windows_.push_back(std::move(made));
  return windows_.back().id;
}

void Engine::removeWindow(DocumentId document) {
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
    const bool lostShapes = std::erase_if(selection, [&](SheetId id) { return !exists(id); }) > 0;
    const bool lostPage = window.page && !exists(window.page);
    if (lostPage) {
      const auto& pages = store.document(window.document)->pages;
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

bool Engine::exists(const CellAddress& cell) const { return cellExists(store, cell.sheet, cell.key, false); }

namespace {

constexpr int turnShift = 56, sectionShift = 32;
std::uint64_t turned(std::uint64_t part, std::uint8_t turn) { return part | (std::uint64_t{turn} << turnShift); }
std::uint8_t turnIn(std::uint64_t part) { return static_cast<std::uint8_t>(part >> turnShift); }
std::uint64_t withoutTurn(std::uint64_t part) { return part & ((std::uint64_t{1} << turnShift) - 1); }

}  // namespace

ObjectRef Engine::refTo(const CellAddress& cell) const {
  const std::uint8_t turn = renames.turnOf(cell.sheet, cell.key.section, cell.key.row);
  return {ObjectKind::Cell, cell.sheet.value, turned(cell.key.packed(), turn)};
}

ObjectRef Engine::refToRow(SheetId sheet, SectionNumber section, RowKey row) const {
  const std::uint64_t part = (std::uint64_t(section) << sectionShift) | row.packed();
  return {ObjectKind::Row, sheet.value, turned(part, renames.turnOf(sheet, section, row))};
}

ObjectRef Engine::refToHyperlink(SheetId sheet, RowKey row) const {
  const std::uint8_t turn = renames.turnOf(sheet, SectionNumber::Hyperlink, row);
  return {ObjectKind::Hyperlink, sheet.value, turned(row.packed(), turn)};
}

ObjectRef Engine::present(const ObjectRef& object) const {
  ObjectRef now = object;
  const SheetId sheet{object.id};
  const std::uint8_t turn = turnIn(object.part);
  if (object.kind == ObjectKind::Cell) {
    CellKey key = CellKey::fromPacked(object.part);
    key.row = renames.follow(sheet, key.section, key.row, turn);
    now.part = key.packed();
  } else if (object.kind == ObjectKind::Row || object.kind == ObjectKind::Hyperlink) {
    const bool isRow = object.kind == ObjectKind::Row;
    const auto section =
        isRow ? static_cast<SectionNumber>(withoutTurn(object.part) >> sectionShift) : SectionNumber::Hyperlink;
    const RowKey row =
        renames.follow(sheet, section, RowKey::fromPacked(static_cast<std::uint32_t>(object.part)), turn);
    now.part = row.packed() | (isRow ? std::uint64_t(section) << sectionShift : 0);
  }
  return now;
}

std::vector<CellAddress> Engine::recalculate(const std::vector<CellAddress>& seeds,
                                             const std::vector<CellAddress>& changed) {
  return recalculator.run(seeds, changed,
                          [this](const CellAddress& cell, const Value& value) { edit.setValue(cell, value); });
}

void Engine::recalculateAndTell(const std::vector<CellAddress>& seeds, const std::vector<CellAddress>& changed) {
  for (const CellAddress& cell : recalculate(seeds, changed)) raise(&ApplicationEvents::CellChanged, cell);
}

CommandScope::CommandScope(Engine& engine, DocumentId document, std::string name)
    : engine_(engine), number_(engine.undo.begin(document, std::move(name))) {
  if (engine_.commandDepth++ == 0 && engine_.aftermath) engine_.aftermath->commandBegins(engine_);
}

CommandScope::~CommandScope() {
  if (engine_.commandDepth == 1 && committed_ && engine_.aftermath) engine_.aftermath->commandEnds(engine_);
  --engine_.commandDepth;
  engine_.undo.end(number_, committed_);
  if (!committed_) engine_.leaveOutDeleted();
}

}  // namespace quorvel::host
