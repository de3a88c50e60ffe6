// The number of Tasks on a page or in a selection.
#pragma once

#include <span>

#include "model/host_model.h"

namespace quorvel::addin {

/// The number of Tasks among the shapes of a page or a selection. Members of groups are not counted.
int TaskCount(std::span<const Shape> shapes);

/// True when the page has exactly one Task. Stops at the second one, so that a drop does not cost more on a page of
/// many Tasks.
bool isOnlyTaskOnPage(const Page& page);

}  // namespace quorvel::addin
