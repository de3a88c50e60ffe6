// The two ways in which routines go through the shapes that stand on the pages of a drawing.
#pragma once

#include "model/host_model.h"

namespace quorvel::addin {

/// Every shape that stands on a page itself, page by page, background pages included. Shapes inside groups are not
/// visited. A shape that is deleted on the way is visited as one that answers nothing.
template <class Visit>
void forEachShape(const Document& document, Visit visit) {
  for (const Page& page : document.Pages().all()) {
    for (const Shape& shape : page.Shapes().all()) visit(shape);
  }
}

/// The same, but the first background page ends the walk: pages behind it are not reached either.
template <class Visit>
void forEachShapeBeforeBackgrounds(const Document& document, Visit visit) {
  for (const Page& page : document.Pages().all()) {
    if (page.Background() == true) return;
    for (const Shape& shape : page.Shapes().all()) visit(shape);
  }
}

}  // namespace quorvel::addin
