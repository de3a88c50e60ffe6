// The loops over the shapes of a drawing. A refused call is repeated once: a rule that runs over a whole drawing must
// leave out no page and no shape.
#pragma once

#include <vector>

#include "base/ask_again.h"
#include "model/host_model.h"

namespace quorvel::addin {

/// The items of a collection as they are now, a deleted one left out. `first` is the collection's index base.
template <class Collection>
auto everyItem(const Collection& collection, int first = 1) {
  std::vector<decltype(collection.Item(first))> items;
  const int count = askAgain([&] { return collection.Count(); }).or_(0);
  for (int i = first; i < first + count; ++i) {
    if (auto item = askAgain([&] { return collection.Item(i); })) items.push_back(item);
  }
  return items;
}

inline std::vector<Page> everyPage(const Document& document) {
  return everyItem(askAgain([&] { return document.Pages(); }));
}
inline std::vector<Shape> everyShape(const Page& page) {
  return everyItem(askAgain([&] { return page.Shapes(); }));
}
inline std::vector<Shape> everyMember(const Shape& group) {
  return everyItem(askAgain([&] { return group.Shapes(); }));
}
inline std::vector<Hyperlink> everyHyperlink(const Shape& shape) {
  return everyItem(askAgain([&] { return shape.Hyperlinks(); }), 0);
}

/// Every top-level shape, page by page, background pages included. Shapes inside groups are not visited. A shape that
/// is deleted during the loop is still visited; its calls fail.
template <class Visit>
void forEachShape(const Document& document, Visit visit) {
  for (const Page& page : everyPage(document)) {
    for (const Shape& shape : everyShape(page)) visit(shape);
  }
}

/// The same, but the loop ends at the first background page: later pages are not visited either.
template <class Visit>
void forEachShapeBeforeBackgrounds(const Document& document, Visit visit) {
  for (const Page& page : everyPage(document)) {
    if (page.Background() == true) return;
    for (const Shape& shape : everyShape(page)) visit(shape);
  }
}

}  // namespace quorvel::addin
