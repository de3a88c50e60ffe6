// The two loops over the shapes on the pages of a drawing.
#pragma once

#include "model/host_model.h"

namespace quorvel::addin {

/// Every top-level shape, page by page, background pages included. Shapes inside groups are not visited. A shape that
/// is deleted during the loop is still visited; its calls fail.
template <class Visit>
void forEachShape(const Document& document, Visit visit) {
  for (const Page& page : document.Pages().all()) {
    for (const Shape& shape : page.Shapes().all()) visit(shape);
  }
}

/// The same, but the loop ends at the first background page: later pages are not visited either.
template <class Visit>
void forEachShapeBeforeBackgrounds(const Document& document, Visit visit) {
  for (const Page& page : document.Pages().all()) {
    if (page.Background() == true) return;
    for (const Shape& shape : page.Shapes().all()) visit(shape);
  }
}

}  // namespace quorvel::addin
