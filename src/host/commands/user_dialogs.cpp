#include "host/commands/user_dialogs.h"

#include "base/xml_characters.h"
#include "host/cells/cell_name.h"
#include "host/cells/cell_table.h"
#include "host/commands/text_fields.h"
#include "host/edits/write_cell.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

template <class Work>
void inDialog(Engine& engine, int scope, std::string_view name, Work work) {
  const auto raise = [&](auto event) { engine.events().raise(event); };
  raise([&](ApplicationEvents& listener) { listener.EnterScope(scope, name); });
  raise([&](ApplicationEvents& listener) { listener.BeforeModal(engine.application()); });
  work();
  raise([&](ApplicationEvents& listener) { listener.AfterModal(engine.application()); });
  raise([&](ApplicationEvents& listener) { listener.ExitScope(scope, name); });
}

std::vector<SheetId> shapesOn(const Store& store, const std::vector<PageId>& pages) {
  std::vector<SheetId> shapes;
  for (const PageId page : pages) {
    for (const SheetId top : store.page(page)->shapes) {
      const std::vector<SheetId> below = store.subtree(top);
      shapes.insert(shapes.end(), below.begin(), below.end());
    }
  }
  return shapes;
}

}  // namespace

Outcome editShapeData(Engine& engine, SheetId shape, const std::vector<TypedCell>& cells) {
  const Sheet* sheet = engine.store().sheet(shape);
  if (!sheet) return Outcome::refused("the object is deleted");
  std::vector<std::pair<CellAddress, std::string>> writes;
  for (const auto& [name, formula] : cells) {
    const Maybe<CellKey> known = parseCellName(name);
    if (!known) return Outcome::unknownName("no cell can have the name " + name);
    const CellAddress cell{shape, keyByLocalName(engine.store(), shape, *known)};
    if (!cellExists(engine.store(), shape, cell.key, false)) return Outcome::unknownName("no cell " + name);
    if (isGuarded(engine.store(), shape, cell.key)) return Outcome::refused("the cell " + name + " is guarded");
    if (firstOutsideXml(formula)) return Outcome::refused("the text has a character that no drawing file can hold");
    const std::string_view bare = withoutEqualSign(formula);
    if (!bare.empty() && !engine.store().formulas().get(bare)) return Outcome::refused("the text is no formula");
    writes.emplace_back(cell, formula);
  }
  CommandScope scope(engine, sheet->document, "Shape Data");
  inDialog(engine, shapeDataScope, "Shape Data", [&] {
    for (const auto& [cell, formula] : writes) {
      if (engine.exists(cell.sheet)) writeFormula(engine, cell, formula, false);
    }
  });
  scope.commit();
  return Outcome::done();
}

ReplaceOutcome replaceText(Engine& engine, DocumentId document, PageId page, std::string_view find,
                           std::string_view replacement, const ReplaceOptions& options) {
  const Store& store = engine.store();
  if (!store.document(document)) return {Outcome::refused("the document is closed"), 0};
  if (find.empty()) return {Outcome::refused("there is no text to find"), 0};
  if (firstOutsideXml(replacement))
    return {Outcome::refused("the text has a character that no drawing file can hold"), 0};
  ReplaceOutcome result;
  CommandScope scope(engine, document, "Replace");
  inDialog(engine, replaceScope, "Replace", [&] {
    std::vector<PageId> pages = store.document(document)->pages;
    if (page) std::erase_if(pages, [&](PageId other) { return other != page; });
    static const CellKey lock = objectCell("LockTextEdit");
    for (const SheetId shape : shapesOn(store, pages)) {
      const TextBody* text = engine.exists(shape) ? textOf(store, shape) : nullptr;
      if (!text || cellNumber(store, shape, lock) != 0) continue;
      TextBody body = *text;
      const int count = replaceIn(body, find, replacement, options);
      if (count == 0) continue;
      result.count += count;
      setTextBody(engine, shape, std::move(body));
    }
  });
  scope.commit();
  return result;
}

Outcome showReports(Engine& engine) {
  const DocumentId document = engine.activeDocument();
  if (!document) return Outcome::refused("there is no active drawing");
  if (!engine.reportsDialog()) return Outcome::refused("there are no reports here");
  const auto raise = [&](auto event) { engine.events().raise(event); };
  raise([&](ApplicationEvents& listener) { listener.BeforeModal(engine.application()); });
  if (engine.exists(document)) engine.reportsDialog()->showReports(document);
  raise([&](ApplicationEvents& listener) { listener.AfterModal(engine.application()); });
  return Outcome::done();
}

}  // namespace quorvel::host
