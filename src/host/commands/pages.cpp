#include "host/commands/pages.h"

#include "base/text.h"
#include "host/cells/cell_table.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

void notifyChanged(Engine& engine, PageId page) { engine.raise(&ApplicationEvents::PageChanged, page); }

/// Formulas that show a page's name follow it.
void recalculatePlace(Engine& engine, PageId page) {
  std::vector<CellAddress> seeds;
  for (const SheetId top : engine.store().page(page)->shapes) {
    for (const SheetId id : engine.store().subtree(top)) {
      for (const Section& section : engine.store().sheet(id)->sections) {
        for (const Row& row : section.rows) {
          for (const auto& [column, cell] : row.cells) {
            if (cell.formula && cell.formula->isVolatile()) seeds.push_back({id, {section.number, row.key, column}});
          }
        }
      }
    }
  }
  engine.recalculateAndNotify(seeds, {});
}

}  // namespace

PageId addPage(Engine& engine, DocumentId documentId) {
  CommandScope scope(engine, documentId, "Page");
  std::string name;
  for (std::size_t n = engine.store().document(documentId)->pages.size() + 1;; ++n) {
    name = "Page-" + std::to_string(n);
    if (!engine.store().pageNamed(documentId, name)) break;
  }
  const PageId id = engine.edit().making().addPage(documentId, name);
  const Document& document = *engine.store().document(documentId);
  if (document.pages.size() > 1) {
    // Size, scale and grid are those of the first page; what the map keeps there is not.
    const Sheet& model = *engine.store().sheet(engine.store().page(document.pages.front())->sheet);
    Sheet& sheet = *engine.edit().making().sheet(engine.store().page(id)->sheet);
    if (const Section* object = model.find(SectionNumber::Object)) sheet.sections.push_back(*object);
    sheet.lineStyle = model.lineStyle;
    sheet.fillStyle = model.fillStyle;
    sheet.textStyle = model.textStyle;
  }
  engine.edit().pageAdded(id);
  if (WindowState* window = engine.windowOf(documentId)) {
    const bool hadSelection = !window->selection().empty();
    window->page = id;
    window->select({});
    if (hadSelection) engine.raiseForUpkeep(&ApplicationEvents::SelectionChanged, WindowId{window->id});
  }
  engine.raise(&ApplicationEvents::PageAdded, id);
  scope.commit();
  return engine.exists(id) ? id : PageId{};
}

Outcome deletePage(Engine& engine, PageId id) {
  const Page* page = engine.store().page(id);
  if (!page || page->master) return Outcome::refused("the page is deleted");
  if (engine.store().document(page->document)->pages.size() < 2)
    return Outcome::refused("a drawing needs at least one page");
  CommandScope scope(engine, page->document, "Delete page");
  for (const PageId other : engine.store().document(page->document)->pages) {
    if (engine.store().page(other)->backPage == id)
      engine.edit().setPageFields(other, [](PageFields& fields) { fields.backPage = {}; });
  }
  engine.edit().removePage(id);
  scope.commit();
  engine.leaveOutDeleted();
  return Outcome::done();
}

Outcome renamePage(Engine& engine, PageId id, std::string_view name, NameKind kind) {
  const Page* page = engine.store().page(id);
  if (!page || page->master) return Outcome::refused("the page is deleted");
  if (trimmed(name).empty()) return Outcome::refused("a page's name can't be empty");
  if ((kind == NameKind::Local ? page->name : page->universalName) == name) return Outcome::done();
  const PageId other = engine.store().pageNamed(page->document, name);
  if (other && other != id) return Outcome::refused("another page has this name");
  CommandScope scope(engine, page->document, "Page name");
  engine.edit().setPageFields(id, [&](PageFields& fields) { rename(fields.name, fields.universalName, name, kind); });
  recalculatePlace(engine, id);
  notifyChanged(engine, id);
  scope.commit();
  return Outcome::done();
}

Outcome setBackground(Engine& engine, PageId id, bool background) {
  const Page* page = engine.store().page(id);
  if (!page || page->master) return Outcome::refused("the page is deleted");
  if (page->background == background) return Outcome::done();
  CommandScope scope(engine, page->document, "Page kind");
  engine.edit().setPageFields(id, [&](PageFields& fields) { fields.background = background; });
  for (const PageId each : std::vector<PageId>(engine.store().document(page->document)->pages)) {
    if (engine.store().page(each)) recalculatePlace(engine, each);
  }
  notifyChanged(engine, id);
  scope.commit();
  return Outcome::done();
}

Outcome setBackPage(Engine& engine, PageId id, PageId background) {
  const Page* page = engine.store().page(id);
  if (!page || page->master) return Outcome::refused("the page is deleted");
  // A background may have a background of its own, but not itself at any depth.
  for (PageId at = background; at; at = engine.store().page(at)->backPage) {
    if (at == id) return Outcome::refused("a page can't be its own background");
    if (!engine.store().page(at) || !engine.store().page(at)->background)
      return Outcome::refused("the page is no background");
  }
  CommandScope scope(engine, page->document, "Background");
  engine.edit().setPageFields(id, [&](PageFields& fields) { fields.backPage = background; });
  scope.commit();
  return Outcome::done();
}

}  // namespace quorvel::host
