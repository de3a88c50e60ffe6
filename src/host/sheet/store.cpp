#include "host/sheet/store.h"

#include <algorithm>

#include "base/text.h"

namespace quorvel::host {
namespace {

template <class T, class Id>
T* at(const std::vector<std::unique_ptr<T>>& items, Id id) {
  return id.value < items.size() ? items[id.value].get() : nullptr;
}

template <class T, class Id>
Id place(std::vector<std::unique_ptr<T>>& items, std::unique_ptr<T> item) {
  const Id id{static_cast<std::uint32_t>(items.size())};
  item->id = id;
  items.push_back(std::move(item));
  return id;
}

/// Takes the entry out of the list; gives its place there.
template <class Id>
std::size_t takeFrom(std::vector<Id>& list, Id id) {
  const auto where = std::find(list.begin(), list.end(), id);
  const auto place = static_cast<std::size_t>(where - list.begin());
  list.erase(where);
  return place;
}

template <class Id>
void putInto(std::vector<Id>& list, Id id, std::size_t place) {
  list.insert(list.begin() + static_cast<std::ptrdiff_t>(std::min(place, list.size())), id);
}

/// Files may number their objects as high as this; a larger number in a file is refused.
constexpr int largestNumber = 1 << 30;

/// The number behind those taken; where those reach too high, the first that is free from `first` on.
int freeNumber(std::vector<int> taken, int first) {
  std::sort(taken.begin(), taken.end());
  if (taken.empty() || taken.back() < first) return first;
  if (taken.back() < largestNumber) return taken.back() + 1;
  for (const int number : taken) first += number == first ? 1 : 0;
  return first;
}

/// The first for which `isCalled` holds with names of that kind, else with those of the other.
template <class Id, class IsCalled>
Id firstNamed(const std::vector<Id>& list, NameKind kind, IsCalled isCalled) {
  const NameKind other = kind == NameKind::Local ? NameKind::Universal : NameKind::Local;
  for (const NameKind which : {kind, other}) {
    for (const Id candidate : list) {
      if (isCalled(candidate, which)) return candidate;
    }
  }
  return {};
}

}  // namespace

void rename(std::string& local, std::string& universal, std::string_view name, NameKind kind) {
  const bool both = kind == NameKind::Local ? local == universal : local.empty();
  if (both || kind == NameKind::Local) local = name;
  if (both || kind == NameKind::Universal) universal = name;
}

Document* Store::document(DocumentId id) { return at(documents_, id); }
const Document* Store::document(DocumentId id) const { return at(documents_, id); }
Page* Store::page(PageId id) { return at(pages_, id); }
const Page* Store::page(PageId id) const { return at(pages_, id); }
Master* Store::master(MasterId id) { return at(masters_, id); }
const Master* Store::master(MasterId id) const { return at(masters_, id); }

SheetId Store::newSheet(SheetKind kind, DocumentId document, PageId page) {
  auto sheet = std::make_unique<Sheet>();
  sheet->kind = kind;
  sheet->document = document;
  sheet->page = page;
  return place<Sheet, SheetId>(sheets_, std::move(sheet));
}

DocumentId Store::addDocument(std::string name) {
  auto made = std::make_unique<Document>();
  made->name = std::move(name);
  const DocumentId id = place<Document, DocumentId>(documents_, std::move(made));
  order_.push_back(id);
  Document& document = *documents_[id.value];
  document.sheet = newSheet(SheetKind::Document, id, {});
  const SheetId style = addStyle(id, 0, "No Style");
  document.defaultLineStyle = document.defaultFillStyle = document.defaultTextStyle = style;
  document.defaultGuideStyle = style;
  return id;
}

void Store::removeDocument(DocumentId id) {
  if (!document(id)) return;
  for (auto& sheet : sheets_) {
    if (sheet && sheet->document == id) sheet.reset();
  }
  for (auto& page : pages_) {
    if (page && page->document == id) page.reset();
  }
  for (auto& master : masters_) {
    if (master && master->document == id) master.reset();
  }
  documents_[id.value].reset();
  std::erase(order_, id);
}

PageId Store::addPage(DocumentId documentId, std::string name, int where) {
  Document& owner = *document(documentId);
  auto made = std::make_unique<Page>();
  made->document = documentId;
  made->name = made->universalName = std::move(name);
  std::vector<int> taken;
  for (const PageId other : owner.pages) taken.push_back(page(other)->fileId);
  made->fileId = freeNumber(std::move(taken), 0);
  const PageId id = place<Page, PageId>(pages_, std::move(made));
  const SheetId sheet = newSheet(SheetKind::Page, documentId, id);
  pages_[id.value]->sheet = sheet;
  const auto count = static_cast<int>(owner.pages.size());
  owner.pages.insert(owner.pages.begin() + (where < 0 || where > count ? count : where), id);
  return id;
}

MasterId Store::addMaster(DocumentId documentId, std::string name) {
  auto made = std::make_unique<Master>();
  made->document = documentId;
  made->name = made->universalName = std::move(name);
  Document& owner = *document(documentId);
  std::vector<int> taken;
  for (const MasterId other : owner.masters) taken.push_back(master(other)->fileId);
  made->fileId = freeNumber(std::move(taken), 1);
  const MasterId id = place<Master, MasterId>(masters_, std::move(made));

  auto contents = std::make_unique<Page>();
  contents->document = documentId;
  contents->master = id;
  const PageId page = place<Page, PageId>(pages_, std::move(contents));
  const SheetId sheet = newSheet(SheetKind::Page, documentId, page);
  pages_[page.value]->sheet = sheet;
  masters_[id.value]->contents = page;
  document(documentId)->masters.push_back(id);
  return id;
}

SheetId Store::addStyle(DocumentId documentId, int styleId, std::string name) {
  const SheetId existing = styleWithId(documentId, styleId);
  const SheetId id = existing ? existing : newSheet(SheetKind::Style, documentId, {});
  Sheet& style = *sheet(id);
  style.shapeId = styleId;
  style.name = style.universalName = std::move(name);
  if (!existing) document(documentId)->styles.push_back(id);
  return id;
}

SheetId Store::addShape(PageId pageId, SheetId parent, SheetKind kind, int shapeId) {
  Page& home = *page(pageId);
  const SheetId id = newSheet(kind, home.document, pageId);
  if (shapeId <= 0 || home.byShapeId.contains(shapeId)) {
    shapeId = home.lastShapeId + 1;
    if (shapeId >= largestNumber)
      for (shapeId = static_cast<int>(home.byShapeId.size()); home.byShapeId.contains(shapeId);) ++shapeId;
  }
  home.lastShapeId = std::max(home.lastShapeId, shapeId);
  home.byShapeId[shapeId] = id;
  Sheet& made = *sheet(id);
  made.shapeId = shapeId;
  made.parent = parent;
  siblings(made).push_back(id);
  return id;
}

std::vector<std::unique_ptr<Sheet>> Store::takeSheetsOf(PageId id) {
  std::vector<SheetId> leaving{page(id)->sheet};
  for (const SheetId shape : page(id)->shapes) {
    const auto below = subtree(shape);
    leaving.insert(leaving.end(), below.begin(), below.end());
  }
  std::vector<std::unique_ptr<Sheet>> out;
  for (const SheetId sheetId : leaving) out.push_back(std::move(sheets_[sheetId.value]));
  return out;
}

void Store::putSheets(std::vector<std::unique_ptr<Sheet>> in) {
  for (auto& sheet : in) {
    const SheetId id = sheet->id;
    sheets_[id.value] = std::move(sheet);
  }
}

DetachedPage Store::takePage(PageId id) {
  DetachedPage out;
  out.place = takeFrom(document(page(id)->document)->pages, id);
  out.sheets = takeSheetsOf(id);
  out.page = std::move(pages_[id.value]);
  return out;
}

void Store::putPage(DetachedPage in) {
  const PageId id = in.page->id;
  putInto(document(in.page->document)->pages, id, in.place);
  pages_[id.value] = std::move(in.page);
  putSheets(std::move(in.sheets));
}

DetachedMaster Store::takeMaster(MasterId id) {
  DetachedMaster out;
  const PageId contents = master(id)->contents;
  out.place = takeFrom(document(master(id)->document)->masters, id);
  out.sheets = takeSheetsOf(contents);
  out.contents = std::move(pages_[contents.value]);
  out.master = std::move(masters_[id.value]);
  return out;
}

void Store::putMaster(DetachedMaster in) {
  const MasterId id = in.master->id;
  putInto(document(in.master->document)->masters, id, in.place);
  pages_[in.contents->id.value] = std::move(in.contents);
  masters_[id.value] = std::move(in.master);
  putSheets(std::move(in.sheets));
}

DetachedStyle Store::takeStyle(SheetId id) {
  DetachedStyle out;
  out.place = takeFrom(document(sheet(id)->document)->styles, id);
  out.sheet = std::move(sheets_[id.value]);
  return out;
}

void Store::putStyle(DetachedStyle in) {
  const SheetId id = in.sheet->id;
  putInto(document(in.sheet->document)->styles, id, in.place);
  sheets_[id.value] = std::move(in.sheet);
}

std::vector<std::unique_ptr<Sheet>> Store::takeSubtree(SheetId root) {
  const std::vector<SheetId> leaving = subtree(root);
  const Sheet& top = *sheet(root);
  std::erase(siblings(top), root);
  Page& home = *page(top.page);
  std::vector<std::unique_ptr<Sheet>> out;
  out.reserve(leaving.size());
  for (const SheetId id : leaving) {
    home.byShapeId.erase(sheet(id)->shapeId);
    out.push_back(std::move(sheets_[id.value]));
  }
  return out;
}

void Store::putSubtree(std::vector<std::unique_ptr<Sheet>> in, std::size_t where) {
  const SheetId root = in.front()->id;
  Page& home = *page(in.front()->page);
  for (auto& sheet : in) {
    const SheetId id = sheet->id;
    home.byShapeId[sheet->shapeId] = id;
    sheets_[id.value] = std::move(sheet);
  }
  putInto(siblings(*sheet(root)), root, where);
}

std::size_t Store::stand(SheetId id, SheetId parent, std::size_t where) {
  Sheet& shape = *sheet(id);
  const std::size_t left = takeFrom(siblings(shape), id);
  shape.parent = parent;
  putInto(siblings(shape), id, where);
  return left;
}

SheetId Store::styleNamed(DocumentId id, std::string_view name) const {
  for (const SheetId style : document(id)->styles) {
    if (equalIgnoringCase(sheet(style)->name, name) || equalIgnoringCase(sheet(style)->universalName, name))
      return style;
  }
  return {};
}

SheetId Store::styleWithId(DocumentId id, int styleId) const {
  for (const SheetId style : document(id)->styles) {
    if (sheet(style)->shapeId == styleId) return style;
  }
  return {};
}

PageId Store::pageNamed(DocumentId id, std::string_view name, NameKind kind) const {
  return firstNamed(document(id)->pages, kind, [&](PageId candidate, NameKind which) {
    const Page& one = *page(candidate);
    return equalIgnoringCase(which == NameKind::Local ? one.name : one.universalName, name);
  });
}

MasterId Store::masterNamed(DocumentId id, std::string_view name, NameKind kind) const {
  return firstNamed(document(id)->masters, kind, [&](MasterId candidate, NameKind which) {
    const Master& one = *master(candidate);
    return equalIgnoringCase(which == NameKind::Local ? one.name : one.universalName, name);
  });
}

SheetId Store::shapeNamed(const std::vector<SheetId>& shapes, std::string_view name, NameKind kind) const {
  return firstNamed(shapes, kind, [&](SheetId candidate, NameKind which) {
    const Sheet& one = *sheet(candidate);
    const std::string& own = which == NameKind::Local ? one.name : one.universalName;
    return own.empty() ? equalIgnoringCase(shapeName(one, which), name) : equalIgnoringCase(own, name);
  });
}

std::vector<SheetId>& Store::siblings(const Sheet& shape) {
  return shape.parent ? sheet(shape.parent)->children : page(shape.page)->shapes;
}

const std::vector<SheetId>& Store::siblings(const Sheet& shape) const {
  return const_cast<Store*>(this)->siblings(shape);
}

std::vector<SheetId> Store::subtree(SheetId root) const {
  std::vector<SheetId> all{root};
  for (std::size_t i = 0; i < all.size(); ++i) {
    const Sheet* shape = sheet(all[i]);
    all.insert(all.end(), shape->children.begin(), shape->children.end());
  }
  return all;
}

SheetId Store::instanceRoot(SheetId shape) const {
  const Sheet* member = sheet(shape);
  if (!member || !member->prototype) return shape;
  for (SheetId at = shape; at;) {
    const Sheet* here = sheet(at);
    if (!here) return shape;
    if (here->prototype && here->master) return at;
    at = here->parent;
  }
  return shape;
}

MasterId Store::masterOf(SheetId shape) const {
  const Sheet* here = sheet(shape);
  if (!here || !here->prototype) return {};
  return sheet(instanceRoot(shape))->master;
}

std::string Store::shapeName(const Sheet& shape, NameKind kind) const {
  const std::string& own = kind == NameKind::Local ? shape.name : shape.universalName;
  if (!own.empty()) return own;
  switch (shape.kind) {
    case SheetKind::Document:
      return "TheDoc";
    case SheetKind::Page:
      return "ThePage";
    default:
      break;
  }
  const Master* source = master(shape.master);
  const std::string number = "." + std::to_string(shape.shapeId);
  if (!source) return "Sheet" + number;
  return (kind == NameKind::Local ? source->name : source->universalName) + number;
}

}  // namespace quorvel::host
