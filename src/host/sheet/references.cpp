#include "host/sheet/references.h"

#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

/// What a reference to a page or a master names there: a shape, or the page's sheet.
SheetId insidePage(const Store& store, const Page* page, const Reference& reference) {
  if (!page) return {};
  if (!reference.innerName.empty()) return shapeOnPage(store, *page, reference.innerName, reference.shapeId);
  if (reference.shapeId == 0) return page->sheet;
  const auto found = page->byShapeId.find(reference.shapeId);
  return found == page->byShapeId.end() ? SheetId{} : found->second;
}

}  // namespace

SheetId resolveReference(const Store& store, SheetId definition, SheetId context, const Reference& reference) {
  const Sheet* here = store.sheet(context);
  if (!here) return {};
  switch (reference.scope) {
    case ReferenceScope::ThisSheet:
      return context;
    case ReferenceScope::Shape:
      return resolveShapeId(store, definition, context, reference.shapeId);
    case ReferenceScope::ThePage: {
      const Page* page = store.page(here->page);
      return page ? page->sheet : SheetId{};
    }
    case ReferenceScope::TheDocument: {
      const Document* document = store.document(here->document);
      return document ? document->sheet : SheetId{};
    }
    case ReferenceScope::NamedShape:
      return resolveShapeName(store, definition, context, reference);
    case ReferenceScope::Page:
      return insidePage(store, store.page(store.pageNamed(here->document, reference.name, NameKind::Universal)),
                        reference);
    case ReferenceScope::Style:
      return store.styleNamed(here->document, reference.name);
    case ReferenceScope::Master: {
      const Master* master = store.master(store.masterNamed(here->document, reference.name, NameKind::Universal));
      return insidePage(store, master ? store.page(master->contents) : nullptr, reference);
    }
  }
  return {};
}

}  // namespace quorvel::host
