#include "host/engine/engine.h"

#include <algorithm>

namespace quorvel::host {

Engine::Engine(EngineOptions options)
    : version(std::move(options.version)), formats(std::move(options.formats)), bars(version) {
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

void Engine::forgetTheGone() {
  for (WindowState& window : windows_) {
    const auto gone = [&](SheetId id) { return store.sheet(id) == nullptr; };
    if (std::erase_if(window.selection, gone) > 0) window.selectionObject = 0;
    if (store.page(window.page)) continue;
    const auto& pages = store.document(window.document)->pages;
    window.page = pages.empty() ? PageId{} : pages.front();
    window.selection.clear();
    window.selectionObject = 0;
  }
}

std::vector<CellAddress> Engine::recalculate(const std::vector<CellAddress>& seeds,
                                             const std::vector<CellAddress>& changed) {
  return recalculator.run(seeds, changed,
                          [this](const CellAddress& cell, const Value& value) { edit.setValue(cell, value); });
}

void Engine::recalculateAndTell(const std::vector<CellAddress>& seeds, const std::vector<CellAddress>& changed) {
  for (const CellAddress& cell : recalculate(seeds, changed)) {
    if (!store.sheet(cell.sheet)) continue;
    events.raise([&](ApplicationEvents& listener) { listener.CellChanged(handle(cell)); });
  }
}

CommandScope::CommandScope(Engine& engine, DocumentId document, std::string name)
    : engine_(engine), number_(engine.undo.begin(document, std::move(name))) {
  if (engine_.commandDepth++ == 0 && engine_.aftermath) engine_.aftermath->commandBegins(engine_);
}

CommandScope::~CommandScope() {
  if (engine_.commandDepth == 1 && committed_ && engine_.aftermath) engine_.aftermath->commandEnds(engine_);
  --engine_.commandDepth;
  engine_.undo.end(number_, committed_);
  if (!committed_) engine_.forgetTheGone();
}

}  // namespace quorvel::host
